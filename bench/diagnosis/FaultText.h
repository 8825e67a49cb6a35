#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/diagnosis/Diagnosis.h"

namespace kxbench::diagnosis {

/// How a channel is called: "14 (B1-L)".
using ChannelLabel = std::function<std::string(Channel)>;

/// The word for a kind in programs' output: "open", "plugs-exchanged".
std::string KindWord(FaultKind kind);

/// The fault in one line, as a fitter would say it: what is wrong with which contacts, what to look at first.
/// No end of line, no full stop.
std::string FaultText(const Fault& fault, const ChannelLabel& label);

/// Other explanations than the first, one a line without its end: "or: ...". Faults of one explanation are
/// joined by "and". What the text of the first says already, the other end of the same wires, is left out.
std::vector<std::string> AlternativeTexts(const Finding& finding, const ChannelLabel& label);

/// What shows a finding: "expected (1, 14) (4, 17); measured (1, 17) (4, 14)".
std::string EvidenceText(const Finding& finding);

}  // namespace kxbench::diagnosis
