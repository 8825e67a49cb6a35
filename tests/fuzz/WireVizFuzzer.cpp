// Arbitrary bytes as a WireViz document, in one file or in two (before and after "\n%%%\n"). It is read or
// refused at a place; what is read is a partition of its pins.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "bench/documents/WireVizReader.h"
#include "tests/fuzz/DocumentProperties.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace kxbench::documents;
  constexpr std::string_view Divider = "\n%%%\n";
  const std::string text(reinterpret_cast<const char*>(bytes), size);
  WireVizSources sources;
  const std::size_t at = text.find(Divider);
  if (at != std::string::npos) sources.files.emplace_back("first", text.substr(0, at));
  sources.files.emplace_back("last", at == std::string::npos ? text : text.substr(at + Divider.size()));
  fuzz::CheckReading([&] { return ReadWireViz(sources); }, {"first", "last"});
  return 0;
}
