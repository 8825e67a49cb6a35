#include <gmock/gmock.h>

#include <functional>
#include <nlohmann/json.hpp>

#include "tests/bench/drawing/PictureSamples.h"

namespace kxbench::drawing {
namespace {

using diagnosis::FaultKind;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* Nets = R"("nets": {"expected": [[1, 14], [2, 15]], "measured": [[1, 15], [2, 14]]})";
constexpr const char* GoodNets =
    R"("nets": {"expected": [[1, 14], [2, 15]], "measured": [[1, 14], [2, 15]]})";

std::string Diagnosis(const std::string& faults, const std::string& nets = Nets,
                      const std::string& verdict = "fail") {
  return R"({"format": "diagnosis", "version": 1, "verdict": ")" + verdict + R"(", "faults": [)" + faults +
         "], " + nets + "}";
}

/// Two wires from A to B, and two pins that are connected to nothing.
HarnessPicture TwoWires() {
  HarnessPicture picture;
  picture.title = "two.dat";
  for (const std::int32_t channel : {1, 2, 3, 14, 15, 16}) {
    picture.pins.push_back({channel, channel < 14 ? "A" : "B", std::to_string(channel % 13), "", false});
  }
  picture.nets = {{"", {0, 3}}, {"", {1, 4}}};
  return picture;
}

KeptDiagnosis Kept(const std::string& json) { return DiagnosisFromJson(json, TwoWires()); }

std::vector<FaultMark> MarksIn(const std::string& json) { return Kept(json).marks; }

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
      R"({"kind": "open", "channels": [9], "text": "open", "alternatives": [{"kind": "swapped", "channels": [1], "text": "swapped"}]})"));
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_THAT(marks[0].fault.channels, ElementsAre(9));
  EXPECT_THAT(marks[0].alternatives, ElementsAre("or: swapped"));
}

TEST(DrawingFaults, AfterAVoltageNothingIsKnownOfNets) {
  const std::vector<FaultMark> marks =
      MarksIn(Diagnosis(R"({"kind": "voltage", "channels": [3], "text": "3 carries 5 V"})",
                        R"("nets": {"expected": [[1, 14], [2, 15]], "measured": []})"));
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_EQ(marks[0].fault.kind, FaultKind::Voltage);
}

TEST(DrawingFaults, OfAGoodDeviceAreNone) {
  const KeptDiagnosis kept = Kept(Diagnosis("", GoodNets, "pass"));
  EXPECT_FALSE(kept.failed);
  EXPECT_THAT(kept.marks, IsEmpty());
}

TEST(DrawingFaults, AFailedCheckIsNoGoodDeviceThoughTheNetsAreAsExpected) {
  const KeptDiagnosis kept = Kept(Diagnosis("", GoodNets));
  EXPECT_TRUE(kept.failed);
  ASSERT_EQ(kept.marks.size(), 1U);
  EXPECT_EQ(kept.marks[0].text, "the check failed, though the nets are as expected; look at its records");
  EXPECT_EQ(MarkedText(TwoWires(), kept.marks), "0 faults marked, 1 in the list alone");
}

constexpr const char* Hint = R"({"kind": "high-resistance", "channels": [1, 14], "text": "high"})";

TEST(DrawingFaults, AHintExplainsNoFailedCheck) {
  const KeptDiagnosis kept = Kept(Diagnosis(Hint, GoodNets));
  EXPECT_TRUE(kept.failed);
  EXPECT_EQ(kept.marks.size(), 2U);
  EXPECT_FALSE(Kept(Diagnosis(Hint, GoodNets, "pass")).failed);
}

TEST(DrawingFaults, AFaultFailsWhateverTheVerdictSays) {
  const KeptDiagnosis kept =
      Kept(Diagnosis(R"({"kind": "swapped", "channels": [1, 2], "text": "swapped"})", Nets, "pass"));
  EXPECT_TRUE(kept.failed);
  EXPECT_EQ(kept.marks.size(), 1U);
}

TEST(DrawingFaults, OfChannelsThatAreNotDrawnAreToldOfAndNotCounted) {
  const std::vector<FaultMark> marks = {MarkOf("open", {99}, "open: 99"), MarkOf("short", {1, 99}, "short"),
                                        MarkOf("open", {1}, "open: 1")};
  EXPECT_EQ(MarkedText(TwoWires(), marks), "2 faults marked, 1 in the list alone");
  EXPECT_THAT(UnmarkedTexts(TwoWires(), marks),
              ElementsAre("F1 is marked nowhere: two.dat has no channel 99",
                          "F2 is marked in part: two.dat has no channel 99"));
  EXPECT_EQ(MarkedText(TwoWires(), {marks[2]}), "1 fault marked");
}

