#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "text/IniText.h"

namespace kxbench::wiring {

/// The names of a project's channels: section "Scanner" of the project's ini file, keys "Relais" and the
/// channel number, as the plug-in's dialog reads them. The file is read once and never written.
class ChannelNames {
 public:
  /// Reads the ini file (UTF-8 name), whatever of UTF-8, UTF-16 with byte order mark or 8 bits it is written
  /// in. Without a file name, and with a file that is missing or cannot be read, no channel has a name.
  explicit ChannelNames(const std::string& projectIniUtf8Path = {});

  /// The channel's name, UTF-8; empty when it has none. `channel` is a channel number, from 1.
  std::string Name(std::int32_t channel) const;

  /// How a channel is called in everything that a person reads: "14 (B1-L)", or "14" without a name.
  std::string Labelled(std::int32_t channel) const;

 private:
  shorttest::IniText file_;
  mutable std::map<std::int32_t, std::string> found_;  // reports ask for the same names again and again
};

}  // namespace kxbench::wiring
