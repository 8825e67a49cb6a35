#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "contracts/Export.h"

namespace kx {

/// How the file system in force reads names.
struct PathRules {
  bool ignoreCase;          ///< "Kabel.dat" and "kabel.DAT" name the same file
  bool backslashSeparates;  ///< '\\' separates folders like '/'
};

#ifdef _WIN32
inline constexpr PathRules SystemPathRules{true, true};
inline constexpr char PathSeparator = '\\';
#else
inline constexpr PathRules SystemPathRules{false, false};
inline constexpr char PathSeparator = '/';
#endif

/// What follows the folder `folder` (which ends in a separator) in `path`; no value when `path` does not lie
/// below it or climbs out of it again with "..". Compares text: both are UTF-8 and absolute. Case is ignored
/// for the letters of Latin-1 only; other letters that differ in case leave the path outside, where it stays
/// valid.
KX_API std::optional<std::string> PathBelow(std::string_view folder, std::string_view path,
                                            const PathRules& rules);

}  // namespace kx
