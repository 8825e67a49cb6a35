#include <gmock/gmock.h>

#include <pugixml.hpp>

#include "bench/drawing/DrawingLayout.h"
#include "tests/bench/drawing/PictureSamples.h"

namespace kxbench::drawing {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

HarnessPicture Cable(const std::vector<DrawnNet>& nets) {
  HarnessPicture picture;
  picture.title = "cable";
  for (std::int32_t channel = 1; channel <= 8; ++channel) {
    const bool a = channel <= 4;
    picture.pins.push_back({channel, a ? "A" : "B", std::to_string(a ? channel : channel - 4), "", false});
  }
  picture.nets = nets;
  return picture;
}

class Drawn {
 public:
  explicit Drawn(const std::string& svg) {
    const pugi::xml_parse_result result = document_.load_string(svg.c_str());
    EXPECT_TRUE(result) << result.description();
  }

  std::vector<std::string> Texts(const std::string& path) const {
    std::vector<std::string> texts;
    for (const auto& node : document_.select_nodes(path.c_str()))
      texts.emplace_back(node.node().text().get());
    return texts;
  }

  std::vector<std::string> Values(const std::string& path) const {
    std::vector<std::string> values;
    for (const auto& node : document_.select_nodes(path.c_str()))
      values.emplace_back(node.attribute().value());
    return values;
  }

  std::size_t Count(const std::string& path) const { return document_.select_nodes(path.c_str()).size(); }

 private:
  pugi::xml_document document_;
};

TEST(Drawing, ConnectorsAreBoxesWithTheirPins) {
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}, {"", {1, 5}}})));
  EXPECT_THAT(drawn.Texts("//g[@class='box']/text"), ElementsAre("A", "B"));
  EXPECT_THAT(drawn.Texts("//g[@id='p6']/text"), ElementsAre("2", "6"));
  EXPECT_THAT(drawn.Texts("//g[@id='p6']/title"), ElementsAre("6 (B.2)"));
  EXPECT_THAT(drawn.Values("//g[@id='p6']/@data-net"), ElementsAre("n2"));
  EXPECT_EQ(drawn.Count("//g[@id='p7']/@data-net"), 0U);
}

TEST(Drawing, AWireOfTwoPinsIsOneLineWithoutADot) {
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}, {"", {1, 6}}})));
  EXPECT_THAT(drawn.Values("//g[@id='n2']/path/@data-pins"), ElementsAre("p2 p7"));
  EXPECT_EQ(drawn.Count("//circle[@class='dot']"), 0U);
}

TEST(Drawing, ANetOfThreePinsHasADotWhereItBranches) {
  const Drawn drawn(SvgOf(Cable({{"GND", {0, 2, 7}}})));
  EXPECT_THAT(drawn.Values("//g[@id='n1']/path[@class='branch']/@data-pins"), ElementsAre("p1", "p3", "p8"));
  EXPECT_EQ(drawn.Count("//g[@id='n1']/circle[@class='dot']"), 1U);
  EXPECT_THAT(drawn.Texts("//g[@id='n1']/title"), ElementsAre("GND: 1 (A.1), 3 (A.3), 8 (B.4)"));
  EXPECT_THAT(drawn.Texts("//g[@id='p1']/text[contains(@class, 'note')]"), ElementsAre("GND"));
}

TEST(Drawing, PinsThatFaceEachOtherAreConnectedByAStraightLine) {
  const DrawingLayout layout = LaidOut(Cable({{"", {0, 4}}}), MarksIn(Cable({{"", {0, 4}}}), {}));
  ASSERT_EQ(layout.lines.size(), 1U);
  EXPECT_EQ(layout.lines[0].branches[0].points.size(), 2U);
}

