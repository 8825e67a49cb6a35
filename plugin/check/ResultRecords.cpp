#include "plugin/check/ResultRecords.h"

#include <algorithm>

#include "contracts/WindowMessages.h"
#include "plugin/check/CheckForm.h"
#include "plugin/check/CheckPasses.h"
#include "text/NumberText.h"

std::u16string HostMessage;

namespace {

using shorttest::FloatToText;

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

void Send(const std::string& record) {
  HostMessage = ToUtf16(record);
  SendHostMessage();
}

// Sends error records up to the limit; the last one allowed says so behind its finding.
class ErrorRecords {
 public:
  explicit ErrorRecords(std::int32_t limit) : limit_(limit) {}

  bool LimitReached() const { return sent_ >= limit_; }
  std::int32_t Sent() const { return sent_; }

  void Add(const std::string& finding, const std::string& fields) {
    Send(finding + (sent_ == limit_ - 1 ? " -  ABBRUCH" : "") + fields);
    ++sent_;
  }

 private:
  std::int32_t limit_;
  std::int32_t sent_ = 0;
};

std::string Channel(const TShortTestData& data, std::int32_t index) {
  return std::to_string(data.von + index);
}

void ReportVoltages(const TShortTestData& data, const TShortTestData& work, ErrorRecords& errors) {
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    const bool found = work.Get(i, i) == CellState::Suspended && data.Get(i, i) != CellState::Suspended;
    if (!found || errors.LimitReached()) continue;
    errors.Add("Spannung an Kanal " + Channel(data, i),
               "|" + FloatToText(VoltageLimit) + "|" + FloatToText(work.GetVoltage(i)) + "|V|||");
  }
}

void ReportConnections(const TShortTestData& data, const TShortTestData& work, ErrorRecords& errors) {
  std::int32_t expected = 0;
  std::int32_t found = 0;
  const std::int32_t high = data.Highconnections();
  for (std::int32_t i = 0; i < high; ++i) {
    for (std::int32_t j = i + 1; j <= high; ++j) {
      if (data.Get(i, j) != CellState::Connected) continue;
      ++expected;
      if (work.Get(i, j) == CellState::Connected) {
        ++found;
      } else if (!errors.LimitReached()) {
        errors.Add("fehlende Verbindung zwischen " + Channel(data, i) + " und " + Channel(data, j),
                   "|0|" + FloatToText(work.GetR(i, j)) + "|Ohm|" + FloatToText(work.Schwelle) + "|0|");
      }
    }
  }
  if (expected > 0) {
    const std::string count = std::to_string(expected);
    Send("Verbindungstest|" + count + "|" + std::to_string(found) + "||" + count + "||");
  }
}

// The channels of i's expected net, i among them, ascending.
std::vector<std::int32_t> ExpectedNet(const TShortTestData& data, std::int32_t i) {
  std::vector<std::int32_t> net;
  for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
    if (j == i || data.Get(i, j) == CellState::Connected) net.push_back(j);
  }
  return net;
}

// The channels found connected to i although they are expected to be open, ascending.
std::vector<std::int32_t> ShortedTo(const TShortTestData& data, const TShortTestData& work, std::int32_t i) {
  std::vector<std::int32_t> shorted;
  for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
    if (work.Get(i, j) == CellState::Connected && data.Get(i, j) == CellState::NotConnected) {
      shorted.push_back(j);
    }
  }
  return shorted;
}

// A short is told from its lower side, but from every channel of the lower net: a net of n channels yields n
// records of the same text. This repetition is meant.
void ReportShorts(const TShortTestData& data, const TShortTestData& work, ErrorRecords& errors) {
  std::int32_t shorts = 0;
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    const std::vector<std::int32_t> shorted = ShortedTo(data, work, i);
    if (shorted.empty() || i >= shorted.front() || errors.LimitReached()) continue;
    const std::vector<std::int32_t> net = ExpectedNet(data, i);
    errors.Add(
        "Kurzschluss zwischen " + FormatChannelList(data, net) + " und " + FormatChannelList(data, shorted),
        "|" + FloatToText(work.Schwelle2) + "|" + FloatToText(MinGroupResistance(work, shorted, net)) +
            "|Ohm|" + NoUpperLimit + "|0|");
    ++shorts;
  }
  Send("Kurzschlusstest|0|" + std::to_string(shorts) + "||0||");
}

}  // namespace

std::int32_t ReportResults(const TShortTestData& data, const TShortTestData& work) {
  if (UpdateProgress(1.0)) return 0;
  ErrorRecords errors(data.MaxError);
  ReportVoltages(data, work, errors);
  ReportConnections(data, work, errors);
  ReportShorts(data, work, errors);
  return errors.Sent();
}

void SendHostMessage() {
  // Window handles have 32 significant bits and are widened with their sign.
  const auto handle = static_cast<std::intptr_t>(static_cast<std::int32_t>(messageWindow));
  SendMessageW(reinterpret_cast<HWND>(handle), RecordMessage, 0,
               reinterpret_cast<LPARAM>(HostMessage.c_str()));
}

std::string FormatChannelList(const TShortTestData& data, const std::vector<std::int32_t>& indices) {
  std::string text = Channel(data, indices.front());
  if (indices.size() == 1) return text;
  for (std::size_t i = 1; i < indices.size(); ++i) text += ", " + Channel(data, indices[i]);
  return "(" + text + ")";
}

double MinGroupResistance(const TShortTestData& work, const std::vector<std::int32_t>& listA,
                          const std::vector<std::int32_t>& listB) {
  double smallest = work.GetR(listA.front(), listB.front());
  for (const std::int32_t a : listA) {
    for (const std::int32_t b : listB) smallest = std::min(smallest, work.GetR(a, b));
  }
  return smallest;
}

namespace shorttest {

std::uint32_t MessageWindowHandle() { return messageWindow; }

void SetMessageWindowHandle(std::uint32_t handle) { messageWindow = handle; }

}  // namespace shorttest
