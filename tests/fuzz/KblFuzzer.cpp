// Arbitrary bytes as a KBL file. It is read or refused at a place; what is read is a partition of its pins.

#include <cstddef>
#include <cstdint>
#include <string>

#include "bench/documents/KblReader.h"
#include "tests/fuzz/DocumentProperties.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(bytes), size);
  fuzz::CheckReading([&] { return kxbench::documents::ReadKbl("last", text); }, {"last"});
  return 0;
}
