#include "plugin/check/ResultRecords.h"

#include <algorithm>

#include "contracts/WindowMessages.h"
#include "plugin/check/CheckForm.h"
#include "plugin/check/CheckPasses.h"
#include "text/NumberText.h"

std::u16string HostMessage;

namespace {

constexpr unsigned RecordMessage = 1024 + 109;  // the first user message number, plus the host's offset
// What the host knows as "no upper limit" of a resistance.
constexpr const char* NoUpperLimit = "100000000000001";

std::uint32_t messageWindow = 0;

// Records hold ASCII alone but for the decimal separator of some locales, which is below U+10000.
std::u16string ToUtf16(const std::string& utf8) {
  std::u16string text;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : 3;
    unsigned code = length == 1 ? lead : length == 2 ? lead & 0x1FU : lead & 0x0FU;
    for (std::size_t k = 1; k < length && i + k < utf8.size(); ++k) {
      code = code << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3FU);
    }
    text += static_cast<char16_t>(code);
    i += length;
  }
  return text;
}

void SendRecord(const std::string& record) {
  HostMessage = ToUtf16(record);
  SendHostMessage();
}

}  // namespace

namespace shorttest {

std::int32_t ResultReport::Send() {
  sent_ = 0;
  ReportVoltages();
  ReportConnections();
  ReportShorts();
  return sent_;
}

std::string ResultReport::Channel(std::int32_t index) const { return std::to_string(data_.von + index); }

// The last error record allowed says so after its finding.
void ResultReport::Add(const std::string& finding, const std::string& fields) {
  SendRecord(finding + (sent_ == data_.MaxError - 1 ? " -  ABBRUCH" : "") + fields);
  ++sent_;
}

void ResultReport::ReportVoltages() {
  for (std::int32_t i = 0; i <= data_.Highconnections(); ++i) {
    const bool found = work_.Get(i, i) == CellState::Suspended && data_.Get(i, i) != CellState::Suspended;
    if (!found || LimitReached()) continue;
    Add("Spannung an Kanal " + Channel(i),
        "|" + FloatToText(VoltageLimit) + "|" + FloatToText(work_.GetVoltage(i)) + "|V|||");
  }
}

void ResultReport::ReportConnections() {
  std::int32_t expected = 0;
  std::int32_t found = 0;
  const std::int32_t high = data_.Highconnections();
  for (std::int32_t i = 0; i < high; ++i) {
    for (std::int32_t j = i + 1; j <= high; ++j) {
      if (data_.Get(i, j) != CellState::Connected) continue;
      ++expected;
      if (work_.Get(i, j) == CellState::Connected) {
        ++found;
      } else if (!LimitReached()) {
        Add("fehlende Verbindung zwischen " + Channel(i) + " und " + Channel(j),
            "|0|" + FloatToText(work_.GetR(i, j)) + "|Ohm|" + FloatToText(work_.Schwelle) + "|0|");
      }
    }
  }
  if (expected > 0) {
    const std::string count = std::to_string(expected);
    SendRecord("Verbindungstest|" + count + "|" + std::to_string(found) + "||" + count + "||");
  }
}

// The channels of i's expected net, i among them, ascending.
std::vector<std::int32_t> ResultReport::ExpectedNet(std::int32_t i) const {
  std::vector<std::int32_t> net;
  for (std::int32_t j = 0; j <= data_.Highconnections(); ++j) {
    if (j == i || data_.Get(i, j) == CellState::Connected) net.push_back(j);
  }
  return net;
}

// The channels found connected to i although they are expected to be open, ascending.
std::vector<std::int32_t> ResultReport::ShortedTo(std::int32_t i) const {
  std::vector<std::int32_t> shorted;
  for (std::int32_t j = 0; j <= data_.Highconnections(); ++j) {
    if (work_.Get(i, j) == CellState::Connected && data_.Get(i, j) == CellState::NotConnected) {
      shorted.push_back(j);
    }
  }
  return shorted;
}

// A short is told from its lower side, but from every channel of the lower net: hosts count on n records of
// the same text for a net of n channels.
void ResultReport::ReportShorts() {
  std::int32_t shorts = 0;
  for (std::int32_t i = 0; i <= data_.Highconnections(); ++i) {
    const std::vector<std::int32_t> shorted = ShortedTo(i);
    if (shorted.empty() || i >= shorted.front() || LimitReached()) continue;
    const std::vector<std::int32_t> net = ExpectedNet(i);
    Add("Kurzschluss zwischen " + FormatChannelList(net) + " und " + FormatChannelList(shorted),
        "|" + FloatToText(work_.Schwelle2) + "|" + FloatToText(MinGroupResistance(shorted, net)) + "|Ohm|" +
            NoUpperLimit + "|0|");
    ++shorts;
  }
  SendRecord("Kurzschlusstest|0|" + std::to_string(shorts) + "||0||");
}

std::string ResultReport::FormatChannelList(const std::vector<std::int32_t>& indices) const {
  std::string text = Channel(indices.front());
  if (indices.size() == 1) return text;
  for (std::size_t i = 1; i < indices.size(); ++i) text += ", " + Channel(indices[i]);
  return "(" + text + ")";
}

double ResultReport::MinGroupResistance(const std::vector<std::int32_t>& listA,
                                        const std::vector<std::int32_t>& listB) const {
  double smallest = work_.GetR(listA.front(), listB.front());
  for (const std::int32_t a : listA) {
    for (const std::int32_t b : listB) smallest = std::min(smallest, work_.GetR(a, b));
  }
  return smallest;
}

void SetMessageWindowHandle(std::uint32_t handle) { messageWindow = handle; }

}  // namespace shorttest

std::int32_t ReportResults(const TShortTestData& data, const TShortTestData& work) {
  if (UpdateProgress(1.0)) return 0;
  return shorttest::ResultReport(data, work).Send();
}

void SendHostMessage() {
  // Window handles have 32 significant bits and are widened with their sign.
  const auto handle = static_cast<std::intptr_t>(static_cast<std::int32_t>(messageWindow));
  SendMessageW(reinterpret_cast<HWND>(handle), RecordMessage, 0,
               reinterpret_cast<LPARAM>(HostMessage.c_str()));
}
