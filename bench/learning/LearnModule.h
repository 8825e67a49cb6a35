#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The entry of the learn module (`libkxlearn.so`, `kxlearn.dll`). Learning reaches the tester directly, not
/// through an extension, so it needs the driver's library; the program loads the module only to learn and
/// starts without a driver otherwise.

#ifdef _WIN32
#define KX_LEARN_MODULE_API __declspec(dllexport)
#else
#define KX_LEARN_MODULE_API __attribute__((visibility("default")))
#endif

namespace kxbench {

/// A pair of channels of which a new expectation says something other than the old one.
struct ChangedPair {
  std::int32_t lower;  ///< channel numbers
  std::int32_t higher;
  std::string before;  ///< "connected", "open", ...
  std::string after;
};

/// How a new expectation differs from the one that it replaces, over the channels of both.
struct LearnDifference {
  std::int32_t oldFirstChannel = 0;
  std::int32_t oldLastChannel = 0;
  std::int32_t firstChannel = 0;  ///< of both; above lastChannel where there is none
  std::int32_t lastChannel = 0;
  std::int64_t pairs = 0;           ///< compared
  std::int64_t changed = 0;         ///< of those
  std::vector<ChangedPair> listed;  ///< the first of those that changed, at most MostListedPairs
};
inline constexpr std::size_t MostListedPairs = 20;

/// What to learn, and how. Options that are not given keep the file's value, or the default for a new file.
struct LearnRequest {
  std::string file;                          ///< expectation file, UTF-8; made new when it does not exist
  std::optional<std::int32_t> firstChannel;  ///< channel number from 1; given with lastChannel or not at all
  std::optional<std::int32_t> lastChannel;
  std::optional<double> thresholdOhm;
  std::optional<std::int32_t> voltageControl;  ///< 0 none, 1 measure, 2 wait for discharge too
  bool makeNew = false;                        ///< keeps nothing of a file that exists; needs the channels

  /// Called when an existing file is about to be replaced, with every relay open. May be empty. What it
  /// throws leaves the file as it was.
  std::function<void(const LearnDifference& difference)> beforeReplacing;
};

struct SuspendedChannel {
  std::int32_t channel;
  double volts;  ///< 0 when the file had it suspended already
};

/// A channel that was learned as connected to nothing although its resistance to all the others together is
/// less than a tenth above the threshold. Nobody was asked about it: the question comes for pairs of nets
/// alone.
struct NearMiss {
  std::int32_t channel;
  double ohm;
};

enum class LearnEnd {
  Learned,    ///< the file is saved
  Damaged,    ///< the file is there, but not whole: see `failure`; nothing was measured
  Cancelled,  ///< by the user; the file is as it was
  Failed,     ///< see `failure`; the file is as it was
};

struct LearnSummary {
  LearnEnd end = LearnEnd::Failed;
  std::string failure;  ///< one line or more, UTF-8
  std::int32_t firstChannel = 0;
  std::int32_t lastChannel = 0;
  std::vector<std::vector<std::int32_t>> nets;  ///< channel numbers of each net of two or more, ascending
  std::vector<SuspendedChannel> suspended;
  std::vector<std::int32_t> unconnected;  ///< channels connected to nothing
  std::vector<NearMiss> nearMisses;       ///< of those
  std::uint64_t readings = 0;
  std::uint64_t relayOperations = 0;
  double seconds = 0;
};

}  // namespace kxbench

extern "C" {

/// Learns the connected device and saves the file. Shows its progress and asks its questions through
/// Application(). Every relay is open when it returns. Never throws.
KX_LEARN_MODULE_API void kxLearn(const kxbench::LearnRequest& request, kxbench::LearnSummary& summary);

}  // extern "C"

using KxLearn = void (*)(const kxbench::LearnRequest& request, kxbench::LearnSummary& summary);
inline constexpr char KxLearnName[] = "kxLearn";
