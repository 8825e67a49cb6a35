#include <cstdint>
#include <memory>

#include "bench/program/DynamicLibrary.h"
#include "bench/program/Failure.h"
#include "bench/program/GuardWords.h"
#include "bench/program/System.h"
#include "contracts/BrenmorHWDevice.h"
#include "text/SystemText.h"

namespace kxbench {

namespace {

constexpr std::int32_t FirstLine = 128;  // two addresses a card
constexpr std::int32_t OpenAll = 64;
constexpr std::int32_t UsualCards = 5;  // as many as are probed for
constexpr std::int32_t BusCards = 64;   // addresses have 8 bits

/// Of the driver's functions those that it takes to open relays.
struct OpeningDriver {
  explicit OpeningDriver(const DynamicLibrary& library)
      : write(library.Find<decltype(&brenmor_bus_write)>("brenmor_bus_write")),
        getError(library.Find<decltype(&brenmor_bus_get_error)>("brenmor_bus_get_error")),
        getErrorText(library.Find<decltype(&brenmor_bus_get_error_msg)>("brenmor_bus_get_error_msg")),
        deleteError(library.Find<decltype(&brenmor_bus_delete_error)>("brenmor_bus_delete_error")),
        free(library.Find<decltype(&brenmor_free_mem)>("brenmor_free_mem")) {
    if (!write || !getError || !getErrorText || !deleteError || !free) throw Failure("it is no driver");
  }

  decltype(&brenmor_bus_write) write;
  decltype(&brenmor_bus_get_error) getError;
  decltype(&brenmor_bus_get_error_msg) getErrorText;
  decltype(&brenmor_bus_delete_error) deleteError;
  decltype(&brenmor_free_mem) free;
};

/// Opens the relays of one card; what the driver says against it.
std::string OpenCard(const OpeningDriver& driver, std::int32_t card) {
  driver.deleteError();
  driver.write(FirstLine + 2 * card, 0, OpenAll);
  driver.write(FirstLine + 2 * card + 1, 0, OpenAll);
  if (driver.getError() == 0) return "";
  const std::unique_ptr<char, decltype(&brenmor_free_mem)> text(driver.getErrorText(), driver.free);
  return text == nullptr ? "the driver reports an error without a text"
                         : shorttest::SystemTextToUtf8(text.get());
}

}  // namespace

std::string OpenEveryRelay(const std::string& driverFile) {
  try {
    // The simulated tester starts its trace anew otherwise, and what came before is what matters.
    SetEnvironment("BRENMOR_TRACE_APPEND", "1");
    const DynamicLibrary library("the driver", PathFromUtf8(driverFile), DynamicLibrary::Unload::Never);
    const OpeningDriver driver(library);
    const std::string failure = OpenCard(driver, 0);
    // An expectation may name more cards than are probed for. A card that is not fitted is an error to most
    // drivers, and not to be told of; from the sixth on it ends the row.
    for (std::int32_t card = 1; card < BusCards; ++card) {
      if (!OpenCard(driver, card).empty() && card >= UsualCards) break;
    }
    driver.deleteError();
    return OneLine(failure);
  } catch (...) {
    return CurrentExceptionText();
  }
}

}  // namespace kxbench
