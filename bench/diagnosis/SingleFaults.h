#pragma once

#include <vector>

#include "bench/diagnosis/Fault.h"
#include "bench/diagnosis/Overlap.h"

namespace kxbench::diagnosis {

/// The most explanations that are listed for one place. Equal pieces multiply them; nobody tries more.
inline constexpr std::size_t MaxExplanations = 64;

/// The explanations of one component by one fault, all equally cheap, each giving the measured nets exactly;
/// none when there is none. One expected net in several pieces is as many breaks as pieces came off, which
/// are explained together here: a break does not hide another.
/// REQUIRES: the component does not agree.
std::vector<Explanation> SingleFaults(const Overlap& component);

/// "So many opens, so many shorts": what is left when nothing explains the component.
Fault CompoundFault(const Overlap& component);

}  // namespace kxbench::diagnosis
