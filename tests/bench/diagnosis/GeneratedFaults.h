#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "bench/diagnosis/Diagnosis.h"

namespace kxbench::diagnosis::testkit {

/// Number below `bound`; the same with every standard library.
std::size_t Below(std::mt19937& random, std::size_t bound);

/// A harness of `channels` channels in nets of 1 to 40, drawn.
Nets DrawHarness(std::mt19937& random, Channel channels);

/// A fault made, and how it should be named.
struct MadeFault {
  FaultKind kind;
  std::vector<Net> channels;  ///< of an open of two equal pieces either; else one
};

/// The faults of wires: a contact off its net, two nets in contact, two wires exchanged (or one on an unused
/// contact). Each is named as it stands to the good harness and changes `nets`, which are what a tester
/// measures.
MadeFault MakeOpen(const Nets& harness, Channel contact, Nets& nets);
MadeFault MakeShort(const Nets& harness, Channel a, Channel b, Nets& nets);
MadeFault MakeExchange(const Nets& harness, Channel a, Channel b, Nets& nets);

/// One of them at random. None where the one drawn cannot be made.
std::vector<MadeFault> MakeAny(std::mt19937& random, const Nets& harness, Nets& nets);

/// How well a diagnosis names what was made.
enum class Named {
  First,        ///< the first explanations are these faults and no others
  Alternative,  ///< these faults are among the equally cheap explanations
  Compound,
  Otherwise,  ///< other faults that give the measured nets
};
Named HowNamed(const Diagnosis& diagnosis, const std::vector<MadeFault>& made);

/// True when every explanation of every finding, applied to the expected nets, gives the measured ones.
/// Written without the module's own comparison.
bool AllFit(const Diagnosis& diagnosis);

/// "14 17": for messages.
std::string Text(const Net& net);
std::string Text(const Nets& nets);

}  // namespace kxbench::diagnosis::testkit
