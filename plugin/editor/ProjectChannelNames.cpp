#include "plugin/editor/ProjectChannelNames.h"

#include <system_error>

#include "text/FileAccess.h"
#include "text/TextEncoding.h"

namespace shorttest {
namespace {

std::string ReadText(const std::string& fileName) {
  try {
    return FileTextToUtf8(ReadWholeFile(AbsolutePath(fileName)));
  } catch (const std::system_error&) {
    return {};  // a project need not name its channels
  }
}

}  // namespace

ProjectChannelNames::ProjectChannelNames(const std::string& fileName) : file_(ReadText(fileName)) {}

const std::string& ProjectChannelNames::Name(std::int32_t channel) {
  const auto [entry, isNew] = found_.try_emplace(channel);
  if (isNew) entry->second = file_.ReadString("Scanner", "Relais" + std::to_string(channel), "");
  return entry->second;
}

}  // namespace shorttest
