#include <gtest/gtest.h>

#include "bench/drawing/DrawingPinNotes.h"

namespace kxbench::drawing {
namespace {

const std::vector<std::string> Connectors = {"Kombiinstrument rechts", "Heckleuchte"};

TEST(DrawingPinNotes, AreWrittenInFullWhereTheyFit) {
  EXPECT_EQ(ShortNote({{1, "→", "X3", ".17"}, {2, "short", "", ""}}, Connectors, 16), "F1 → X3.17, F2 short");
  EXPECT_EQ(ShortNote({}, Connectors, 16), "");
}

TEST(DrawingPinNotes, LoseLettersOfTheConnectorAndNeverThePin) {
  EXPECT_EQ(ShortNote({{1, "→", "Kombiinstrument rechts", ".12"}}, Connectors, 10), "F1 → Kombii….12");
}

TEST(DrawingPinNotes, TellConnectorsApartThatBeginAlike) {
  EXPECT_EQ(ShortNote({{1, "→", "Kombiinstrument rechts", ".12"}},
                      {"Kombiinstrument rechts", "Kombiinstrument links"}, 10),
            "F1 → Ko…chts.12");
  // "Heckleuchte l" fits whole, so that it differs from the other's beginning.
  EXPECT_EQ(ShortNote({{1, "→", "Heckleuchte rechts", ".1"}}, {"Heckleuchte rechts", "Heckleuchte l"}, 12.8),
            "F1 → Heckl… rechts.1");
}

TEST(DrawingPinNotes, KeepTheNumberOfEveryFault) {
  EXPECT_EQ(
      ShortNote({{1, "→", "Kombiinstrument rechts", ".12"}, {2, "compound", "", ""}, {13, "short", "", ""}},
                Connectors, 10),
      "F1 → Kombii….12, F2, F13");
}

}  // namespace
}  // namespace kxbench::drawing
