#include "plugin/data/ShorttestData.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::size_t Index(std::int64_t i) { return static_cast<std::size_t>(i); }

// Number of channels of a range; 0 when it holds none.
std::int64_t CountChannels(std::int32_t von, std::int32_t bis) {
  const std::int64_t count = std::int64_t{bis} - von + 1;
  if (count > TShortTestData::MaxChannels) {
    throw std::length_error("the channel range " + std::to_string(von) + " to " + std::to_string(bis) +
                            " holds " + std::to_string(count) + " channels, more than the " +
                            std::to_string(TShortTestData::MaxChannels) + " that are possible");
  }
  return std::max<std::int64_t>(count, 0);
}

// N rows of N cells, every pair unknown.
TConnections UnknownMatrix(std::int64_t count) {
  TConnections matrix(Index(count), std::vector<TConnectionCell>(Index(count)));
  for (std::size_t row = 0; row < matrix.size(); ++row) {
    for (std::size_t column = row; column < matrix.size(); ++column) {
      matrix.Set(row, column, {CellState::NotApplicable, NoResistance});
    }
  }
  return matrix;
}

// One call of Put that has entered its pair and works through the consequences.
struct PutCall {
  std::int32_t i;
  std::int32_t j;
  std::int32_t k;  // the next channel to look at
  CellState state;
  double resistance;
};

// The call that `call` makes next; calls that would change nothing are passed over. No value when all k are
// done.
//
// For every k there are four rules, in this order: a connection lets i take over what is known of (j, k), and
// j of (i, k); whatever was found goes to (j, k) if i and k are connected, and to (i, k) if j and k are. Each
// enters one of the two pairs, while it is unknown, because of the other, which is then known. So only a k
// with exactly one known pair matters, which without a connection must be a connected one, at most one rule
// applies to it, and afterwards both are known. The order of k and of the rules decides which resistance a
// pair carries.
std::optional<PutCall> NextCall(TShortTestData& data, PutCall& call) {
  const bool connects = call.state == CellState::Connected;
  const auto found = data.connections.NotesOn(Index(call.i), Index(call.j))
                         .NextKnownToOne(Index(call.i), Index(call.j), !connects, Index(call.k));
  if (!found) return std::nullopt;

  const auto k = static_cast<std::int32_t>(*found);
  call.k = k + 1;
  const bool knowsI = data.Get(call.i, k) != CellState::Unknown;
  const std::int32_t from = knowsI ? call.i : call.j;
  const std::int32_t to = knowsI ? call.j : call.i;
  if (connects) return PutCall{to, k, 0, data.Get(from, k), data.GetR(from, k)};
  return PutCall{to, k, 0, call.state, call.resistance};
}

}  // namespace

TShortTestData::TShortTestData(std::int32_t firstChannel, std::int32_t lastChannel)
    : von(firstChannel),
      bis(lastChannel),
      connections(UnknownMatrix(CountChannels(firstChannel, lastChannel))),
      voltages(connections.size(), 0.0) {}

std::int32_t TShortTestData::AnzahlKarten() const {
  return static_cast<std::int32_t>((std::int64_t{bis} - 1) / 48 + 1);
}

void TShortTestData::SetC(std::int32_t i, std::int32_t j, CellState state, double resistance) {
  connections.Set(Index(std::max(i, j)), Index(std::min(i, j)), {state, resistance});
}

void TShortTestData::Put(std::int32_t i, std::int32_t j, CellState state, double resistance) {
  if (state == CellState::Unknown || Get(i, j) != CellState::Unknown) return;

  connections.BeginPropagation();
  PutCall call{i, j, 0, state, resistance};
  SetC(i, j, state, resistance);
  // A stack of our own instead of recursion: two nets of 120 channels that turn out shorted nest the calls
  // 14,400 deep, more than the call stack of a host's main thread holds.
  std::vector<PutCall> callers;
  for (;;) {
    if (const auto next = NextCall(*this, call)) {
      callers.push_back(call);
      call = *next;
      SetC(call.i, call.j, call.state, call.resistance);
    } else {
      if (callers.empty()) return;
      call = callers.back();
      callers.pop_back();
    }
  }
}

void TShortTestData::SuspendChannel(std::int32_t channel, double v) {
  for (std::int32_t k = 0; k <= Highconnections(); ++k) {
    const bool bothSuspended =
        Get(k, k) == CellState::Suspended && Get(channel, channel) == CellState::Suspended;
    if (!bothSuspended && Get(k, channel) != CellState::NotApplicable) {
      SetC(k, channel, CellState::NotTestable, NoResistance);
    }
  }
  SetC(channel, channel, CellState::Suspended, NoResistance);
  voltages[Index(channel)] = v;
}

void TShortTestData::SetVonBis(std::int32_t newVon, std::int32_t newBis) {
  const std::int64_t shift = std::int64_t{newVon} - von;
  const auto oldCount = static_cast<std::int64_t>(connections.size());
  const auto wasInRange = [&](std::int64_t newIndex) {
    return newIndex + shift >= 0 && newIndex + shift < oldCount;
  };

  TConnections matrix = UnknownMatrix(CountChannels(newVon, newBis));
  const auto newCount = static_cast<std::int64_t>(matrix.size());
  for (std::int64_t row = 0; row < newCount; ++row) {
    for (std::int64_t column = 0; column < newCount; ++column) {
      if (wasInRange(row) && wasInRange(column)) {
        matrix.Set(Index(row), Index(column),
                   std::as_const(connections)[Index(row + shift)][Index(column + shift)]);
      }
    }
  }

  // Only as many voltages as both ranges have are looked at, counted from the new start; one whose shifted
  // index lies outside the old range is 0.
  TVoltages shifted(matrix.size(), 0.0);
  for (std::int64_t i = 0; i < std::min(oldCount, newCount); ++i) {
    if (wasInRange(i)) shifted[Index(i)] = voltages[Index(i + shift)];
  }

  connections = std::move(matrix);
  voltages = std::move(shifted);
  von = newVon;
  bis = newBis;
}
