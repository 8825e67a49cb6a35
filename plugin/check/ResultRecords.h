#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"

/// Result records: one text line of seven fields, each ended by "|", for each finding and two summaries. They
/// reach the host as UTF-16 texts through window message 1133.

/// The record that is being sent. It keeps its text until the next one is built: the host copies it during
/// the call.
extern std::u16string HostMessage;

/// Compares what was measured (`work`) with the expectation (`data`) and sends a record for every finding, at
/// most `data.MaxError` of them, and the summaries. Sends nothing at all when the check was cancelled.
/// Returns the number of error records sent.
std::int32_t ReportResults(const TShortTestData& data, const TShortTestData& work);

/// Sends HostMessage to the host's message window and returns when the host has taken it. A handle that names
/// no window makes it go nowhere.
void SendHostMessage();

/// Channel numbers of matrix indices of `data`: "20" for one, "(3, 17, 18)" for more. REQUIRES: not empty.
std::string FormatChannelList(const TShortTestData& data, const std::vector<std::int32_t>& indices);

/// The smallest resistance stored in `work` for any pair of a channel in `listA` and one in `listB`, Ohm. The
/// value for "not measured" (-1.0) takes part like any other; this is meant. REQUIRES: neither is empty.
double MinGroupResistance(const TShortTestData& work, const std::vector<std::int32_t>& listA,
                          const std::vector<std::int32_t>& listB);

namespace shorttest {

/// Handle of the host's message window, as the extension's entry took it from the host; read at every send.
std::uint32_t MessageWindowHandle();
void SetMessageWindowHandle(std::uint32_t handle);

}  // namespace shorttest
