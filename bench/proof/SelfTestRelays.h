#pragma once

#include <cstdint>
#include <vector>

#include "plugin/hardware/LastCleanUp.h"

namespace kxbench {

inline constexpr std::int32_t SelfTestChannelsPerCard = 48;

/// The card of a channel, both from 1.
constexpr std::int32_t CardOfChannel(std::int32_t channel) {
  return (channel - 1) / SelfTestChannelsPerCard + 1;
}

/// The cards that answer, from 1, ascending; all of five are asked. Throws TShortTestHWException with the
/// driver's text for the first card, or std::runtime_error where it has none, when no card answers.
std::vector<std::int32_t> AnsweringCards();

/// What lies on one card of a line.
struct LinePiece {
  std::int32_t card;  ///< from 1
  std::int32_t line;
};

/// The relays of some cards, for one test. What a driver reports is thrown as TShortTestHWException.
class TestedCards {
 public:
  /// Opens all relays of `cards`, from 1. REQUIRES: they answer.
  explicit TestedCards(std::vector<std::int32_t> cards);

  /// Opens all their relays.
  ~TestedCards() { OpenAll(); }
  TestedCards(const TestedCards&) = delete;
  TestedCards& operator=(const TestedCards&) = delete;

  /// Opens every relay of all cards, and then connects the pieces of the two lines that lie on `cards` with
  /// the tester's lines. Those on the other cards reach nothing.
  void ConnectOnly(const std::vector<std::int32_t>& cards) const;

  /// The same for single pieces.
  void ConnectPieces(const std::vector<LinePiece>& pieces) const;

 private:
  void OpenAll() const noexcept;

  std::vector<std::int32_t> cards_;
  shorttest::LastCleanUp lastCleanUp_;
};

}  // namespace kxbench
