#include <gtest/gtest.h>
#include <windows.h>

#include <system_error>

#include "plugin/data/ShorttestData.h"
#include "tests/windows/ScratchFolder.h"

// Expectation files as Windows treats files: locked by others, read-only, with any name.

namespace {

// Another program that has the file open, and what it lets others do with it meanwhile.
class OtherProgram {
 public:
  OtherProgram(const std::filesystem::path& file, DWORD sharing)
      : file_(CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr)) {}
  ~OtherProgram() { CloseHandle(file_); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

  bool HasFile() const { return file_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE file_;
};

class WindowsFile : public testing::Test {
 protected:
  void SetUp() override { Data(10.0).SaveExpectationFile(Utf8(file_)); }

  static TShortTestData Data(double threshold) {
    TShortTestData data(1, 3);
    data.Schwelle = threshold;
    return data;
  }

  // Saving must fail, name the file, and leave it and its folder as they were.
  void ExpectRefused() {
    try {
      Data(99.0).SaveExpectationFile(Utf8(file_));
      ADD_FAILURE() << "saved";
    } catch (const std::system_error& error) {
      EXPECT_NE(std::string(error.what()).find(Utf8(file_)), std::string::npos) << error.what();
    }
    EXPECT_EQ(folder_.Count(), 1U);
  }

  double StoredThreshold() const { return TShortTestData(Utf8(file_)).Schwelle; }

  ScratchFolder folder_;
  std::filesystem::path file_ = folder_ / L"Kabelbaum äöü ß.dat";
};

TEST_F(WindowsFile, KeepsItsNameWithUmlautsAndBlanks) {
  EXPECT_TRUE(std::filesystem::exists(file_));
  EXPECT_EQ(StoredThreshold(), 10.0);
  Data(12.5).SaveExpectationFile(Utf8(file_));
  EXPECT_EQ(StoredThreshold(), 12.5);
  EXPECT_EQ(folder_.Count(), 1U);
}

TEST_F(WindowsFile, IsNotReadWhileAnotherProgramLocksIt) {
  const OtherProgram other(file_, 0);
  ASSERT_TRUE(other.HasFile());
  EXPECT_THROW(StoredThreshold(), std::system_error);
}

TEST_F(WindowsFile, IsReadWhileAnotherProgramReadsIt) {
  const OtherProgram other(file_, FILE_SHARE_READ);
  ASSERT_TRUE(other.HasFile());
  EXPECT_EQ(StoredThreshold(), 10.0);
}

TEST_F(WindowsFile, IsNotWrittenWhileAnotherProgramLocksIt) {
  {
    const OtherProgram other(file_, 0);
    ASSERT_TRUE(other.HasFile());
    ExpectRefused();
  }
  EXPECT_EQ(StoredThreshold(), 10.0);
}

TEST_F(WindowsFile, IsNotWrittenWhileAnotherProgramReadsIt) {
  const OtherProgram other(file_, FILE_SHARE_READ);
  ASSERT_TRUE(other.HasFile());
  ExpectRefused();
  EXPECT_EQ(StoredThreshold(), 10.0);
}

TEST_F(WindowsFile, IsNotWrittenWhenReadOnly) {
  ASSERT_TRUE(SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY));
  ExpectRefused();
  EXPECT_EQ(StoredThreshold(), 10.0);
  SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace
