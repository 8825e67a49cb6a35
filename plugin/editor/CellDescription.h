#pragma once

#include <cstdint>
#include <string>

#include "plugin/data/ShorttestData.h"
#include "plugin/editor/NamesView.h"

namespace shorttest {

/// What the grid says of a cell (UTF-8, German, two lines): the channels with their names, the lower one
/// first; the state in words; the resistance, where the cell is one of a pair. `column` and `row` are matrix
/// indices, and the two halves of the square are the same. REQUIRES: both from 0 to `data.Highconnections()`.
std::string CellDescription(const TShortTestData& data, std::int32_t column, std::int32_t row,
                            const ChannelNameLookup& name);

/// A resistance (Ohm, 0 or above) in Ohm, kOhm, MOhm or GOhm, rounded to four digits: "0,42 Ohm", "2,5 kOhm".
std::string ResistanceText(double ohm);

}  // namespace shorttest
