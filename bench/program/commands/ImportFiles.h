#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/documents/ChannelMap.h"
#include "bench/documents/Wiring.h"

namespace kxbench {

/// What an import writes, and where.
struct ImportFiles {
  std::vector<std::string> sources;  ///< document, map, what stands in front of it: read, so never written
  std::string expectation;
  std::optional<std::string> newMap;  ///< where the map goes that --assign made
  bool newMapNamed = false;           ///< the user named that file
  std::optional<std::string> names;   ///< the project's ini file
  bool overwrite = false;
};

/// The file beside the expectation in which the map goes: "cable.dat" has "cable.map.csv".
std::string MapBeside(const std::string& expectation);

/// Writes the map, the names and last the expectation; returns the names of the files. Everything that can
/// fail is tried before the first is written. Throws Failure.
std::vector<std::string> WriteImport(const ImportFiles& files, const documents::Wiring& wiring,
                                     const documents::ChannelMap& map);

}  // namespace kxbench
