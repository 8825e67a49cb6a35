#include "bench/program/HostSetup.h"

#include <filesystem>
#include <system_error>

#include "bench/program/Failure.h"
#include "bench/program/Project.h"
#include "bench/program/System.h"
#include "framework/kxextension.h"

namespace kxbench {

namespace {

// "BreInit": this host has no hardware of its own, and a check resets what it needs.
void InitialiseHardware() {}

void HandOverDevice(const std::string& name) {
  const std::filesystem::path file = std::filesystem::absolute(PathFromUtf8(name));
  std::error_code error;
  if (!std::filesystem::exists(file, error)) throw Failure("--device " + name + ": there is no such file");
  if (std::filesystem::is_directory(file, error)) throw Failure("--device " + name + ": this is a folder");
  SetEnvironment("BRENMOR_DEVICE", Utf8FromPath(file));
}

}  // namespace

HostSetup::HostSetup(const Options& options) : varAccess_(parser_.GetEnvironment()) {
  SetProjectVariables(options, parser_.GetEnvironment());
  if (options.device) HandOverDevice(*options.device);
  // The driver beside the program, wherever the plug-in lies; the simulated one when there is no other.
  AddLibraryFolders(ProgramFolder(), ProgramFolder() / "simulator");
  SetTestEnvironment(&testEnvironment_);
  SetVarAccess(&varAccess_);
}

HostSetup::~HostSetup() {
  SetTestEnvironment(nullptr);
  SetVarAccess(nullptr);
}

TKXHashTable HostSetup::HostValues(std::uintptr_t messageWindow) {
  TKXHashTable values;
  values.Put("AppParser", reinterpret_cast<std::uintptr_t>(static_cast<TKXParser*>(&parser_)));
  values.Put("MsgHandle", messageWindow);
  values.Put("BreInit", reinterpret_cast<std::uintptr_t>(static_cast<TBreInit>(InitialiseHardware)));
  return values;
}

}  // namespace kxbench
