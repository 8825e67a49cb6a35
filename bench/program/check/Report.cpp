#include "bench/program/check/Report.h"

#include <algorithm>
#include <utility>

#include "bench/program/output/Table.h"
#include "text/NumberText.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

constexpr std::size_t RecordTextWidth = 60;

/// An upper limit from here on is none: what no instrument can reach is written where a limit must stand.
constexpr double Unlimited = 1e14;

/// Resistance of a pair for which nothing was measured.
constexpr double NotMeasured = -1.0;

/// A record, and how often it came: a short circuit is reported once for each channel of its net.
struct CountedRecord {
  const Record* record;
  std::size_t count;
};

std::vector<CountedRecord> Distinct(const std::vector<Record>& records) {
  std::vector<CountedRecord> distinct;
  for (const Record& record : records) {
    const auto same = std::find_if(distinct.begin(), distinct.end(), [&](const CountedRecord& other) {
      return other.record->line == record.line;
    });
    if (same == distinct.end()) {
      distinct.push_back({&record, 1});
    } else {
      ++same->count;
    }
  }
  return distinct;
}

std::string LimitText(const std::string& text, const std::optional<double>& limit) {
  return !limit || *limit >= Unlimited ? "-" : text;
}

std::string ValueText(const Record& record) {
  const bool nothing = record.unit == "Ohm" && record.value && *record.value == NotMeasured;
  return nothing ? "none" : record.valueText;
}

std::string Repeated(std::size_t count) { return count == 1 ? "" : "(" + std::to_string(count) + " times)"; }

std::string FindingsTable(const std::vector<CountedRecord>& findings, const wiring::ChannelNames& names) {
  using Align = Table::Align;
  Table table({Align::Left, Align::Right, Align::Right, Align::Right, Align::Left, Align::Left},
              RecordTextWidth);
  table.AddRow({"Finding", "Value", "Lower", "Upper", "Unit", ""});
  for (const auto& [record, count] : findings) {
    if (record->readable) {
      table.AddRow({WithChannelNames(record->text, names), ValueText(*record),
                    LimitText(record->lowerText, record->lower), LimitText(record->upperText, record->upper),
                    record->unit, Repeated(count)});
    } else {
      table.AddRow({"record that cannot be read: " + record->line, "", "", "", "", Repeated(count)});
    }
  }
  return table.Text(Indent);
}

std::string Limits(const Record& record) {
  if (IsSummary(record)) return "expected " + record.lowerText;
  if (!record.lower && !record.upper) return "";
  return "limits " + LimitText(record.lowerText, record.lower) + " to " +
         LimitText(record.upperText, record.upper);
}

std::string ValuesTable(const std::vector<CountedRecord>& values) {
  using Align = Table::Align;
  Table table({Align::Left, Align::Right, Align::Left, Align::Left, Align::Left}, RecordTextWidth);
  for (const auto& [record, count] : values) {
    table.AddRow({record->text, record->valueText, record->unit, Limits(*record), Repeated(count)});
  }
  return table.Text(Indent);
}

std::string Counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// "PASS: no findings" with its first word in the colour of the verdict.
std::string VerdictLine(ExitStatus status, const std::string& rest, bool colours) {
  struct Look {
    const char* word;
    const char* colour;
  };
  constexpr auto lookOf = [](ExitStatus verdict) -> Look {
    switch (verdict) {
      case ExitStatus::NoFindings:
        return {"PASS", "\x1b[1;32m"};
      case ExitStatus::Findings:
        return {"FAIL", "\x1b[1;31m"};
      case ExitStatus::Cancelled:
        return {"CANCELLED", "\x1b[1;33m"};
      case ExitStatus::Failed:
        break;
    }
    return {"ERROR", "\x1b[1;31m"};
  };
  const Look look = lookOf(status);
  const std::string word = colours ? look.colour + std::string(look.word) + "\x1b[0m" : look.word;
  return word + ": " + Printable(rest) + "\n";
}

