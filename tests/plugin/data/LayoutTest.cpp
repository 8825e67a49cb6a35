// What the data's types promise at compile time.
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "plugin/data/ShorttestData.h"

namespace {

constexpr std::size_t InTheirOrder[] = {
    offsetof(TShortTestData, von),        offsetof(TShortTestData, bis),
    offsetof(TShortTestData, Schwelle),   offsetof(TShortTestData, Schwelle2),
    offsetof(TShortTestData, U_Control),  offsetof(TShortTestData, LastRelaisKarte),
    offsetof(TShortTestData, LastRelais), offsetof(TShortTestData, Timeout),
    offsetof(TShortTestData, MaxError),   offsetof(TShortTestData, connections),
    offsetof(TShortTestData, voltages),
};

constexpr bool Ascend() {
  std::size_t before = 0;
  for (const std::size_t offset : InTheirOrder) {
    if (offset < before) return false;
    before = offset + 1;
  }
  return true;
}

static_assert(!std::is_polymorphic_v<TShortTestData>, "no virtual operations");
static_assert(InTheirOrder[0] == 0 && Ascend(), "the fields stand in their order, nothing before them");

static_assert(std::is_same_v<std::underlying_type_t<CellState>, std::uint8_t>, "a state has 8 bits");
static_assert(offsetof(TConnectionCell, state) == 0 && offsetof(TConnectionCell, resistance) > 0);
static_assert(offsetof(TConnFoundItem, x) == 0 && offsetof(TConnFoundItem, resistance) > 0);
static_assert(std::is_same_v<decltype(TConnFoundItem::x), std::int32_t>);

static_assert(std::is_same_v<decltype(TShortTestData::von), std::int32_t>);
static_assert(std::is_same_v<decltype(TShortTestData::Schwelle), double>);
static_assert(std::is_same_v<decltype(TShortTestData::MaxError), std::int32_t>);

}  // namespace
