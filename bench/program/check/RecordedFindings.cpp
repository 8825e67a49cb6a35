#include "bench/program/check/RecordedFindings.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

constexpr std::string_view VoltageStart = "Spannung an Kanal ";
constexpr std::string_view BreakStart = "fehlende Verbindung zwischen ";
constexpr std::string_view ShortStart = "Kurzschluss zwischen ";
constexpr std::string_view Between = " und ";
constexpr std::string_view Abort = " -  ABBRUCH";

[[noreturn]] void Refuse(const Record& record) {
  throw Failure("--records: this record cannot be understood: " + record.line);
}

/// "17" or "(3, 17)".
diagnosis::Net ChannelsIn(const Record& record, std::string_view text) {
  diagnosis::Net channels;
  const char* next = text.data();
  const char* end = text.data() + text.size();
  while (next != end) {
    if (*next == '(' || *next == ')' || *next == ',' || *next == ' ') {
      ++next;
      continue;
    }
    diagnosis::Channel channel = 0;
    const auto [after, error] = std::from_chars(next, end, channel);
    if (error != std::errc() || channel < 1) Refuse(record);
    channels.push_back(channel);
    next = after;
  }
  if (channels.empty()) Refuse(record);
  return channels;
}

/// The two sides of "... A und B".
std::pair<diagnosis::Net, diagnosis::Net> SidesOf(const Record& record, std::string_view text) {
  const std::size_t between = text.find(Between);
  if (between == std::string_view::npos) Refuse(record);
  return {ChannelsIn(record, text.substr(0, between)),
          ChannelsIn(record, text.substr(between + Between.size()))};
}

std::optional<double> OhmOf(const Record& record) {
  return record.value && *record.value >= 0 ? record.value : std::nullopt;
}

void AddShort(const Record& record, std::string_view text, std::vector<RecordedShort>& shorts) {
  auto sides = SidesOf(record, text);
  const auto same = std::find_if(shorts.begin(), shorts.end(), [&sides](const RecordedShort& known) {
    return known.net == sides.first && known.others == sides.second;
  });
  if (same != shorts.end()) {
    ++same->times;
  } else {
    shorts.push_back({std::move(sides.first), std::move(sides.second), OhmOf(record), 1});
  }
}

}  // namespace

RecordedFindings FindingsIn(const std::vector<Record>& records) {
  RecordedFindings findings;
  for (const Record& record : records) {
    std::string_view text = record.text;
    if (text.ends_with(Abort)) {
      findings.aborted = true;
      text.remove_suffix(Abort.size());
    }
    if (text.starts_with(VoltageStart)) {
      const diagnosis::Net channels = ChannelsIn(record, text.substr(VoltageStart.size()));
      findings.voltages.push_back({channels.front(), record.value.value_or(0)});
    } else if (text.starts_with(BreakStart)) {
      const auto [a, b] = SidesOf(record, text.substr(BreakStart.size()));
      findings.breaks.push_back(
          {std::min(a.front(), b.front()), std::max(a.front(), b.front()), OhmOf(record)});
    } else if (text.starts_with(ShortStart)) {
      AddShort(record, text.substr(ShortStart.size()), findings.shorts);
    } else if (text == "Kurzschlusstest") {
      findings.finished = true;
    }
  }
  return findings;
}

}  // namespace kxbench