std::string StepVerdict(const StepResult& result, std::size_t findings) {
  switch (result.end) {
    case StepEnd::Failed:
      return result.failure;
    case StepEnd::Cancelled:
      return "the check was stopped";
    case StepEnd::Silent:
      return "the check ended without a record: it was not finished";
    case StepEnd::NotStored:
      return "result not stored: " + result.failure;
    case StepEnd::Finished:
      break;
  }
  return findings == 0 ? "no findings" : Counted(findings, "finding", "findings");
}

}  // namespace

std::string WithChannelNames(const std::string& text, const wiring::ChannelNames& names) {
  if (!TellsOfADefect(text)) return text;
  std::string named;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t digits = text.find_first_of("0123456789", i);
    named += text.substr(i, digits - i);
    if (digits == std::string::npos) break;
    const std::size_t end = std::min(text.find_first_not_of("0123456789", digits), text.size());
    const auto channel = shorttest::TextToInteger(text.substr(digits, end - digits));
    named += channel ? names.Labelled(*channel) : text.substr(digits, end - digits);
    i = end;
  }
  return named;
}

std::string StepReport(const ScriptStep& step, const StepResult& result, bool colours,
                       const wiring::ChannelNames& names) {
  std::vector<CountedRecord> findings;
  std::vector<CountedRecord> values;
  std::size_t countsOutside = 0;
  for (const CountedRecord& counted : Distinct(result.records)) {
    const bool finding = IsFinding(*counted.record);
    if (finding && !IsSummary(*counted.record)) {
      findings.push_back(counted);
    } else {
      values.push_back(counted);
      countsOutside += finding ? 1U : 0U;
    }
  }

  std::string report = Printable((step.where.empty() ? "" : step.where + ": ") + step.call) + "\n\n";
  if (!findings.empty()) report += FindingsTable(findings, names) + "\n";
  if (!values.empty()) report += ValuesTable(values) + "\n";
  // A wrong count is the sum of the findings above; it is one of its own only where they were not reported.
  const std::size_t count = findings.empty() ? countsOutside : findings.size();
  return report + VerdictLine(result.Status(), StepVerdict(result, count), colours);
}

std::string RunVerdict(const std::vector<ExitStatus>& results, std::size_t left, bool colours) {
  ExitStatus status = left == 0 ? ExitStatus::NoFindings : ExitStatus::Cancelled;
  std::size_t bad = 0;
  for (const ExitStatus result : results) {
    status = Graver(status, result);
    bad += result == ExitStatus::NoFindings ? 0U : 1U;
  }
  std::string rest = std::to_string(results.size() - bad) + " of " +
                     Counted(results.size() + left, "command", "commands") + " without findings";
  if (left > 0) rest += ", " + std::to_string(left) + " not run";
  return VerdictLine(status, rest, colours);
}

ReportPrinter::ReportPrinter(Output& output, bool colours, wiring::ChannelNames names,
                             std::function<void()> beforeOutput)
    : output_(output), colours_(colours), names_(std::move(names)), beforeOutput_(std::move(beforeOutput)) {}

void ReportPrinter::StepEnded(const ScriptStep& step, const StepResult& result) {
  beforeOutput_();
  output_.Write((first_ ? "" : "\n") + StepReport(step, result, colours_, names_));
  first_ = false;
}

void ReportPrinter::RunEnded(const std::vector<ExitStatus>& results, std::size_t left) {
  if (results.size() + left < 2) return;
  beforeOutput_();
  output_.Write((first_ ? "" : "\n") + RunVerdict(results, left, colours_));
}

RecordPrinter::RecordPrinter(Output& output, std::function<void()> beforeOutput)
    : output_(output), beforeOutput_(std::move(beforeOutput)) {}

void RecordPrinter::StepEnded(const ScriptStep&, const StepResult& result) {
  // Records without a finding would be read as a pass.
  if (result.end == StepEnd::NotStored) return;
  std::string lines;
  for (const Record& record : result.records) lines += record.line + "\n";
  if (lines.empty()) return;
  beforeOutput_();
  output_.Write(lines);
}

}  // namespace kxbench
