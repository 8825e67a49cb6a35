#include "bench/program/commands/LearnReport.h"

#include "bench/program/output/ChannelText.h"
#include "bench/program/output/Table.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

/// "6 (12 V), 7 (as before)": a channel that the file had suspended already was not measured.
std::string SuspendedText(const std::vector<SuspendedChannel>& suspended, const wiring::ChannelNames& names) {
  std::string text;
  for (const auto& [channel, volts] : suspended) {
    const bool measured = volts != 0.0;
    const std::string found = measured ? ShortNumber(volts) + " V" : "as before";
    text += (text.empty() ? "" : ", ") + names.Labelled(channel) + " (" + found + ")";
  }
  return text.empty() ? "none" : text;
}

std::string NearMissText(const std::vector<NearMiss>& nearMisses, const wiring::ChannelNames& names) {
  std::string text;
  for (const auto& [channel, ohm] : nearMisses) {
    text += (text.empty() ? "" : ", ") + names.Labelled(channel) + " (" + ShortNumber(ohm) + " Ohm)";
  }
  return text + ": to the others just above the threshold, so learned as open without a question";
}

}  // namespace

std::string LearnReport(const std::string& file, const LearnSummary& summary,
                        const wiring::ChannelNames& names) {
  const std::int32_t channels = summary.lastChannel - summary.firstChannel + 1;
  std::string report = "Learned " + std::to_string(channels) + (channels == 1 ? " channel" : " channels") +
                       " into " + Printable(file) + "\n\n";
  report +=
      Entry("Channels", std::to_string(summary.firstChannel) + " to " + std::to_string(summary.lastChannel));
  report += Entry("Nets", std::to_string(summary.nets.size()));
  for (const std::vector<std::int32_t>& net : summary.nets) report += Entry("", ChannelListText(net, names));
  report += Entry("Suspended channels", SuspendedText(summary.suspended, names));
  report += Entry("Connected to nothing", ChannelListText(summary.unconnected, names));
  if (!summary.nearMisses.empty())
    report += Entry("Nearly connected", NearMissText(summary.nearMisses, names));
  report += Entry("Readings", std::to_string(summary.readings));
  report += Entry("Relay operations", std::to_string(summary.relayOperations));
  report += Entry("Time", FixedNumber(summary.seconds, 1) + " s");
  return report;
}

std::vector<std::string> DifferenceLines(const std::string& file, const LearnDifference& difference,
                                         const wiring::ChannelNames& names) {
  const std::string pairs = std::to_string(difference.changed) + " of " + std::to_string(difference.pairs) +
                            (difference.pairs == 1 ? " pair" : " pairs");
  const std::string range =
      std::to_string(difference.firstChannel) + " to " + std::to_string(difference.lastChannel);
  std::string head = file + ": " + pairs + " of the channels " + range +
                     (difference.changed == 1 ? " differs" : " differ") +
                     " from the expectation that is replaced";
  if (difference.firstChannel > difference.oldFirstChannel ||
      difference.lastChannel < difference.oldLastChannel) {
    head += ", which held the channels " + std::to_string(difference.oldFirstChannel) + " to " +
            std::to_string(difference.oldLastChannel);
  }
  std::vector<std::string> lines = {head};
  for (const ChangedPair& pair : difference.listed) {
    lines.push_back("  " + PairText(pair.lower, pair.higher, names) + ": " + pair.after + ", was " +
                    pair.before);
  }
  const auto listed = static_cast<std::int64_t>(difference.listed.size());
  if (listed < difference.changed) {
    lines.push_back("  and " + std::to_string(difference.changed - listed) + " more");
  }
  return lines;
}

}  // namespace kxbench
