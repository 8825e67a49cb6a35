#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/program/output/Table.h"

namespace kxbench {
namespace {

using testing::ElementsAre;

TEST(Wrapped, BreaksAtBlanks) { EXPECT_THAT(Wrapped("aa bb cc dd", 5), ElementsAre("aa bb", "cc dd")); }

TEST(Wrapped, KeepsWhatFitsExactly) { EXPECT_THAT(Wrapped("aa bb", 5), ElementsAre("aa bb")); }

TEST(Wrapped, GivesALongWordItsLine) {
  EXPECT_THAT(Wrapped("a (3,4,5,6,7,8) b", 5), ElementsAre("a", "(3,4,5,6,7,8)", "b"));
}

TEST(Wrapped, KeepsBlanksInARow) { EXPECT_THAT(Wrapped("a -  ABBRUCH", 40), ElementsAre("a -  ABBRUCH")); }

TEST(Wrapped, CountsCharacters) { EXPECT_THAT(Wrapped("äö üß", 5), ElementsAre("äö üß")); }

TEST(Wrapped, OfNothingIsAnEmptyLine) { EXPECT_THAT(Wrapped("", 5), ElementsAre("")); }

TEST(Table, AlignsItsColumns) {
  Table table({Table::Align::Left, Table::Align::Right, Table::Align::Left}, 40);
  table.AddRow({"Finding", "Value", "Unit"});
  table.AddRow({"Kanäle 3 und 4", "0,5", "V"});
  table.AddRow({"x", "2500,75", ""});
  EXPECT_EQ(table.Text(2),
            "  Finding           Value  Unit\n"
            "  Kanäle 3 und 4      0,5  V\n"
            "  x               2500,75\n");
}

TEST(Table, PutsTheCellsBesideTheLastLineOfAWrappedText) {
  Table table({Table::Align::Left, Table::Align::Right}, 6);
  table.AddRow({"aaa bbb cc", "1"});
  table.AddRow({"d", "22"});
  EXPECT_EQ(table.Text(0),
            "aaa\n"
            "bbb cc   1\n"
            "d       22\n");
}

}  // namespace
}  // namespace kxbench