TEST(Drawing, AnOpenWireIsRedAndDashed) {
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}, {"", {1, 5}}}), {MarkOf("open", {2}, "open: a wire")}));
  EXPECT_THAT(drawn.Values("//g[@id='n2']/@stroke"), ElementsAre("#c8102e"));
  EXPECT_THAT(drawn.Values("//g[@id='n2']/path/@stroke-dasharray"), ElementsAre("7 5"));
  EXPECT_THAT(drawn.Values("//g[@id='n1']/@stroke"), ElementsAre("#808080"));
  EXPECT_THAT(drawn.Texts("//text[contains(@class, 'note')]"), ElementsAre("F1 open", "F1 open"));
  EXPECT_THAT(drawn.Texts("//text"), testing::IsSupersetOf({"F1", "open: a wire"}));
}

TEST(Drawing, OfANetThePieceThatCameOffIsDashed) {
  const Drawn drawn(SvgOf(Cable({{"", {0, 1, 4, 5}}}), {MarkOf("open", {5}, "open")}));
  EXPECT_THAT(drawn.Values("//path[@stroke-dasharray and @class='branch']/@data-pins"), ElementsAre("p5"));
}

TEST(Drawing, ShortedNetsAreBoldAndJoinedWhereTheyAreClosest) {
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}, {"", {1, 7}}}), {MarkOf("short", {1, 2, 5, 8}, "short")}));
  EXPECT_THAT(drawn.Values("//g[@class='net']/@stroke-width"), ElementsAre("3.4", "3.4"));
  EXPECT_THAT(drawn.Values("//g[@class='extra short']/@data-pins"), ElementsAre("p1 p2"));
}

TEST(Drawing, SwappedContactsPointAtEachOther) {
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}, {"", {1, 5}}}), {MarkOf("swapped", {1, 2}, "swapped")}));
  EXPECT_THAT(drawn.Values("//g[@class='extra move']/@data-pins"), ElementsAre("p1 p2"));
  EXPECT_EQ(drawn.Count("//g[@class='extra move']/path[@class='arrow']"), 2U);
  EXPECT_THAT(drawn.Texts("//text[contains(@class, 'note')]"), ElementsAre("F1 → A.2", "F1 → A.1"));
}

TEST(Drawing, AMoveHasOneArrow) {
  FaultMark mark = MarkOf("misplaced", {1, 3}, "misplaced");
  mark.fault.moves = {{1, 3}};
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}}), {mark}));
  EXPECT_EQ(drawn.Count("//path[@class='arrow']"), 1U + 1U);  // one in the legend
  EXPECT_THAT(drawn.Texts("//text[contains(@class, 'note')]"), ElementsAre("F1 → A.3"));
}

TEST(Drawing, AWrongPlugHasABoldBox) {
  FaultMark mark = MarkOf("plug-shifted", {5, 6, 7, 8}, "plug shifted");
  mark.fault.plugs = {"B"};
  mark.fault.moves = {{5, 6}, {6, 7}, {7, 8}, {8, std::nullopt}};
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}}), {mark}));
  EXPECT_THAT(drawn.Values("//rect[@class='border']/@stroke-width"), ElementsAre("1.2", "3"));
  EXPECT_THAT(drawn.Texts("//text[contains(@class, 'note')]"),
              ElementsAre("F1 → B.2", "F1 → B.3", "F1 → B.4", "F1 → nothing"));
}

TEST(Drawing, AFaultOfAChannelThatIsNotThereIsListed) {
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}}), {MarkOf("open", {99}, "open: 99")}));
  EXPECT_THAT(drawn.Texts("//text"), testing::Contains("open: 99"));
}

TEST(Drawing, ConnectorsHaveDifferentTitles) {
  HarnessPicture picture = Cable({});
  const std::string name = "Steckverbinder der Instrumententafel, Fahrerseite, ";
  for (DrawnPin& pin : picture.pins) pin.connector = name + (pin.connector == "A" ? "oben" : "unten");
  const std::vector<std::string> titles = Drawn(SvgOf(picture)).Texts("//g[@class='box']/text");
  ASSERT_EQ(titles.size(), 2U);
  EXPECT_NE(titles[0], titles[1]);
  EXPECT_THAT(titles[0], HasSubstr("…"));
}

