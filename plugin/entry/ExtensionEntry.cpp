#include <cstdint>
#include <memory>

#include "plugin/check/ResultRecords.h"
#include "plugin/entry/ShorttestPlugin.h"

namespace {

constexpr std::uint32_t ExportFlags = 1;  // the host's own; always 1

}  // namespace

TBreInit& shorttest::HostBreInit() {
  static TBreInit breInit = nullptr;
  return breInit;
}

TExtensionInfo* __getExtensionInfo(const TKXHashTable& hostValues) {
  auto* const parser = reinterpret_cast<TKXParser*>(hostValues.Get("AppParser"));
  // The upper half of the table's pointer-size value is dropped.
  shorttest::SetMessageWindowHandle(static_cast<std::uint32_t>(hostValues.Get("MsgHandle")));
  shorttest::HostBreInit() = reinterpret_cast<TBreInit>(hostValues.Get("BreInit"));

  auto info = std::make_unique<TExtensionInfo>();
  info->Name = "Kurzschlusstest";
  info->Description = "Verbindungstest und Kurschlusstest";  // the host knows it in this spelling
  info->CommandDefinitionFile = "Data\\ShortTestCommands.def";
  info->Commands.push_back(
      std::make_unique<TKXFuncRunEditExport>(shorttest::ShortTestCommandClass(), parser, ExportFlags));
  return info.release();
}
