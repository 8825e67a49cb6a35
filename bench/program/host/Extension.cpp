#include "bench/program/host/Extension.h"

#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"
#include "framework/AsciiCase.h"

namespace kxbench {

std::filesystem::path PluginFile(const std::optional<std::string>& option) {
  return option ? PathFromUtf8(*option) : ProgramFolder() / LibraryFileName("ShortTest", LibraryPrefix::None);
}

Extension::Extension(const std::filesystem::path& file, const TKXHashTable& hostValues)
    : library_("the plug-in", file) {
  const std::string name = Utf8FromPath(File());
  const auto getExtensionInfo = library_.Find<TGetExtensionInfo>("__getExtensionInfo");
  if (getExtensionInfo == nullptr) {
    throw Failure(name + " is no plug-in: it does not export __getExtensionInfo");
  }
  CallExtension([&] {
    info_.reset(getExtensionInfo(hostValues));
    if (info_ == nullptr) throw Failure("the plug-in " + name + " gives no description of itself");
    for (const auto& commandExport : info_->Commands) {
      auto command = commandExport == nullptr ? nullptr : commandExport->CreateCommand();
      if (command == nullptr) throw Failure("the plug-in " + name + " cannot create its command");
      commands_.push_back(std::move(command));
    }
  });
}

Extension::~Extension() = default;

TKXFuncRunEdit* Extension::FindCommand(const std::string& name) const {
  for (const auto& command : commands_) {
    if (kx::EqualIgnoringCase(command->CommandName(), name)) return command.get();
  }
  return nullptr;
}

std::string DescribeExtension(const Extension& extension) {
  const TExtensionInfo& info = extension.Info();
  std::string text;
  text += "Extension:    " + info.Name + "\n";
  text += "Description:  " + info.Description + "\n";
  text += "Definitions:  " + info.CommandDefinitionFile + "\n";
  text += "Library:      " + Utf8FromPath(extension.File()) + "\n";
  for (const auto& command : extension.Commands()) {
    text += "\nCommand " + std::to_string(command->GetID()) + ":  " + command->Prototype() + "\n";
    for (const TKXPrototypeParam& parameter : command->Parameters()) {
      text += "  " + parameter.name + " : " + parameter.type + "\n";
    }
  }
  return text;
}

}  // namespace kxbench