TEST(Drawing, ThePinsOwnTitleHasTheWholeNote) {
  HarnessPicture picture = Cable({{"", {0, 4}}, {"", {1, 5}}});
  picture.pins[1].connector = picture.pins[0].connector = "Kombiinstrument rechts unten";
  const Drawn drawn(SvgOf(picture, {MarkOf("swapped", {1, 2}, "swapped"), MarkOf("open", {1}, "open")}));
  EXPECT_THAT(
      drawn.Texts("//g[@id='p1']/title"),
      ElementsAre("1 (Kombiinstrument rechts unten.1): F1 → Kombiinstrument rechts unten.2, F2 open"));
  const std::string note = drawn.Texts("//g[@id='p1']/text[contains(@class, 'note')]").at(0);
  EXPECT_THAT(note, testing::StartsWith("F1 → Kombi"));
  EXPECT_THAT(note, testing::EndsWith("….2, F2"));
}

std::vector<std::string> LegendOf(const HarnessPicture& picture, const std::vector<FaultMark>& marks = {}) {
  return Drawn(SvgOf(picture, marks)).Texts("//g[@class='legend']/following-sibling::text[1]");
}

TEST(Drawing, TheLegendExplainsWhatOccurs) {
  HarnessPicture straight = Cable({{"", {0, 4}}, {"", {1, 5}}, {"", {2, 6}}, {"", {3, 7}}});
  EXPECT_THAT(LegendOf(straight), IsEmpty());
  straight.nets.pop_back();
  EXPECT_THAT(LegendOf(straight), ElementsAre("connected to nothing"));
  straight.pins[3].suspended = straight.pins[7].suspended = true;
  EXPECT_THAT(LegendOf(straight), IsEmpty());
  const HarnessPicture crossed = Cable({{"", {0, 5}}, {"", {1, 4}}, {"", {2, 6}}, {"", {3, 7}}});
  EXPECT_THAT(LegendOf(crossed), ElementsAre("lines that cross without a dot are not connected"));
  FaultMark mark = MarkOf("plug-reversed", {5, 6, 7, 8}, "plug reversed");
  mark.fault.plugs = {"B"};
  EXPECT_THAT(LegendOf(crossed, {mark}), testing::Contains("plug in the wrong place, reversed or shifted"));
}

TEST(Drawing, SuspendedPinsAndPairsLeftOutAreShownAsSuch) {
  HarnessPicture picture = Cable({{"", {0, 4}}});
  picture.pins[3].suspended = true;
  picture.excluded = {{1, 6}};
  const Drawn drawn(SvgOf(picture));
  EXPECT_THAT(drawn.Texts("//g[@id='p4']/text[contains(@class, 'note')]"), ElementsAre("suspended"));
  EXPECT_THAT(drawn.Values("//g[@class='extra excluded']/@data-pins"), ElementsAre("p2 p7"));
  EXPECT_THAT(drawn.Texts("//text"),
              testing::IsSupersetOf({"pair left out of the check", "2 (A.2) – 7 (B.3)"}));
}

TEST(Drawing, WithoutNamesChannelsStandInColumns) {
  HarnessPicture picture;
  for (std::int32_t channel = 1; channel <= 60; ++channel)
    picture.pins.push_back({channel, "", "", "", false});
  EXPECT_THAT(Drawn(SvgOf(picture)).Texts("//g[@class='box']/text"),
              ElementsAre("Channels 1–24", "Channels 25–48", "Channels 49–60"));
  picture.pins.resize(20);
  EXPECT_THAT(Drawn(SvgOf(picture)).Texts("//g[@class='box']/text"),
              ElementsAre("Channels 1–10", "Channels 11–20"));
}

