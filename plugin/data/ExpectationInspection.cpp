#include "plugin/data/ExpectationInspection.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "plugin/data/ExpectationText.h"
#include "plugin/data/ShorttestData.h"
#include "text/FileAccess.h"
#include "text/IniText.h"
#include "text/Lines.h"
#include "text/NumberText.h"

namespace shorttest {
namespace {

struct ExpectationKey {
  const char* section;
  const char* name;
  bool isInteger;
};

constexpr std::array<ExpectationKey, 9> ExpectationKeys = {{{"BEREICH", "START", true},
                                                            {"BEREICH", "ENDE", true},
                                                            {"BEREICH", "WIDERSTAND", false},
                                                            {"BEREICH", "WIDERSTAND2", false},
                                                            {"OPTION", "U_KONTROLLE", true},
                                                            {"OPTION", "LASTRELAISKARTE", true},
                                                            {"OPTION", "LASTRELAIS", true},
                                                            {"OPTION", "TIMEOUT", true},
                                                            {"OPTION", "MAX ERROR", true}}};

bool Contains(const std::vector<std::string>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

void InspectKeys(const IniText& ini, ExpectationInspection& result) {
  for (const ExpectationKey& key : ExpectationKeys) {
    const auto value = ini.Find(key.section, key.name);
    if (!value) {
      result.missingKeys.emplace_back(key.name);
    } else if (key.isInteger ? !TextToInteger(*value) : !TextToFloat(*value)) {
      result.unreadableKeys.emplace_back(key.name);
    }
  }
  const auto readable = [&result](std::string_view name) {
    return !Contains(result.missingKeys, name) && !Contains(result.unreadableKeys, name);
  };
  result.startReadable = readable("START");
  result.endReadable = readable("ENDE");
}

bool IsWholeRow(std::string_view line, std::size_t channels) {
  const std::size_t end = std::min(line.find_first_not_of("0123489"), line.size());
  return end == channels && line.find_first_not_of(' ', end) == std::string_view::npos;
}

void InspectLines(std::string_view rest, std::int64_t channels, ExpectationInspection& result) {
  while (!result.hasBlock && !rest.empty()) {
    result.hasBlock = TakeLine(rest).text.find("[DATEN]") != std::string_view::npos;
  }
  for (std::int64_t row = 0; row < channels && !rest.empty(); ++row) {
    if (IsWholeRow(TakeLine(rest).text, static_cast<std::size_t>(channels))) ++result.wholeRows;
  }
}

bool IsSuspendedChannel(const TShortTestData& data, std::int32_t i) {
  return data.Get(i, i) == CellState::Suspended;
}

bool IsPairState(const TShortTestData& data, std::int32_t i, std::int32_t j) {
  const CellState state = data.Get(i, j);
  if (state == CellState::NotTestable) return IsSuspendedChannel(data, i) || IsSuspendedChannel(data, j);
  return state <= CellState::ExcludedPair;
}

void InspectPairs(const TShortTestData& data, std::int32_t i, ExpectationInspection& result) {
  for (std::int32_t j = 0; j < i; ++j) {
    const CellState state = data.Get(i, j);
    if (!IsPairState(data, i, j)) ++result.strangeCells;
    if (state == CellState::Unknown) ++result.unknownPairs;
    if (state == CellState::Connected) ++result.connectedPairs;
    if (state == CellState::ExcludedPair) ++result.excludedPairs;
  }
}

void InspectCells(const TShortTestData& data, ExpectationInspection& result) {
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    InspectPairs(data, i, result);
    if (IsSuspendedChannel(data, i)) {
      ++result.suspendedChannels;
    } else if (data.Get(i, i) != CellState::NotApplicable) {
      ++result.strangeCells;
    }
    const auto& row = data.connections[static_cast<std::size_t>(i)];
    result.strangeCells += std::count_if(row.begin() + i + 1, row.end(), [](const TConnectionCell& cell) {
      return cell.state != CellState::NotApplicable;
    });
  }
}

}  // namespace

ExpectationInspection InspectExpectationText(std::string_view content) {
  const IniText ini(content);
  ExpectationInspection result;
  InspectKeys(ini, result);
  const ExpectationRange range = ReadExpectationRange(ini);
  result.von = range.von;
  result.bis = range.bis;

  const std::int64_t channels = std::int64_t{range.bis} - range.von + 1;
  const bool readable = channels <= TShortTestData::MaxChannels;
  InspectLines(content, readable ? channels : 0, result);
  if (readable) InspectCells(ReadExpectationText(content), result);
  return result;
}

ExpectationInspection InspectExpectationFile(const std::string& utf8Path) {
  return InspectExpectationText(ReadWholeFile(AbsolutePath(utf8Path)));
}

}  // namespace shorttest
