#include "bench/program/check/ResultDrawing.h"

#include "bench/drawing/Drawing.h"

namespace kxbench {

std::string ResultDrawing(const results::Result& result, const wiring::ExpectationFacts& facts,
                          const wiring::ChannelNames& names) {
  if (facts.nets.nets.empty()) return "";
  std::vector<drawing::FaultMark> marks;
  for (const results::ResultFault& fault : result.faults) {
    marks.push_back(drawing::MarkOf(fault.kind, fault.channels, fault.text));
  }
  drawing::DrawingOptions options;
  options.faultList = false;  // they stand beside it
  // Letters and digits alone: a page may hold several.
  for (const char c : result.id) options.idPrefix += c == '-' ? "" : std::string(1, c);
  options.idPrefix.insert(0, "r");
  return drawing::SvgOf(drawing::PictureOf(facts, names, result.expectation), marks, options);
}

}  // namespace kxbench
