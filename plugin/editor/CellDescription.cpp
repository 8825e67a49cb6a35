#include "plugin/editor/CellDescription.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "text/NumberText.h"

namespace shorttest {
namespace {

struct ResistanceUnit {
  double ohm;
  std::string_view name;
};

constexpr std::array<ResistanceUnit, 4> ResistanceUnits = {
    {{1e9, " GOhm"}, {1e6, " MOhm"}, {1e3, " kOhm"}, {1.0, " Ohm"}}};

constexpr int Digits = 4;

double RoundedToDigits(double value) {
  if (value == 0.0 || !std::isfinite(value)) return value;
  const int beforePoint = static_cast<int>(std::floor(std::log10(std::fabs(value)))) + 1;
  // Divided by a whole power of ten where there is one: multiplying with a fraction leaves crooked digits.
  const double scale = std::pow(10.0, std::abs(Digits - beforePoint));
  return beforePoint <= Digits ? std::round(value * scale) / scale : std::round(value / scale) * scale;
}

std::string ChannelText(std::int32_t channel, const ChannelNameLookup& name) {
  const std::string text = "Kanal " + std::to_string(channel);
  const std::string channelName = name(channel);
  return channelName.empty() ? text : text + " (" + channelName + ")";
}

std::string StateText(CellState state) {
  switch (state) {
    case CellState::Unknown:
      return "noch unbekannt";
    case CellState::NotConnected:
      return "nicht verbunden";
    case CellState::Connected:
      return "verbunden";
    case CellState::ExcludedPair:
      return "übersprungen";
    case CellState::NotTestable:
      return "nicht prüfbar";
    case CellState::Reserved:
      return "reserviert";
    case CellState::NotApplicable:
      return "mit sich selbst";
    case CellState::Suspended:
      return "gesperrt";
  }
  return "unbekannter Zustand " + std::to_string(static_cast<int>(state));  // from a damaged file
}

}  // namespace

std::string ResistanceText(double ohm) {
  const double rounded = RoundedToDigits(ohm);
  const auto* const unit =
      std::find_if(ResistanceUnits.begin(), ResistanceUnits.end() - 1,
                   [rounded](const ResistanceUnit& candidate) { return rounded >= candidate.ohm; });
  return FloatToText(RoundedToDigits(rounded / unit->ohm)) + std::string(unit->name);
}

std::string CellDescription(const TShortTestData& data, std::int32_t column, std::int32_t row,
                            const ChannelNameLookup& name) {
  const auto [lower, upper] = std::minmax(column, row);
  const TConnectionCell& cell =
      data.connections[static_cast<std::size_t>(upper)][static_cast<std::size_t>(lower)];
  const std::string first = ChannelText(data.von + lower, name);
  if (lower == upper) return first + "\n" + StateText(cell.state);
  return first + " und " + ChannelText(data.von + upper, name) + "\n" + StateText(cell.state) + ", " +
         (cell.resistance < 0.0 ? "Widerstand nicht gemessen" : ResistanceText(cell.resistance));
}

}  // namespace shorttest
