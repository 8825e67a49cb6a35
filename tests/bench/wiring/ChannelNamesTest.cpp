#include <gtest/gtest.h>

#include "bench/wiring/ChannelNames.h"
#include "tests/bench/RowName.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench::wiring {
namespace {

class NamesOfAProject : public testing::Test {
 protected:
  ChannelNames Of(const std::string& ini) const { return ChannelNames(folder_.Write("Prüfling.ini", ini)); }

  TemporaryFolder folder_;
};

TEST_F(NamesOfAProject, StandInSectionScanner) {
  const ChannelNames names =
      Of("[Sonst]\r\nRelais14=falsch\r\n[scanner]\r\nRELAIS14=B1-L\r\nRelais15=  Motor links \r\n");
  EXPECT_EQ(names.Name(14), "B1-L");
  EXPECT_EQ(names.Name(15), "Motor links");
  EXPECT_EQ(names.Name(1), "");
}

TEST_F(NamesOfAProject, StandBesideTheNumbers) {
  const ChannelNames names = Of("[Scanner]\nRelais14=B1-L\nRelais2=\n");
  EXPECT_EQ(names.Labelled(14), "14 (B1-L)");
  EXPECT_EQ(names.Labelled(14), "14 (B1-L)") << "asked again";
  EXPECT_EQ(names.Labelled(2), "2");
  EXPECT_EQ(names.Labelled(3), "3");
}

TEST_F(NamesOfAProject, AreNoneWhereThereIsNoFile) {
  EXPECT_EQ(ChannelNames().Labelled(14), "14");
  EXPECT_EQ(ChannelNames((folder_.Path() / "none.ini").string()).Labelled(14), "14");
  EXPECT_EQ(ChannelNames(folder_.Path().string()).Labelled(14), "14") << "a folder";
}

struct EncodingRow {
  const char* name;
  std::string bytes;
};

class ProjectEncoding : public NamesOfAProject, public testing::WithParamInterface<EncodingRow> {};

TEST_P(ProjectEncoding, IsRecognised) { EXPECT_EQ(Of(GetParam().bytes).Name(1), "Tür"); }

INSTANTIATE_TEST_SUITE_P(Encodings, ProjectEncoding,
                         testing::Values(EncodingRow{"Utf8", "[Scanner]\r\nRelais1=Tür\r\n"},
                                         EncodingRow{"Utf8WithMark", "\xEF\xBB\xBF[Scanner]\nRelais1=Tür\n"},
                                         EncodingRow{"EightBits", "[Scanner]\nRelais1=T\xFCr\n"}),
                         RowName<EncodingRow>);

}  // namespace
}  // namespace kxbench::wiring
