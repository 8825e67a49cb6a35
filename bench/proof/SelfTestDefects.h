#pragma once

#include <vector>

#include "bench/proof/SelfTestModule.h"
#include "bench/proof/SelfTestReadings.h"

namespace kxbench {

/// The fewest defects that explain the readings, in no order. Of explanations with the same number, defects
/// of relays come before a fixture that is not empty.
///
/// On an empty fixture a relay is seen only through the other relay of its channel. So where neither relay of
/// a channel is seen through a third one, a missing path means both, not certain: either never closes, or
/// both. And where line 0 reaches line 1 on a card with every relay open, two of its relays never open, one
/// on each line, of a channel that cannot be told.
std::vector<TesterDefect> DefectsOf(const TesterReadings& readings);

}  // namespace kxbench