TEST(Drawing, TextsAreEscapedAndLongOnesShortened) {
  HarnessPicture picture = Cable({});
  const std::string name = "<b>&\"' Rückfahrscheinwerfer, links oben \xff";
  picture.pins[0].name = name;
  const Drawn drawn(SvgOf(picture));
  EXPECT_THAT(drawn.Texts("//g[@id='p1']/title"),
              ElementsAre("1 (A.<b>&\"' Rückfahrscheinwerfer, links oben \uFFFD)"));
  EXPECT_THAT(drawn.Texts("//g[@id='p1']/text")[0], testing::StartsWith("<b>&\"' Rückfahr"));
  EXPECT_THAT(drawn.Texts("//g[@id='p1']/text")[0], testing::EndsWith("…"));
}

TEST(Drawing, ColoursCanBeLeftOut) {
  DrawingOptions options;
  options.colours = false;
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}, {"", {1, 5}}}), {}, options));
  EXPECT_THAT(drawn.Values("//g[@class='net']/@stroke"), ElementsAre("#1a1a1a", "#1a1a1a"));
}

TEST(Drawing, IdsBeginWithThePrefix) {
  DrawingOptions options;
  options.idPrefix = "r7";
  const Drawn drawn(SvgOf(Cable({{"", {0, 4}}}), {}, options));
  EXPECT_THAT(drawn.Values("//g[@class='net']/@id"), ElementsAre("r7n1"));
  EXPECT_THAT(drawn.Values("//g[@class='net']/@data-pins"), ElementsAre("r7p1 r7p5"));
  EXPECT_THAT(drawn.Values("//@id[not(starts-with(., 'r7'))]"), IsEmpty());
}

TEST(Drawing, EverySampleIsWholeXmlAndTheSameEachTime) {
  for (const PictureSample& sample : PictureSamples()) {
    const std::string svg = SvgOf(sample.picture, sample.marks);
    EXPECT_EQ(svg, SvgOf(sample.picture, sample.marks)) << sample.name;
    const Drawn drawn(svg);
    EXPECT_EQ(drawn.Count("//g[@class='pin']"), sample.picture.pins.size()) << sample.name;
    EXPECT_EQ(drawn.Count("//g[@class='net']"),
              std::count_if(sample.picture.nets.begin(), sample.picture.nets.end(),
                            [](const DrawnNet& net) { return net.pins.size() > 1; }))
        << sample.name;
  }
}

TEST(Drawing, ThePageAsksForNothingElse) {
  const std::string html = HtmlOf(Cable({{"", {0, 4}}}), {MarkOf("open", {1}, "<i>open</i>")});
  EXPECT_THAT(html, Not(HasSubstr("src=")));
  EXPECT_THAT(html, Not(HasSubstr("<link")));
  EXPECT_THAT(html, HasSubstr("&lt;i&gt;open&lt;/i&gt;"));
  EXPECT_THAT(html, HasSubstr("data-shows=\"n1 p1\""));
}

TEST(Drawing, AnExpectationIsDrawnByItsNames) {
  const HarnessPicture picture = ExamplePicture("trailer-adapter");
  EXPECT_EQ(picture.pins[0].connector, "A");
  EXPECT_EQ(picture.pins[0].name, "A1-L");
  EXPECT_EQ(ExamplePicture("atx-extension").pins[24].name, "1");
  EXPECT_EQ(picture.nets.size(), 7U);
}

TEST(Drawing, ADocumentIsDrawnByItsPins) {
  documents::WiringDocument document;
  document.pins = {{{"X1", "1"}, {}}, {{"X2", "a"}, {}}};
  document.nets = {{"GND", {{"X1", "1"}, {"X2", "a"}}}};
  const HarnessPicture picture = PictureOf(document, "list", {{{"X2", "a"}, 7}});
  EXPECT_EQ(picture.pins[1].channel, 7);
  EXPECT_EQ(picture.pins[0].channel, 0);
  EXPECT_THAT(picture.nets[0].pins, ElementsAre(0U, 1U));
  EXPECT_THAT(Drawn(SvgOf(picture)).Texts("//g[@class='net']/title"), ElementsAre("GND: X1.1, 7 (X2.a)"));
}

}  // namespace
}  // namespace kxbench::drawing
