#include "bench/proof/SelfTestRelays.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "contracts/BrenmorHWDevice.h"
#include "plugin/hardware/Bus.h"
#include "plugin/hardware/Timing.h"

namespace kxbench {

namespace {

constexpr std::int32_t MostCards = 5;
constexpr std::int32_t ProbeMode = 2;
constexpr double OpeningSettleSeconds = 0.001;

/// Card 1 is probed by its first relay, the others by their last, as the plug-in does.
std::int32_t ProbedRelay(std::int32_t card) { return card == 1 ? 1 : card * SelfTestChannelsPerCard; }

/// The driver's text; empty when it holds no error.
std::string PendingError() {
  try {
    CheckHWError();
    return "";
  } catch (const TShortTestHWException& error) {
    return error.what();
  }
}

}  // namespace

std::vector<std::int32_t> AnsweringCards() {
  std::vector<std::int32_t> cards;
  std::string reason;
  brenmor_bus_delete_error();
  for (std::int32_t card = 1; card <= MostCards; ++card) {
    if (brenmor_msu_write_relay(ProbedRelay(card), ProbeMode) != 0) {
      cards.push_back(card);
      continue;
    }
    if (card == 1) reason = PendingError();
    brenmor_bus_delete_error();
  }
  if (!cards.empty()) return cards;
  if (!reason.empty()) throw TShortTestHWException(reason);
  throw std::runtime_error("no relay card answers");
}

TestedCards::TestedCards(std::vector<std::int32_t> cards)
    : cards_(std::move(cards)), lastCleanUp_([this] { OpenAll(); }) {
  OpenAll();
  CheckHWError();
}

void TestedCards::ConnectOnly(const std::vector<std::int32_t>& cards) const {
  OpenAll();
  for (const std::int32_t card : cards) shorttest::PrepareCard(card - 1, true);
  CheckHWError();
  DelaySeconds(OpeningSettleSeconds);
}

void TestedCards::ConnectPieces(const std::vector<LinePiece>& pieces) const {
  OpenAll();
  for (const LinePiece& piece : pieces) {
    shorttest::PrepareCard(piece.card - 1, true);
    shorttest::ReleaseLine(piece.card - 1, 1 - piece.line);
  }
  CheckHWError();
  DelaySeconds(OpeningSettleSeconds);
}

void TestedCards::OpenAll() const noexcept {
  for (const std::int32_t card : cards_) {
    shorttest::ReleaseLine(card - 1, 0);
    shorttest::ReleaseLine(card - 1, 1);
  }
}

}  // namespace kxbench
