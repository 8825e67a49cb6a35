#include "plugin/hardware/Bus.h"

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>
#include <string>

#include "contracts/BrenmorHWDevice.h"
#include "plugin/hardware/Timing.h"
#include "text/SystemText.h"

std::int32_t HWChannelCount = 0;

namespace {

constexpr std::int32_t ChannelsPerCard = 48;
constexpr std::int32_t FirstLineAddress = 128;  // line 0 of card 0; two addresses a card
constexpr std::int32_t MaxCards = 64;           // addresses have 8 bits
constexpr std::int32_t LineReset = 64;
constexpr std::int32_t CloseRelay = 128;
constexpr std::array<std::int32_t, 2> AuxiliaryLine0 = {CloseRelay + 48, CloseRelay + 50};
constexpr std::array<std::int32_t, 2> AuxiliaryLine1 = {CloseRelay + 49, CloseRelay + 51};
constexpr double OpeningSettleSeconds = 0.001;
constexpr std::int32_t ProbeMode = 2;

void WriteBus(std::int32_t address, std::int32_t value) { brenmor_bus_write(address, 0, value); }

constexpr std::int32_t LineAddress(std::int32_t card, std::int32_t line) {
  return FirstLineAddress + 2 * card + line;
}

// Where a channel sits. The loop instead of a division keeps the arithmetic of numbers that no card has.
struct ChannelPlace {
  std::int32_t address;
  std::int32_t relay;

  ChannelPlace(std::int32_t channel, std::int32_t line) : address(FirstLineAddress), relay(channel) {
    while (relay > ChannelsPerCard) {
      address += 2;
      relay -= ChannelsPerCard;
    }
    address += line;
    relay = static_cast<std::int32_t>(static_cast<std::uint32_t>(relay) - 1U);  // wraps at the lowest number
  }
};

// Takes the text of the pending error and gives the driver's memory back, also when the conversion fails.
std::string TakeDriverErrorText() {
  const std::unique_ptr<char, void (*)(void*)> text(brenmor_bus_get_error_msg(), brenmor_free_mem);
  if (text == nullptr) return "Der Treiber meldet einen Fehler ohne Text.";
  return shorttest::SystemTextToUtf8(text.get());
}

bool ProbeRelay(std::int32_t relay) { return brenmor_msu_write_relay(relay, ProbeMode) != 0; }

bool testerInUse = false;

bool HasTermination(const TShortTestData& data) { return data.LastRelaisKarte > 0 && data.LastRelais > 0; }

void SwitchTermination(const TShortTestData& data, std::int32_t state) {
  brenmor_relay_set(data.LastRelaisKarte - 1, data.LastRelais - 1, state);
}

}  // namespace

void CheckHWError() {
  if (brenmor_bus_get_error() == 0) return;
  throw TShortTestHWException(TakeDriverErrorText());
}

void ConnectChannel(std::int32_t channel, std::int32_t line) {
  const ChannelPlace place(channel, line);
  WriteBus(place.address, place.relay | CloseRelay);
  CheckHWError();
}

void ReleaseChannel(std::int32_t channel, std::int32_t line) {
  const ChannelPlace place(channel, line);
  WriteBus(place.address, place.relay);
  CheckHWError();
  DelaySeconds(OpeningSettleSeconds);
}

bool InitHardware() {
  brenmor_bus_delete_error();
  WriteBus(LineAddress(0, 0), LineReset);
  WriteBus(LineAddress(0, 1), LineReset);
  if (!ProbeRelay(1)) {
    CheckHWError();
    return false;
  }
  HWChannelCount = ChannelsPerCard;

  // The last channel of each further card. A card that does not answer is not fitted; that is no error.
  for (const std::int32_t lastChannel : {96, 144, 192, 240}) {
    const bool answered = ProbeRelay(lastChannel);
    if (answered) HWChannelCount = lastChannel;
    if (!answered) brenmor_bus_delete_error();
    // The last probe is cleared up after whatever its outcome, once more when it failed.
    if (lastChannel == 240) brenmor_bus_delete_error();
    if (!answered) break;
  }
  return true;
}

void ResetHardware() {
  brenmor_bus_delete_error();
  WriteBus(LineAddress(0, 0), LineReset);
  WriteBus(LineAddress(0, 1), LineReset);
  CheckHWError();
}

void PrepareCards(const TShortTestData& data, bool resetFirst) {
  if (data.AnzahlKarten() > MaxCards) {
    throw std::out_of_range("Kanal " + std::to_string(data.bis) +
                            " (ENDE) ist zu groß. Der Bus der Relaiskarten hat " +
                            std::to_string(MaxCards * ChannelsPerCard) + " Kanäle.");
  }
  for (std::int32_t card = 0; card < data.AnzahlKarten(); ++card) shorttest::PrepareCard(card, resetFirst);
}

void ReleaseAllLines(const TShortTestData& data) noexcept {
  const std::int32_t cards = std::min(data.AnzahlKarten(), MaxCards);
  for (std::int32_t card = 0; card < cards; ++card) {
    WriteBus(LineAddress(card, 0), LineReset);
    WriteBus(LineAddress(card, 1), LineReset);
  }
}

namespace shorttest {

void PrepareCard(std::int32_t card, bool resetFirst) {
  if (resetFirst) WriteBus(LineAddress(card, 0), LineReset);
  for (const std::int32_t value : AuxiliaryLine0) WriteBus(LineAddress(card, 0), value);
  if (resetFirst) WriteBus(LineAddress(card, 1), LineReset);
  for (const std::int32_t value : AuxiliaryLine1) WriteBus(LineAddress(card, 1), value);
  CheckHWError();
}

void RequireTesterFree() {
  if (testerInUse) throw std::logic_error("Es läuft bereits ein Kurzschlusstest oder ein Lernvorgang.");
}

TesterInUse::TesterInUse() {
  RequireTesterFree();
  testerInUse = true;
}

TesterInUse::~TesterInUse() { testerInUse = false; }

void SwitchTerminationOn(const TShortTestData& data) {
  if (!HasTermination(data)) return;
  SwitchTermination(data, 1);
  CheckHWError();
}

void SwitchTerminationOff(const TShortTestData& data) noexcept {
  if (HasTermination(data)) SwitchTermination(data, 0);
}

std::optional<std::int32_t> CardPastRange(const TShortTestData& data) noexcept {
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    if (data.Get(i, i) != CellState::Suspended) return std::nullopt;
  }
  const std::int32_t cards = data.AnzahlKarten();
  const std::int64_t channel = std::int64_t{data.von} + data.Highconnections() + 1;
  if (cards > MaxCards || channel < 1) return std::nullopt;
  const auto card = static_cast<std::int32_t>((channel - 1) / ChannelsPerCard);
  return card < cards ? std::nullopt : std::optional(card);
}

void ReleaseLine(std::int32_t card, std::int32_t line) noexcept {
  WriteBus(LineAddress(card, line), LineReset);
}

}  // namespace shorttest
