#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The entry of the self-test module (`libkxselftest.so`, `kxselftest.dll`): the tester itself, tested on an
/// empty fixture. It reaches the tester directly, so it needs the driver's library; the program loads the
/// module only for a self-test.

#ifdef _WIN32
#define KX_SELF_TEST_MODULE_API __declspec(dllexport)
#else
#define KX_SELF_TEST_MODULE_API __attribute__((visibility("default")))
#endif

namespace kxbench {

/// As many channels as can be probed for: five cards.
inline constexpr std::int32_t MostSelfTestChannels = 240;

/// What to test.
struct SelfTestRequest {
  std::optional<std::int32_t> firstChannel;  ///< channel number from 1; given with lastChannel or not at all
  std::optional<std::int32_t> lastChannel;   ///< at most MostSelfTestChannels

  /// Takes the position, 0.0 to 1.0, and returns true when the test is to stop. May be empty. What it throws
  /// ends the test with every relay open.
  std::function<bool(double position)> progress;
};

enum class TesterDefectKind {
  NeverCloses,  ///< a relay
  NeverOpens,   ///< a relay
  NoCard,       ///< a card does not answer
  NotEmpty,     ///< a channel is connected to another
  Voltage,      ///< on a channel
};

/// One defect. Cards and channels count from 1.
struct TesterDefect {
  TesterDefectKind kind;
  std::int32_t card;
  std::optional<std::int32_t> channel;  ///< none for a card, and for a relay of which only the card is known
  std::optional<std::int32_t> line;     ///< of a relay, 0 or 1
  bool certain = true;                  ///< false: this one, or the same of the other line or channel listed
  double volts = 0.0;                   ///< of a voltage

  friend bool operator==(const TesterDefect&, const TesterDefect&) = default;
};

enum class SelfTestEnd {
  Tested,
  Cancelled,  ///< by the user
  Failed,     ///< see `failure`
};

struct SelfTestSummary {
  SelfTestEnd end = SelfTestEnd::Failed;
  std::string failure;  ///< one line or more, UTF-8
  std::int32_t firstChannel = 0;
  std::int32_t lastChannel = 0;
  std::vector<std::int32_t> cards;    ///< that were tested, from 1
  std::vector<TesterDefect> defects;  ///< by card, channel, kind and line
};

}  // namespace kxbench

extern "C" {

/// Tests the tester. Every relay is open when it returns. Never throws.
KX_SELF_TEST_MODULE_API void kxSelfTest(const kxbench::SelfTestRequest& request,
                                        kxbench::SelfTestSummary& summary);

}  // extern "C"

using KxSelfTest = void (*)(const kxbench::SelfTestRequest& request, kxbench::SelfTestSummary& summary);
inline constexpr char KxSelfTestName[] = "kxSelfTest";
