#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "plugin/editor/ProjectChannelNames.h"

namespace shorttest {
namespace {

class Project : public ::testing::Test {
 protected:
  Project() : folder(std::filesystem::path(::testing::TempDir()) / UniqueName()) {
    std::filesystem::create_directories(folder);
  }
  ~Project() override { std::filesystem::remove_all(folder); }

  ProjectChannelNames WithIniFile(const std::string& bytes) const {
    const std::filesystem::path file = folder / "Projekt.ini";
    std::ofstream(file, std::ios::binary) << bytes;
    return ProjectChannelNames(file.string());
  }

  std::filesystem::path folder;

 private:
  static std::string UniqueName() {
    return std::string("channel_names_") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
  }
};

TEST_F(Project, NamesChannelsInSectionScanner) {
  auto names =
      WithIniFile("[Sonst]\r\nRelais5=falsch\r\n[Scanner]\r\nRelais5=Motor links\r\nRelais6=Kl15\r\n");
  EXPECT_EQ(names.Name(5), "Motor links");
  EXPECT_EQ(names.Name(6), "Kl15");
  EXPECT_EQ(names.Name(7), "");
}

TEST_F(Project, NamesOfSectionAndKeyAreNotCaseSensitive) {
  EXPECT_EQ(WithIniFile("[SCANNER]\nRELAIS1=a\n").Name(1), "a");
}

TEST_F(Project, ReadsWindows1252) {
  EXPECT_EQ(WithIniFile("[Scanner]\r\nRelais1=T\xFCr\r\n").Name(1), "Tür");
}

TEST_F(Project, ReadsUtf8) { EXPECT_EQ(WithIniFile("[Scanner]\r\nRelais1=Tür\r\n").Name(1), "Tür"); }

TEST_F(Project, ReadsUtf16) {
  std::string bytes = "\xFF\xFE";
  for (const char c : std::string("[Scanner]\r\nRelais1=T\xFCr\r\n")) bytes += {c, '\0'};
  EXPECT_EQ(WithIniFile(bytes).Name(1), "Tür");
}

TEST_F(Project, AFileAboveSixteenMebibytesIsAnErrorThatNamesItAndItsSize) {
  WithIniFile("");
  const std::filesystem::path file = folder / "Projekt.ini";
  std::filesystem::resize_file(file, std::uintmax_t{2} << 30U);
  try {
    ProjectChannelNames names(file.string());
    FAIL() << "read";
  } catch (const std::length_error& error) {
    EXPECT_EQ(error.what(), "Die Projektdatei '" + file.string() +
                                "' ist zu groß: 2147483648 Byte, möglich sind 16777216.");
  }
}

TEST_F(Project, MissingFileNamesNoChannel) {
  ProjectChannelNames names((folder / "nicht_da.ini").string());
  EXPECT_EQ(names.Name(1), "");
}

}  // namespace
}  // namespace shorttest
