#include "bench/wiring/ChannelNames.h"

#include <system_error>

#include "text/FileAccess.h"
#include "text/TextEncoding.h"

namespace kxbench::wiring {

namespace {

std::string ProjectText(const std::string& fileName) {
  if (fileName.empty()) return {};
  try {
    return shorttest::FileTextToUtf8(shorttest::ReadWholeFile(shorttest::AbsolutePath(fileName)));
  } catch (const std::system_error&) {
    return {};  // a project need not name its channels
  }
}

}  // namespace

ChannelNames::ChannelNames(const std::string& projectIniUtf8Path) : file_(ProjectText(projectIniUtf8Path)) {}

std::string ChannelNames::Name(std::int32_t channel) const {
  const auto [entry, isNew] = found_.try_emplace(channel);
  if (isNew) entry->second = file_.ReadString("Scanner", "Relais" + std::to_string(channel), "");
  return entry->second;
}

std::string ChannelNames::Labelled(std::int32_t channel) const {
  const std::string name = Name(channel);
  return std::to_string(channel) + (name.empty() ? "" : " (" + name + ")");
}

}  // namespace kxbench::wiring
