#include "plugin/hardware/DriverText.h"

#include <memory>

#include "contracts/BrenmorHWDevice.h"
#include "text/SystemText.h"

namespace shorttest {

std::string TakeDriverErrorText() {
  const std::unique_ptr<char, void (*)(void*)> text(brenmor_bus_get_error_msg(), brenmor_free_mem);
  if (text == nullptr) return "Der Treiber meldet einen Fehler ohne Text.";
  return SystemTextToUtf8(text.get());
}

}  // namespace shorttest
