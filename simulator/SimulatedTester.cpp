#include "simulator/SimulatedTester.h"

#include "simulator/LoadedTester.h"

using simulator::LoadedTester;
using simulator::Tester;

namespace {

/// What `ask` tells of the tester; 0 while there is none.
template <typename Ask>
auto FromTester(Ask&& ask) -> decltype(ask(std::declval<const Tester&>())) {
  const Tester* tester = LoadedTester::Instance().CurrentTester();
  return tester != nullptr ? ask(*tester) : 0;
}

}  // namespace

std::int32_t brenmor_sim_load_text(const char* description) {
  return LoadedTester::Instance().LoadText(description) ? 0 : 1;
}

std::int32_t brenmor_sim_load_file(const char* fileName) {
  return LoadedTester::Instance().LoadFile(fileName) ? 0 : 1;
}

const char* brenmor_sim_load_error() { return LoadedTester::Instance().LoadError().c_str(); }

void brenmor_sim_reset() { LoadedTester::Instance().Reset(); }

std::int32_t brenmor_sim_closed_channel_relays() {
  return FromTester([](const Tester& tester) { return tester.Relays().ClosedChannelRelays(); });
}

std::int32_t brenmor_sim_closed_auxiliary_relays() {
  return FromTester([](const Tester& tester) { return tester.Relays().ClosedAuxiliaryRelays(); });
}

std::int32_t brenmor_sim_is_closed(std::int32_t channel, std::int32_t line) {
  if (channel < 1 || channel > simulator::MaxChannels || line < 0 || line >= simulator::LineCount) return 0;
  return FromTester([&](const Tester& tester) {
    const int card = (channel - 1) / simulator::ChannelsPerCard;
    const int relay = (channel - 1) % simulator::ChannelsPerCard;
    return tester.Relays().IsClosed(card, line, relay) ? 1 : 0;
  });
}

std::int32_t brenmor_sim_terminator_on() {
  return FromTester([](const Tester& tester) { return tester.TerminatorOn() ? 1 : 0; });
}

void brenmor_sim_manual_time(std::int32_t on) { LoadedTester::Instance().Time().SetManual(on != 0); }

void brenmor_sim_advance_ms(double milliseconds) {
  LoadedTester::Instance().Time().Advance(milliseconds / 1000.0);
}

std::int64_t brenmor_sim_call_count() {
  return FromTester([](const Tester& tester) { return tester.CallCount(); });
}

void brenmor_sim_fail_call(std::int64_t call, const char* text) {
  LoadedTester::Instance().Ready().FailCall(call, text);
}

std::int32_t brenmor_sim_outstanding_texts() {
  return static_cast<std::int32_t>(LoadedTester::Instance().OutstandingTexts());
}
