#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace kxbench::wiring {

/// The content of a project's ini file that held `oldContent` (empty: there was none) once the channels have
/// these names (UTF-8), in section "Scanner" under the keys "Relais" and the channel number. Everything else
/// stays byte for byte, the names of other channels too. A file in Windows-1252 stays in it. Throws
/// std::invalid_argument, with one clause: a file in UTF-16, or a name that Windows-1252 does not have.
std::string WithChannelNames(const std::string& oldContent, const std::map<std::int32_t, std::string>& names);

}  // namespace kxbench::wiring
