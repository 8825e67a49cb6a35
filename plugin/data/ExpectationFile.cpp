// The expectation file on the disk; what its content means stands in ExpectationText.

#include <filesystem>
#include <stdexcept>
#include <string>

#include "plugin/data/ExpectationText.h"
#include "plugin/data/ShorttestData.h"
#include "text/FileAccess.h"
#include "text/Paths.h"

namespace {

std::string FileContent(const std::filesystem::path& path) {
  try {
    return shorttest::ReadWholeFile(path, shorttest::MostExpectationBytes);
  } catch (const shorttest::FileTooLarge& error) {
    const std::string size =
        error.Size() > 0 ? std::to_string(error.Size()) : "über " + std::to_string(error.Limit());
    throw std::length_error("Die Erwartungsdatei '" + shorttest::Utf8FromPath(path) + "' ist zu groß: " +
                            size + " Byte, möglich sind " + std::to_string(error.Limit()) + ".");
  }
}

TShortTestData ReadExpectation(const std::string& fname) {
  const std::filesystem::path path = shorttest::AbsolutePath(fname);
  const std::string content = FileContent(path);
  try {
    return shorttest::ReadExpectationText(content);
  } catch (const std::length_error& error) {
    throw std::length_error("expectation file '" + shorttest::Utf8FromPath(path) + "': " + error.what());
  }
}

}  // namespace

TShortTestData::TShortTestData(const std::string& fname) : TShortTestData(ReadExpectation(fname)) {}

void TShortTestData::SaveExpectationFile(const std::string& fname) const {
  const std::filesystem::path path = shorttest::AbsolutePath(fname);
  const std::string old = std::filesystem::exists(path) ? FileContent(path) : std::string();
  shorttest::ReplaceWholeFile(path, shorttest::WriteExpectationText(*this, old));
}
