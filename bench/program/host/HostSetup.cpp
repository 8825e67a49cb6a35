#include "bench/program/host/HostSetup.h"

#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>

#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"
#include "framework/kxcomponents.h"
#include "framework/kxextension.h"

namespace kxbench {

namespace {

/// The host's routine is a plain function, so what it is to do must be found without an object.
std::function<void()> onInitialisation;

void InitialiseHardware() {
  if (const std::function<void()> once = std::exchange(onInitialisation, nullptr)) once();
}

void HandOverDevice(const std::string& name) {
  const std::filesystem::path file = std::filesystem::absolute(PathFromUtf8(name));
  std::error_code error;
  if (!std::filesystem::exists(file, error)) throw Failure("--device " + name + ": there is no such file");
  if (std::filesystem::is_directory(file, error)) throw Failure("--device " + name + ": this is a folder");
  SetEnvironment("BRENMOR_DEVICE", Utf8FromPath(file));
}

}  // namespace

HostSetup::HostSetup(const CommonOptions& options, const std::string& file)
    : project_(ProjectOf(options.project, file)), varAccess_(parser_.GetEnvironment()) {
  SetProjectVariables(project_, parser_.GetEnvironment());
  if (options.device) HandOverDevice(*options.device);
  // The driver beside the program, wherever the plug-in lies; the simulated one when there is no other.
  AddLibraryFolders(ProgramFolder(), ProgramFolder() / "simulator");
  SetTestEnvironment(&testEnvironment_);
  SetVarAccess(&varAccess_);
  SetHelpSystem(&help_);
}

HostSetup::~HostSetup() {
  onInitialisation = nullptr;
  SetTestEnvironment(nullptr);
  SetVarAccess(nullptr);
  SetHelpSystem(nullptr);
}

void HostSetup::OfferFileName(std::string expression) {
  onInitialisation = [this, text = std::move(expression)] {
    if (varAccess_.AttachedEdit() != nullptr) varAccess_.AttachedEdit()->SetText(text);
  };
}

TKXHashTable HostSetup::HostValues(std::uintptr_t messageWindow) {
  TKXHashTable values;
  values.Put("AppParser", reinterpret_cast<std::uintptr_t>(static_cast<TKXParser*>(&parser_)));
  values.Put("MsgHandle", messageWindow);
  values.Put("BreInit", reinterpret_cast<std::uintptr_t>(static_cast<TBreInit>(InitialiseHardware)));
  return values;
}

}  // namespace kxbench
