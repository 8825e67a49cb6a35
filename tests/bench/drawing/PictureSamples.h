#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/drawing/Drawing.h"

namespace kxbench::drawing {

/// A harness to draw, with or without faults.
struct PictureSample {
  std::string name;
  HarnessPicture picture;
  std::vector<FaultMark> marks;
};

/// A harness of so many pins on connectors of one to 30 pins, with names of all kinds; about two thirds of
/// the pins in nets of two and more. The same for the same seed.
HarnessPicture RandomPicture(std::uint32_t seed, std::size_t pins);

/// Faults of every kind at random channels of the picture.
std::vector<FaultMark> RandomMarks(std::uint32_t seed, const HarnessPicture& picture);

/// The example of that name.
HarnessPicture ExamplePicture(const std::string& example);

/// The examples, generated harnesses, and the odd ones, each with and without faults.
std::vector<PictureSample> PictureSamples();

}  // namespace kxbench::drawing