/// The "or:" lines of a short circuit with two swapped wires, of which there is another explanation. Texts of
/// short circuits are `change`d in the output.
std::vector<std::string> AlternativesKept(const std::function<std::string(const std::string&)>& change) {
  diagnosis::Observation observation;
  observation.expected = {{1, 14}, {2, 15}, {3, 16}};
  observation.measured = {{1, 15}, {2, 14, 3, 16}};
  const auto label = [](diagnosis::Channel channel) {
    return std::to_string(channel) + (channel < 14 ? " (A." : " (B.") + std::to_string(channel % 13) + ")";
  };
  const diagnosis::Diagnosis plain = diagnosis::Diagnose(observation);
  nlohmann::json faults = nlohmann::json::array();
  const auto json = [&](const diagnosis::Fault& fault) {
    const std::string text = diagnosis::FaultText(fault, label);
    return nlohmann::json{{"kind", diagnosis::KindWord(fault.kind)},
                          {"channels", fault.channels},
                          {"text", fault.kind == FaultKind::Short ? change(text) : text}};
  };
  for (const diagnosis::Fault& fault : plain.findings.at(0).explanations.front()) {
    nlohmann::json object = json(fault);
    object["alternatives"] = nlohmann::json::array();
    for (const diagnosis::Fault& other : diagnosis::Alternatives(plain.findings[0], fault)) {
      object["alternatives"].push_back(json(other));
    }
    faults.push_back(std::move(object));
  }
  const nlohmann::json whole = {
      {"format", "diagnosis"},
      {"version", 1},
      {"verdict", "fail"},
      {"faults", faults},
      {"nets", {{"expected", observation.expected}, {"measured", observation.measured}}}};
  HarnessPicture picture = TwoWires();
  picture.nets.push_back({"", {2, 5}});
  std::vector<std::string> alternatives;
  for (const FaultMark& mark : DiagnosisFromJson(whole.dump(), picture).marks) {
    alternatives.insert(alternatives.end(), mark.alternatives.begin(), mark.alternatives.end());
  }
  return alternatives;
}

TEST(DrawingFaults, AlternativesHaveTheOhmOfTheDiagnosis) {
  const std::vector<std::string> alternatives = AlternativesKept([](const std::string& text) {
    const std::size_t end = text.find("; look");
    return text.substr(0, end) + ", 0.2 Ohm" + (end == std::string::npos ? "" : text.substr(end));
  });
  ASSERT_THAT(alternatives, testing::Not(IsEmpty()));
  EXPECT_THAT(alternatives, testing::Each(testing::HasSubstr(", 0.2 Ohm")));
}

TEST(DrawingFaults, AlternativesHaveTheirOwnWordsWhereAnotherHasTheirChannels) {
  const std::vector<std::string> alternatives =
      AlternativesKept([](const std::string&) { return "short: in another explanation, 0.2 Ohm"; });
  ASSERT_THAT(alternatives, testing::Not(IsEmpty()));
  EXPECT_THAT(alternatives, testing::Each(testing::Not(testing::HasSubstr("another explanation"))));
}

TEST(DrawingFaults, AnAlternativeIsNotSaidTwice) {
  const std::vector<FaultMark> marks = MarksIn(Diagnosis(
      R"({"kind": "open", "channels": [9], "text": "open",
          "alternatives": [{"kind": "open", "channels": [1], "text": "open"},
                           {"kind": "swapped", "channels": [1], "text": "swapped"},
                           {"kind": "swapped", "channels": [2], "text": "swapped"}]})"));
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_THAT(marks[0].alternatives, ElementsAre("or: swapped"));
}

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
    testing::Values(
        BadJson{"Empty", "", "it is no JSON"}, BadJson{"CutOff", R"({"format": "diag)", "it is no JSON"},
        BadJson{"AList", "[1]", "it is no diagnosis"},
        BadJson{"OtherFormat", R"({"format": "check"})", "it is no diagnosis"},
        BadJson{"FormatIsANumber", R"({"format": 1})", "it is no diagnosis"},
        BadJson{"OtherVersion", R"({"format": "diagnosis", "version": 2})",
                "it is a diagnosis of another version than 1"},
        BadJson{"NoNets", R"({"format": "diagnosis", "version": 1, "faults": []})", "it is no diagnosis"},
        BadJson{"OtherVerdict", Diagnosis("", Nets, "perhaps"), "it is no diagnosis"},
        BadJson{"OtherNet", Diagnosis("", R"("nets": {"expected": [[1, 14], [2, 3, 15]], "measured": []})"),
                "it is a diagnosis of another harness than two.dat: it expects channel 2 connected "
                "with 3, 15, two.dat with 15"},
        BadJson{"NetTooMany",
                Diagnosis("", R"("nets": {"expected": [[1, 14], [2, 15], [3, 16]], "measured": []})"),
                "it is a diagnosis of another harness than two.dat: it expects channel 3 connected "
                "with 16, two.dat with nothing"},
        BadJson{"NetTooFew", Diagnosis("", R"("nets": {"expected": [[2, 15], [1]], "measured": []})"),
                "it is a diagnosis of another harness than two.dat: it expects channel 1 connected "
                "with nothing, two.dat with 14"},
        BadJson{"ChannelIsAText", Diagnosis(R"({"kind": "open", "channels": ["a"], "text": ""})"),
                "it is no diagnosis"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DrawingFaults, AreTakenWithoutExpectedNetsOrDrawnChannels) {
  const std::string open = R"({"kind": "open", "channels": [9], "text": "open"})";
  EXPECT_EQ(MarksIn(Diagnosis(open, R"("nets": {"expected": [], "measured": []})")).size(), 1U);
  HarnessPicture document = TwoWires();
  for (DrawnPin& pin : document.pins) pin.channel = 0;
  EXPECT_EQ(DiagnosisFromJson(Diagnosis(open), document).marks.size(), 1U);
}

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
