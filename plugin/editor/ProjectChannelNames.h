#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "text/IniText.h"

namespace shorttest {

/// The channel names of a project: section "Scanner" of its ini file, keys "Relais" and the channel number.
/// The file is read once and never written.
class ProjectChannelNames {
 public:
  /// Reads the file `fileName` (UTF-8 name), whatever of UTF-8, UTF-16 with byte order mark or 8 bits
  /// it is written in. A file that is missing or cannot be read names no channel.
  /// Throws std::length_error, with a text for the user, for one of more than MostTextBytes.
  explicit ProjectChannelNames(const std::string& fileName);

  /// The channel's name; empty when it has none.
  const std::string& Name(std::int32_t channel);

 private:
  IniText file_;
  std::map<std::int32_t, std::string> found_;  // the names view asks for the same names at every key stroke
};

}  // namespace shorttest
