// The expectation file on the disk; what its content means stands in ExpectationText.

#include <filesystem>
#include <stdexcept>
#include <string>

#include "plugin/data/ExpectationText.h"
#include "plugin/data/ShorttestData.h"
#include "text/FileAccess.h"

namespace {

TShortTestData ReadExpectation(const std::string& fname) {
  const std::filesystem::path path = shorttest::AbsolutePath(fname);
  const std::string content = shorttest::ReadWholeFile(path);
  try {
    return shorttest::ReadExpectationText(content);
  } catch (const std::length_error& error) {
    throw std::length_error("expectation file '" + shorttest::PathText(path) + "': " + error.what());
  }
}

}  // namespace

TShortTestData::TShortTestData(const std::string& fname) : TShortTestData(ReadExpectation(fname)) {}

void TShortTestData::SaveExpectationFile(const std::string& fname) const {
  const std::filesystem::path path = shorttest::AbsolutePath(fname);
  const std::string old = std::filesystem::exists(path) ? shorttest::ReadWholeFile(path) : std::string();
  shorttest::ReplaceWholeFile(path, shorttest::WriteExpectationText(*this, old));
}
