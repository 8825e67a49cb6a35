#include <gmock/gmock.h>

#include "bench/documents/WiringBuilder.h"
#include "tests/bench/documents/ListTexts.h"

namespace kxbench::documents {
namespace {

using testing::ElementsAre;

std::vector<std::vector<std::string>> PinTextsByNet(const WiringDocument& document) {
  std::vector<std::vector<std::string>> texts;
  for (const DocumentNet& net : document.nets) {
    auto& pins = texts.emplace_back();
    for (const Pin& pin : net.pins) pins.push_back(PinText(pin));
  }
  return texts;
}

class WiringBuilderTest : public testing::Test {
 protected:
  std::size_t At(const std::string& connector, const std::string& pin) {
    return builder_.AddPin({connector, pin}, {"list.csv", ++line_, 0});
  }

  void Wire(const Pin& from, const Pin& to) {
    const std::size_t first = At(from.connector, from.pin);
    const std::size_t second = At(to.connector, to.pin);
    builder_.Connect(first, second);
  }

  WiringBuilder builder_;
  std::size_t line_ = 0;
};

TEST_F(WiringBuilderTest, WiresMakeNetsAndPinsAloneAreNetsOfOne) {
  Wire({"X1", "1"}, {"X2", "1"});
  Wire({"X2", "1"}, {"X3", "1"});
  At("X1", "2");
  const WiringDocument document = builder_.Take();
  EXPECT_THAT(PinTextsByNet(document), ElementsAre(ElementsAre("X1.1", "X2.1", "X3.1"), ElementsAre("X1.2")));
  EXPECT_EQ(document.connectors, 3U);
  EXPECT_EQ(document.wires, 2U);
  EXPECT_EQ(document.splices, 0U);
}

TEST_F(WiringBuilderTest, PinsStandByConnectorAtTheirFirstPlace) {
  At("X2", "1");
  At("X1", "1");
  At("X2", "9");
  At("X2", "1");
  const WiringDocument document = builder_.Take();
  ASSERT_EQ(document.pins.size(), 3U);
  EXPECT_EQ(PinText(document.pins[0].pin), "X2.1");
  EXPECT_EQ(PinText(document.pins[1].pin), "X2.9");
  EXPECT_EQ(PinText(document.pins[2].pin), "X1.1");
  EXPECT_EQ(PlaceText(document.pins[1].place), "list.csv:3");
}

TEST_F(WiringBuilderTest, ConnectorsStandWhereTheyAreAddedAndCountOnceTheyHavePins) {
  builder_.AddConnector("X3");
  builder_.AddConnector("X2");
  builder_.AddConnector("S1");
  builder_.MakeSplice("S1");
  At("X1", "1");
  At("X2", "1");
  const WiringDocument document = builder_.Take();
  EXPECT_THAT(PinTextsByNet(document), ElementsAre(ElementsAre("X2.1"), ElementsAre("X1.1")));
  EXPECT_EQ(document.connectors, 2U);
  EXPECT_EQ(document.splices, 0U);
}

TEST_F(WiringBuilderTest, ASpliceJoinsItsWiresAndVanishes) {
  Wire({"X1", "1"}, {"S1", "1"});
  Wire({"X2", "1"}, {"S1", "2"});
  Wire({"X3", "1"}, {"S1", "3"});
  builder_.MakeSplice("S1");
  const WiringDocument document = builder_.Take();
  EXPECT_THAT(PinTextsByNet(document), ElementsAre(ElementsAre("X1.1", "X2.1", "X3.1")));
  EXPECT_EQ(document.splices, 1U);
  EXPECT_EQ(document.connectors, 3U);
  EXPECT_EQ(document.wires, 3U);
}

TEST_F(WiringBuilderTest, TheFirstNameOfANetCounts) {
  const std::size_t pin = At("X1", "1");
  builder_.NameNet(pin, "");
  builder_.NameNet(pin, "GND");
  const std::size_t other = At("X2", "1");
  builder_.NameNet(other, "ground");
  builder_.Connect(pin, other);
  EXPECT_EQ(builder_.Take().nets.at(0).name, "GND");
}

TEST_F(WiringBuilderTest, TwoPinsOfOneNameAreRefused) {
  At("X1", "1.2");
  At("X2", "1");
  At("X1.1", "2");
  EXPECT_EQ(
      RefusalOf([this] { builder_.Take(); }),
      "list.csv:3: X1.1.2 is the name of two pins: 2 of connector X1.1 and 1.2 of connector X1 (line 1)");
}

TEST_F(WiringBuilderTest, AConnectorWithoutAPinIsNotCalledAsAChannelIs) {
  At("", "7");
  builder_.AddPin({"7", ""}, {"other.csv", 1, 1});
  EXPECT_EQ(RefusalOf([this] { builder_.Take(); }),
            "other.csv:1:1: 7 is the name of two pins: connector 7 without a pin and channel 7 (list.csv:1)");
}

TEST_F(WiringBuilderTest, PinsOfSplicesHaveNoNameToMixUp) {
  Wire({"X1", "1.2"}, {"X1.1", "2"});
  builder_.MakeSplice("X1.1");
  EXPECT_THAT(PinTextsByNet(builder_.Take()), ElementsAre(ElementsAre("X1.1.2")));
}

TEST_F(WiringBuilderTest, TakingEmptiesTheBuilder) {
  At("X1", "1");
  builder_.Take();
  EXPECT_TRUE(builder_.Take().pins.empty());
}

TEST(PlaceTextTest, LeavesOutWhatIsNotKnown) {
  EXPECT_EQ(PlaceText({"a.yml", 12, 5}), "a.yml:12:5");
  EXPECT_EQ(PlaceText({"a.csv", 12, 0}), "a.csv:12");
  EXPECT_EQ(PlaceText({"a.xml", 0, 0}), "a.xml");
}

}  // namespace
}  // namespace kxbench::documents
