#include "bench/program/Learn.h"

#include <array>
#include <charconv>

#include "bench/program/DynamicLibrary.h"
#include "bench/program/Failure.h"
#include "bench/program/Guard.h"
#include "bench/program/HostSetup.h"
#include "bench/program/Interaction.h"
#include "bench/program/Output.h"
#include "bench/program/System.h"
#include "bench/program/Table.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

constexpr std::size_t LineWidth = 100;

/// The answer to the question about a resistance near the threshold; none to ask it.
std::optional<int> NearThresholdAnswer(const Options& options, const Terminal& terminal) {
  const bool window = options.progress == ProgressChoice::Window;
  const bool somebodyThere = window || terminal.CanAsk();
  if (!options.nearThreshold) return somebodyThere ? std::nullopt : std::optional<int>(mrIgnore);
  switch (*options.nearThreshold) {
    case NearThreshold::Ignore:
      return mrIgnore;
    case NearThreshold::Cancel:
      return mrCancel;
    case NearThreshold::Ask:
      break;
  }
  if (!somebodyThere) throw Failure("--near-threshold ask: there is no terminal to ask on");
  return std::nullopt;
}

LearnRequest RequestOf(const Options& options) {
  LearnRequest request;
  request.file = options.file;
  if (options.channels) {
    request.firstChannel = options.channels->first;
    request.lastChannel = options.channels->last;
  }
  request.thresholdOhm = options.thresholdOhm;
  request.voltageControl = options.voltageControl;
  return request;
}

std::string NumberText(double value, std::chars_format format, int precision) {
  std::array<char, 400> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, format, precision).ptr;
  return std::string(text.data(), end);
}

/// "6 (12 V), 7 (as before)": a channel that the file had suspended already was not measured.
std::string SuspendedText(const std::vector<SuspendedChannel>& suspended) {
  std::string text;
  for (const auto& [channel, volts] : suspended) {
    const bool measured = volts != 0.0;
    const std::string found =
        measured ? NumberText(volts, std::chars_format::general, 3) + " V" : "as before";
    text += (text.empty() ? "" : ", ") + std::to_string(channel) + " (" + found + ")";
  }
  return text.empty() ? "none" : text;
}

/// "Label:  text", the text wrapped and indented behind the label.
std::string Entry(const std::string& label, const std::string& text) {
  constexpr std::size_t labelWidth = 24;
  std::string entry;
  std::string start = std::string(Indent, ' ') + label + std::string(labelWidth - CharactersIn(label), ' ');
  for (const std::string& line : Wrapped(text, LineWidth - labelWidth - Indent)) {
    entry += start + line + "\n";
    start.assign(Indent + labelWidth, ' ');
  }
  return entry;
}

}  // namespace

std::string ChannelListText(const std::vector<std::int32_t>& channels) {
  std::string text;
  for (std::size_t i = 0; i < channels.size();) {
    std::size_t last = i;
    while (last + 1 < channels.size() && channels[last + 1] == channels[last] + 1) ++last;
    if (last - i < 2) last = i;
    text += (text.empty() ? "" : ", ") + std::to_string(channels[i]);
    if (last > i) text += "-" + std::to_string(channels[last]);
    i = last + 1;
  }
  return text.empty() ? "none" : text;
}

std::string LearnReport(const std::string& file, const LearnSummary& summary) {
  const std::int32_t channels = summary.lastChannel - summary.firstChannel + 1;
  std::string report = "Learned " + std::to_string(channels) + (channels == 1 ? " channel" : " channels") +
                       " into " + Printable(file) + "\n\n";
  report +=
      Entry("Channels", std::to_string(summary.firstChannel) + " to " + std::to_string(summary.lastChannel));
  report += Entry("Nets", std::to_string(summary.nets.size()));
  for (const std::vector<std::int32_t>& net : summary.nets) report += Entry("", ChannelListText(net));
  report += Entry("Suspended channels", SuspendedText(summary.suspended));
  report += Entry("Connected to nothing", ChannelListText(summary.unconnected));
  report += Entry("Readings", std::to_string(summary.readings));
  report += Entry("Relay operations", std::to_string(summary.relayOperations));
  report += Entry("Time", NumberText(summary.seconds, std::chars_format::fixed, 1) + " s");
  return report;
}

ExitStatus LearnDevice(const Options& options) {
  const std::optional<int> answer = NearThresholdAnswer(options, *OpenTerminal());
  HostSetup host(options);
  EnterGuard();
  TellGuardOfExpectation(options.file);
  Interaction interaction(SurfaceOf(options.progress), answer);
  const DynamicLibrary module("the learn module",
                              ProgramFolder() / LibraryFileName("kxlearn", LibraryPrefix::Lib));
  const auto learn = module.Find<KxLearn>(KxLearnName);
  if (learn == nullptr) {
    throw Failure(Utf8FromPath(module.File()) + " is no learn module: it does not export " + KxLearnName);
  }

  LearnSummary summary;
  learn(RequestOf(options), summary);
  switch (summary.end) {
    case LearnEnd::Failed:
      throw Failure("learn " + options.file + ": " + summary.failure);
    case LearnEnd::Cancelled:
      interaction.Tell("learn " + options.file + ": cancelled, nothing was saved");
      return ExitStatus::Cancelled;
    case LearnEnd::Learned:
      break;
  }
  interaction.HideProgress();
  StandardOutput().Write(LearnReport(options.file, summary));
  return ExitStatus::NoFindings;
}

}  // namespace kxbench
