#include <gtest/gtest.h>

#include "tests/text/FileFixture.h"
#include "text/OwnName.h"
#include "text/Paths.h"
#include "text/Utf8.h"

namespace text_test {
namespace {

using shorttest::IsOwnName;
using shorttest::OwnFile;
using shorttest::OwnName;
using shorttest::PathFromUtf8;
using shorttest::Utf8FromPath;

TEST(OwnName, HoldsTheFilesNameANumberAndItsPurpose) {
  EXPECT_EQ(OwnName("folder/kabel.dat", OwnFile::New, 0x0123ABCDU), "kabel.dat.0123abcd.new~");
  EXPECT_EQ(OwnName("kabel.dat", OwnFile::Old, 0), "kabel.dat.00000000.old~");
}

TEST(OwnName, OfALongNameKeepsAsMuchAsTheSystemAllows) {
  const std::string longest(255, 'x');
  const std::string name = Utf8FromPath(OwnName(longest, OwnFile::New, 1));
  EXPECT_EQ(name.size(), 255U);
  EXPECT_TRUE(name.starts_with(longest.substr(0, 241))) << name;
  EXPECT_TRUE(IsOwnName(name, longest, OwnFile::New));
}

TEST(OwnName, CutsNoCharacter) {
  for (int blanks = 0; blanks < 4; ++blanks) {
    std::string longest(static_cast<std::size_t>(blanks), 'x');
    while (longest.size() < 251) longest += "\U0001F50C";
    const std::filesystem::path name = OwnName(PathFromUtf8(longest), OwnFile::New, 1);
    EXPECT_TRUE(shorttest::IsUtf8(Utf8FromPath(name))) << blanks;
    EXPECT_TRUE(IsOwnName(name, PathFromUtf8(longest), OwnFile::New));
  }
}

struct ForeignName {
  const char* name;
  const char* file;
};

class NoOwnName : public testing::TestWithParam<ForeignName> {};

TEST_P(NoOwnName, OfTheFile) { EXPECT_FALSE(IsOwnName(GetParam().file, "dir/kabel.dat", OwnFile::New)); }

INSTANTIATE_TEST_SUITE_P(, NoOwnName,
                         testing::Values(ForeignName{"TheFileItself", "dir/kabel.dat"},
                                         ForeignName{"OfAnotherFile", "dir/kabel2.dat.0123abcd.new~"},
                                         ForeignName{"OfAFileThatBeginsLikeIt",
                                                     "dir/kabel.dat.b.0123abcd.new~"},
                                         ForeignName{"AnotherPurpose", "dir/kabel.dat.0123abcd.old~"},
                                         ForeignName{"NoNumber", "dir/kabel.dat.new~"},
                                         ForeignName{"ShortNumber", "dir/kabel.dat.123abcd.new~"},
                                         ForeignName{"NoDigits", "dir/kabel.dat.0123abcg.new~"},
                                         ForeignName{"CapitalDigits", "dir/kabel.dat.0123ABCD.new~"},
                                         ForeignName{"MoreAfterIt", "dir/kabel.dat.0123abcd.new~~"}),
                         CaseName());

TEST(OwnName, IsOneInWhateverFolder) {
  EXPECT_TRUE(IsOwnName("elsewhere/kabel.dat.0123abcd.new~", "dir/kabel.dat", OwnFile::New));
}

}  // namespace
}  // namespace text_test
