#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "bench/diagnosis/Nets.h"
#include "bench/drawing/Drawing.h"

namespace kxbench::drawing {

/// The names of a picture's channels: "14 (A1-L)".
std::map<std::int32_t, std::string> LabelsIn(const HarnessPicture& picture);

/// Throws std::runtime_error, with one clause that names the first difference, where the nets of two channels
/// and more are not the picture's. Pins without channels are left out; nothing is thrown where no pin has
/// one, or where no nets are given.
void RequireSameNets(const diagnosis::Nets& expected, const HarnessPicture& picture);

}  // namespace kxbench::drawing
