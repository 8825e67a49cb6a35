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

namespace shorttest {

/// One report: what was measured (`work`) beside what was expected (`data`), which both outlive it.
class ResultReport {
 public:
  ResultReport(const TShortTestData& data, const TShortTestData& work) : data_(data), work_(work) {}

  /// Sends the records, see ReportResults, and returns the number of error records.
  std::int32_t Send();

  /// Channel numbers of matrix indices: "20" for one, "(3, 17, 18)" for more. REQUIRES: not empty.
  std::string FormatChannelList(const std::vector<std::int32_t>& indices) const;

  /// The smallest resistance stored in `work` for any pair of a channel in `listA` and one in `listB`, Ohm.
  /// The value for "not measured" (-1.0) takes part like any other, as hosts have always been told. REQUIRES:
  /// neither is empty.
  double MinGroupResistance(const std::vector<std::int32_t>& listA,
                            const std::vector<std::int32_t>& listB) const;

 private:
  bool LimitReached() const { return sent_ >= data_.MaxError; }
  void Add(const std::string& finding, const std::string& fields);
  void ReportVoltages();
  void ReportConnections();
  void ReportShorts();
  std::string Channel(std::int32_t index) const;
  std::vector<std::int32_t> ExpectedNet(std::int32_t i) const;
  std::vector<std::int32_t> ShortedTo(std::int32_t i) const;

  const TShortTestData& data_;
  const TShortTestData& work_;
  std::int32_t sent_ = 0;
};

/// Takes the handle of the host's message window, as the extension's entry got it from the host; read at
/// every send.
void SetMessageWindowHandle(std::uint32_t handle);

}  // namespace shorttest
