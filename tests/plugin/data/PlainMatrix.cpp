#include "tests/plugin/data/PlainMatrix.h"

namespace data_test {

void PlainMatrix::Put(std::int32_t i, std::int32_t j, CellState state, double resistance) {
  if (state == CellState::Unknown || Pair(i, j).state != CellState::Unknown) return;
  Set(i, j, {state, resistance});
  for (std::int32_t k = 0; k < count_; ++k) {
    if (state == CellState::Connected) Put(i, k, Pair(j, k).state, Pair(j, k).resistance);
    if (state == CellState::Connected) Put(j, k, Pair(i, k).state, Pair(i, k).resistance);
    if (Pair(i, k).state == CellState::Connected) Put(j, k, state, resistance);
    if (Pair(j, k).state == CellState::Connected) Put(i, k, state, resistance);
  }
}

}  // namespace data_test
