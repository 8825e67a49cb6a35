#include <gmock/gmock.h>

#include "tests/bench/drawing/PictureSamples.h"

namespace kxbench::drawing {
namespace {

using diagnosis::FaultKind;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* Nets = R"("nets": {"expected": [[1, 14], [2, 15]], "measured": [[1, 15], [2, 14]]})";

std::string Diagnosis(const std::string& faults, const std::string& nets = Nets) {
  return R"({"format": "diagnosis", "version": 1, "verdict": "fail", "faults": [)" + faults + "], " + nets +
         "}";
}

std::vector<FaultMark> MarksIn(const std::string& json) {
  return MarksFromJson(json, ExamplePicture("trailer-adapter"));
}

TEST(DrawingFaults, OfADiagnosisHaveTheirMovesFromItsNets) {
  const std::vector<FaultMark> marks =
      MarksIn(Diagnosis(R"({"kind": "swapped", "channels": [1, 2], "text": "swapped: 1 and 2"})"));
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_EQ(marks[0].fault.kind, FaultKind::Swapped);
  EXPECT_EQ(marks[0].text, "swapped: 1 and 2");
  EXPECT_EQ(marks[0].fault.moves.size(), 2U);
}

TEST(DrawingFaults, ThatTheNetsDoNotShowAreTakenAsTheyStand) {
  const std::vector<FaultMark> marks = MarksIn(Diagnosis(
      R"({"kind": "open", "channels": [9], "text": "open", "alternatives": [{"text": "swapped"}]})"));
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_THAT(marks[0].fault.channels, ElementsAre(9));
  EXPECT_THAT(marks[0].alternatives, ElementsAre("or: swapped"));
}

TEST(DrawingFaults, AfterAVoltageNothingIsKnownOfNets) {
  const std::vector<FaultMark> marks =
      MarksIn(Diagnosis(R"({"kind": "voltage", "channels": [3], "text": "3 carries 5 V"})",
                        R"("nets": {"expected": [[1, 14]], "measured": []})"));
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_EQ(marks[0].fault.kind, FaultKind::Voltage);
}

TEST(DrawingFaults, OfAGoodDeviceAreNone) { EXPECT_THAT(MarksIn(Diagnosis("")), IsEmpty()); }

TEST(DrawingFaults, OfAKindFromTheFutureAreMarkedAsCompound) {
  EXPECT_EQ(MarkOf("melted", {1}, "melted").fault.kind, FaultKind::Compound);
  EXPECT_EQ(MarkOf("plugs-exchanged", {1}, "").fault.kind, FaultKind::PlugsExchanged);
}

struct BadJson {
  const char* name;
  std::string text;
  const char* message;
};

class DrawingFaultsRefused : public testing::TestWithParam<BadJson> {};

TEST_P(DrawingFaultsRefused, SaysWhy) {
  try {
    MarksIn(GetParam().text);
    FAIL() << "nothing was refused";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, DrawingFaultsRefused,
    testing::Values(BadJson{"Empty", "", "it is no JSON"},
                    BadJson{"CutOff", R"({"format": "diag)", "it is no JSON"},
                    BadJson{"AList", "[1]", "it is no diagnosis"},
                    BadJson{"OtherFormat", R"({"format": "check"})", "it is no diagnosis"},
                    BadJson{"FormatIsANumber", R"({"format": 1})", "it is no diagnosis"},
                    BadJson{"OtherVersion", R"({"format": "diagnosis", "version": 2})",
                            "it is a diagnosis of another version than 1"},
                    BadJson{"NoNets", R"({"format": "diagnosis", "version": 1, "faults": []})",
                            "it is no diagnosis"},
                    BadJson{"ChannelIsAText", Diagnosis(R"({"kind": "open", "channels": ["a"], "text": ""})"),
                            "it is no diagnosis"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DrawingFaults, OfADiagnosisStandInItsOrderHintsLast) {
  diagnosis::Observation observation;
  observation.expected = {{1, 2}, {3, 4}};
  observation.measured = {{1}, {2}, {3, 4}};
  observation.resistances = {{3, 4, 5.0, 1.0}};
  const auto label = [](diagnosis::Channel channel) { return "#" + std::to_string(channel); };
  const std::vector<FaultMark> marks = MarksOf(diagnosis::Diagnose(observation), label);
  ASSERT_EQ(marks.size(), 2U);
  EXPECT_EQ(marks[0].fault.kind, FaultKind::Open);
  EXPECT_EQ(marks[1].fault.kind, FaultKind::HighResistance);
  EXPECT_THAT(marks[0].text, testing::HasSubstr("from #1 to #2"));
}

}  // namespace
}  // namespace kxbench::drawing
