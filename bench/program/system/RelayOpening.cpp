#include <cstddef>
#include <cstdint>
#include <fstream>
#include <memory>

#include "bench/program/system/DynamicLibrary.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/GuardWords.h"
#include "bench/program/system/System.h"
#include "contracts/BrenmorHWDevice.h"
#include "text/IniText.h"
#include "text/SystemText.h"

namespace kxbench {

namespace {

constexpr std::int32_t FirstLine = 128;  // two addresses a card
constexpr std::int32_t OpenAll = 64;
constexpr std::int32_t UsualCards = 5;  // as many as are probed for
constexpr std::size_t LongestHead = 65536;
constexpr std::int32_t BusCards = 64;  // addresses have 8 bits

/// Of the driver's functions those that it takes to open relays.
struct OpeningDriver {
  explicit OpeningDriver(const DynamicLibrary& library)
      : set(library.Find<decltype(&brenmor_relay_set)>("brenmor_relay_set")),
        write(library.Find<decltype(&brenmor_bus_write)>("brenmor_bus_write")),
        getError(library.Find<decltype(&brenmor_bus_get_error)>("brenmor_bus_get_error")),
        getErrorText(library.Find<decltype(&brenmor_bus_get_error_msg)>("brenmor_bus_get_error_msg")),
        deleteError(library.Find<decltype(&brenmor_bus_delete_error)>("brenmor_bus_delete_error")),
        free(library.Find<decltype(&brenmor_free_mem)>("brenmor_free_mem")) {
    if (!set || !write || !getError || !getErrorText || !deleteError || !free)
      throw Failure("it is no driver");
  }

  decltype(&brenmor_relay_set) set;
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

/// Switches off the terminating resistor of an expectation; nothing when the file is none.
void SwitchTerminationOff(const OpeningDriver& driver, const std::string& file) {
  std::ifstream stream(PathFromUtf8(file), std::ios::binary);
  // What the file says of the tester stands before its data, which may be long.
  std::string head(LongestHead, '\0');
  stream.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(stream.gcount()));
  const shorttest::IniText ini(head);
  const std::int32_t card = ini.ReadInteger("OPTION", "LASTRELAISKARTE", 0);
  const std::int32_t relay = ini.ReadInteger("OPTION", "LASTRELAIS", 0);
  if (card > 0 && relay > 0) driver.set(card - 1, relay - 1, 0);
}

}  // namespace

std::string OpenEveryRelay(const GuardNews& news) {
  try {
    // The simulated tester starts its trace anew otherwise, and what came before is what matters.
    SetEnvironment("BRENMOR_TRACE_APPEND", "1");
    const DynamicLibrary library("the driver", PathFromUtf8(news.driver), DynamicLibrary::Unload::Never);
    const OpeningDriver driver(library);
    const std::string failure = OpenCard(driver, 0);
    // An expectation may name more cards than are probed for. A card that is not fitted is an error to most
    // drivers, and not to be told of; from the sixth on it ends the row.
    for (std::int32_t card = 1; card < BusCards; ++card) {
      if (!OpenCard(driver, card).empty() && card >= UsualCards) break;
    }
    for (const std::string& file : news.expectations) SwitchTerminationOff(driver, file);
    driver.deleteError();
    return OneLine(failure);
  } catch (...) {
    return CurrentExceptionText();
  }
}

}  // namespace kxbench
