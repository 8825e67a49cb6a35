#include "bench/program/host/DriverFacts.h"

#include <cstdint>

#include "bench/program/system/DynamicLibrary.h"
#include "bench/program/system/GuardWords.h"
#include "bench/program/system/System.h"
#include "contracts/BrenmorHWDevice.h"

namespace kxbench {

namespace {

constexpr std::int32_t ProbeMode = 2;

/// The first channel of the first card, the last ones of the others.
constexpr std::int32_t ProbedChannels[] = {1, 96, 144, 192, 240};

}  // namespace

DriverFacts AskDriver() {
  DriverFacts facts;
  const auto file = LoadedLibrary(DriverLibraryName());
  if (!file) return facts;
  facts.file = Utf8FromPath(*file);
  const DynamicLibrary library("the driver", *file);
  const auto generation = library.Find<decltype(&brenmor_adx_hw_generation)>("brenmor_adx_hw_generation");
  const auto probe = library.Find<decltype(&brenmor_msu_write_relay)>("brenmor_msu_write_relay");
  const auto deleteError = library.Find<decltype(&brenmor_bus_delete_error)>("brenmor_bus_delete_error");
  if (generation == nullptr || probe == nullptr || deleteError == nullptr) return facts;
  facts.generation = std::to_string(generation());
  int cards = 0;
  for (const std::int32_t channel : ProbedChannels) {
    if (probe(channel, ProbeMode) == 0) break;
    ++cards;
  }
  deleteError();  // a card that is not fitted is one to most drivers
  facts.cards = std::to_string(cards);
  return facts;
}

}  // namespace kxbench
