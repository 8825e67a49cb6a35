#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "plugin/data/ConnectionCell.h"

namespace shorttest {

/// Notes on the pairs of a matrix, as bits: for each channel, with which channels its pair is known and with
/// which it is connected, its own diagonal cell among them. So 64 pairs are looked at in one step.
///
/// No operation but Note checks its indices: callers pass channels below Channels().
class PairBits {
 public:
  /// Of 64 channels that follow each other, one a bit.
  using Word = std::uint64_t;
  static constexpr std::size_t WordBits = 64;

  /// What is known of the pairs of one channel with 64 others.
  struct Pairs {
    Word known = 0;
    Word connected = 0;

    /// REQUIRES: bit < WordBits.
    void Set(std::size_t bit, CellState state) {
      const Word one = Word{1} << bit;
      known = state == CellState::Unknown ? known & ~one : known | one;
      connected = state == CellState::Connected ? connected | one : connected & ~one;
    }
  };

  /// For no channel.
  PairBits() = default;

  /// Notes for `channels` channels, none of which is noted yet.
  explicit PairBits(std::size_t channels)
      : words_((channels + WordBits - 1) / WordBits), pairs_(channels * words_), noted_(channels) {}

  /// Number of channels that there are notes for.
  std::size_t Channels() const { return noted_.size(); }

  /// No channel is noted any more.
  void Forget() { noted_.assign(noted_.size(), 0); }

  /// Whether all pairs of `channel` were noted since the last Forget.
  bool IsNoted(std::size_t channel) const { return noted_[channel] != 0; }

  /// From here on `channel` counts as noted.
  void SetNoted(std::size_t channel) { noted_[channel] = 1; }

  /// The pairs of `channel` with the channels from 64 * `word` on.
  Pairs& At(std::size_t channel, std::size_t word) { return pairs_[channel * words_ + word]; }
  const Pairs& At(std::size_t channel, std::size_t word) const { return pairs_[channel * words_ + word]; }

  /// Notes the pair (i, j), in both channels. Does nothing for channels without notes.
  void Note(std::size_t i, std::size_t j, CellState state) {
    if (i >= Channels() || j >= Channels()) return;
    At(i, j / WordBits).Set(j % WordBits, state);
    At(j, i / WordBits).Set(i % WordBits, state);
  }

  /// The first channel from `from` on of which exactly one of `i` and `j` knows its pair; with
  /// `connectedOnly` the first that one of them is connected to and the other knows nothing of. REQUIRES: `i`
  /// and `j` are noted.
  std::optional<std::size_t> NextKnownToOne(std::size_t i, std::size_t j, bool connectedOnly,
                                            std::size_t from) const;

 private:
  std::size_t words_ = 0;            // for each channel
  std::vector<Pairs> pairs_;         // channel by channel; what is past the last channel stays 0
  std::vector<std::uint8_t> noted_;  // bytes, so that they are cleared at once
};

}  // namespace shorttest
