#include "plugin/editor/ShownParameters.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "text/NumberText.h"
#include "text/Rounding.h"

namespace shorttest {
namespace {

std::int32_t ToInteger(double value) {
  constexpr double Lowest = std::numeric_limits<std::int32_t>::min();
  constexpr double Highest = std::numeric_limits<std::int32_t>::max();
  if (std::isnan(value)) return 0;
  return static_cast<std::int32_t>(std::clamp(value, Lowest, Highest));
}

}  // namespace

std::int32_t UpperThresholdMinimum(double ohm) { return ToInteger(std::floor(ohm / OhmPerKiloOhm)); }

ShownParameters ShowParameters(const TShortTestData& data) {
  ShownParameters shown{};
  shown.voltageControl = data.U_Control;
  shown.timeoutMs = data.Timeout;
  shown.maxError = data.MaxError;
  shown.thresholdPosition = ToInteger(RoundToEven(data.Schwelle));
  shown.thresholdText = FloatToText(data.Schwelle);
  shown.upperThresholdMinimum = UpperThresholdMinimum(data.Schwelle);
  if (data.Schwelle2 > data.Schwelle) {
    shown.upperThresholdPosition = ToInteger(RoundToEven(data.Schwelle2 / OhmPerKiloOhm));
    shown.upperThresholdText = FloatToText(data.Schwelle2 / OhmPerKiloOhm);
  } else {
    shown.upperThresholdPosition = shown.upperThresholdMinimum;
  }
  if (data.LastRelaisKarte > 0 && data.LastRelais > 0) {
    shown.terminatingRelay = TerminatingRelay{data.LastRelaisKarte, data.LastRelais};
  }
  return shown;
}

}  // namespace shorttest
