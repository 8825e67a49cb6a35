#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// `kxbench import`, `export` and `compare` as a user types them.

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* List = "from;to\nX1.1;X2.1\nX1.2;X2.2\nX1.3;\n";

class DocumentProcess : public testing::Test {
 protected:
  ProcessResult Run(const std::vector<std::string>& arguments) const {
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = arguments;
    process.folder = folder_.Path().string();
    process.environment["LC_ALL"] = "C";
    return process.Run();
  }

  bool Exists(const std::string& name) const { return std::filesystem::exists(folder_.Path() / name); }

  void Write(const std::string& name, const std::string& content) const { folder_.Write(name, content); }

  std::string Cells(const std::string& name) const {
    const std::string content = folder_.Read(name);
    return content.substr(content.find("[DATEN]"));
  }

  TemporaryFolder folder_;
};

TEST_F(DocumentProcess, ADocumentWithoutPinsIsRefusedByItsName) {
  Write("list.csv", "from,to\n");
  const ProcessResult result = Run({"import", "list.csv", "--assign", "1", "-o", "new.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: list.csv: the document has no pins\n");
  EXPECT_FALSE(Exists("new.dat"));
}

TEST_F(DocumentProcess, ImportAssignsChannelsAndSaysWhatToWire) {
  Write("cable.csv", List);
  const ProcessResult result = Run({"import", "cable.csv", "--assign", "1", "-o", "cable.dat"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output, StartsWith("Document cable.csv (wiring list)\n\n  Connectors              2\n"));
  EXPECT_THAT(result.output, HasSubstr("  Single pins             1\n"));
  EXPECT_THAT(result.output, HasSubstr("  X1: 1-3 on channels 1-3\n  X2: 1-2 on channels 4-5\n"));
  EXPECT_THAT(result.output, HasSubstr("Written: cable.map.csv, cable.dat\n"));
  EXPECT_EQ(folder_.Read("cable.map.csv"), "connector,pin,channel\nX1,1,1\nX1,2,2\nX1,3,3\nX2,1,4\nX2,2,5\n");
  EXPECT_EQ(Cells("cable.dat"), "[DATEN]\r\n88888\r\n18888\r\n11888\r\n21188\r\n12118\r\n");
}

TEST_F(DocumentProcess, ImportPrintsTheContractAndWritesNothing) {
  Write("cable.csv", List);
  const ProcessResult result = Run({"import", "cable.csv", "--assign", "7", "--dry-run", "--format", "json"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(
      result.output,
      R"({"format":"wiring","version":1,"channels":{"7":"X1.1","8":"X1.2","9":"X1.3","10":"X2.1","11":"X2.2"},)"
      R"("nets":[["X1.1","X2.1"],["X1.2","X2.2"]],"single":["X1.3"],"excluded":[],"suspended":[]})"
      "\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1);
}

TEST_F(DocumentProcess, ImportTakesAMapAndKeepsTheOptionsOfAFile) {
  Write("cable.csv", List);
  Write("map.csv", "connector,pin,channel\nX1,1,1\nX1,2,2\nX1,3,3\nX2,1,4\nX2,2,5\n");
  Write(
      "cable.dat",
      "[BEREICH]\nSTART=1\nENDE=2\nWIDERSTAND=3\nWIDERSTAND2=4\n[OPTION]\nU_KONTROLLE=1\nLASTRELAISKARTE=0\n"
      "LASTRELAIS=0\nTIMEOUT=77\nMAX ERROR=5\n[DATEN]\n88\n28\n");
  EXPECT_EQ(Run({"import", "cable.csv", "--map", "map.csv", "-o", "cable.dat"}).status, 0);
  EXPECT_THAT(folder_.Read("cable.dat"), HasSubstr("TIMEOUT=77"));
  EXPECT_THAT(folder_.Read("cable.dat"), HasSubstr("WIDERSTAND=3"));
  EXPECT_THAT(folder_.Read("cable.dat"), HasSubstr("ENDE=5"));
}

TEST_F(DocumentProcess, ImportTellsEveryFaultOfAMapAndWritesNothing) {
  Write("cable.csv", List);
  Write("map.csv", "connector,pin,channel\nX1,1,1\nX1,2,1\nX1,9,3\nX2,1,4\n");
  const ProcessResult result =
      Run({"import", "cable.csv", "--map", "map.csv", "--names", "p.ini", "-o", "cable.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "kxbench: map.csv:3: channel 1 is used already, for X1.1 (line 2)\n"
            "kxbench: map.csv:4: X1.9 is not in the document\n"
            "kxbench: cable.csv:4:1: X1.3 is on no channel of map.csv\n"
            "kxbench: cable.csv:3:6: X2.2 is on no channel of map.csv\n");
  EXPECT_FALSE(Exists("cable.dat"));
  EXPECT_FALSE(Exists("p.ini"));
}

TEST_F(DocumentProcess, ImportWritesTheNamesOfTheChannels) {
  Write("cable.csv", List);
  Write("p.ini", "; mine\n[Other]\nx=1\n");
  EXPECT_EQ(Run({"import", "cable.csv", "--assign", "1", "--names", "p.ini", "-o", "cable.dat"}).status, 0);
  EXPECT_THAT(folder_.Read("p.ini"), StartsWith("; mine\n[Other]\nx=1\n[Scanner]\r\nRelais1=X1.1\r\n"));
  const ProcessResult json = Run({"export", "cable.dat", "--to", "json", "--project", "./p"});
  EXPECT_THAT(json.output, HasSubstr(R"("nets":[["X1.1","X2.1"],["X1.2","X2.2"]],"single":["X1.3"])"));
}

TEST_F(DocumentProcess, ImportTakesConnectorsThatTheMapDoesNotKnowForSplices) {
  Write("cable.csv", "from,to\nX1.1,S1\nX2.1,S1\nX3.1,S1\n");
  Write("map.csv", "connector,pin,channel\nX1,1,1\nX2,1,2\nX3,1,3\n");
  const ProcessResult result = Run({"import", "cable.csv", "--map", "map.csv", "-o", "cable.dat"});
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output, HasSubstr("  Splices                 1\n"));
  EXPECT_EQ(Cells("cable.dat"), "[DATEN]\r\n888\r\n288\r\n228\r\n");
}

TEST_F(DocumentProcess, ImportWarnsOfAWholeConnectorThatTheMapDoesNotKnow) {
  Write("cable.csv", List);
  Write("map.csv", "connector,pin,channel\nX1,1,1\nX1,2,2\nX1,3,3\n");
  const ProcessResult result = Run({"import", "cable.csv", "--map", "map.csv", "-o", "cable.dat"});
  EXPECT_THAT(result.errors,
              HasSubstr("warning: cable.csv:2:6: X2 is not in the map: it is taken as a splice"));
}

TEST_F(DocumentProcess, ImportOfAMapOfSomethingElseNamesAllPins) {
  Write("cable.csv", "from,to\nX1.1,X2.1\n");
  Write("map.csv", "connector,pin,channel\nY1,1,1\n");
  const ProcessResult result = Run({"import", "cable.csv", "--map", "map.csv", "-o", "cable.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, HasSubstr("X2.1 is on no channel of map.csv"));
}

TEST_F(DocumentProcess, ImportJoinsTheSplicesThatAreNamed) {
  Write("cable.csv", "from,to\nX1.1,S1.a\nX2.1,S1.b\n");
  const ProcessResult result =
      Run({"import", "cable.csv", "--splices", "S1", "--assign", "1", "--dry-run", "--format", "json"});
  EXPECT_THAT(result.output, HasSubstr(R"("nets":[["X1.1","X2.1"]])"));
  EXPECT_THAT(Run({"import", "cable.csv", "--splices", "S9", "--assign", "1", "--dry-run"}).errors,
              HasSubstr("cable.csv has no connector S9"));
}

TEST_F(DocumentProcess, ImportWithoutChannelsAsksForThem) {
  Write("cable.csv", List);
  const ProcessResult result = Run({"import", "cable.csv", "-o", "cable.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, HasSubstr("--map MAP.csv, or have them assigned with --assign 1"));
  EXPECT_THAT(Run({"import", "cable.csv", "--assign", "1"}).errors, HasSubstr("import needs -o FILE"));
  EXPECT_THAT(Run({"import", "cable.csv", "--assign", "0", "--dry-run"}).errors,
              HasSubstr("--assign: expected"));
}

TEST_F(DocumentProcess, ImportNeverReplacesWhatIsNoExpectation) {
  Write("cable.csv", List);
  Write("other.txt", "a letter\n");
  EXPECT_EQ(Run({"import", "cable.csv", "--assign", "1", "-o", "cable.csv", "--overwrite"}).status, 2);
  EXPECT_EQ(folder_.Read("cable.csv"), List);
  const ProcessResult refused = Run({"import", "cable.csv", "--assign", "1", "-o", "other.txt"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.errors, HasSubstr("a new one in its place needs --overwrite"));
  EXPECT_EQ(folder_.Read("other.txt"), "a letter\n");
  EXPECT_FALSE(Exists("other.map.csv"));
  EXPECT_EQ(Run({"import", "cable.csv", "--assign", "1", "-o", "other.txt", "--overwrite"}).status, 0);
}

TEST_F(DocumentProcess, ImportNeverReplacesAnotherMapUnasked) {
  Write("cable.csv", List);
  Write("mine.csv", "connector,pin,channel\nX1,1,9\n");
  const std::vector<std::string> command = {"import", "cable.csv", "--assign", "1",
                                            "--map",  "mine.csv",  "-o",       "cable.dat"};
  EXPECT_THAT(Run(command).errors, HasSubstr("mine.csv is another map"));
  EXPECT_EQ(folder_.Read("mine.csv"), "connector,pin,channel\nX1,1,9\n");
  EXPECT_FALSE(Exists("cable.dat"));
}

TEST_F(DocumentProcess, ImportReplacesTheMapBesideFileThatItMadeAndNoOther) {
  const std::vector<std::string> command = {"import", "cable.csv", "--assign", "1", "-o", "cable.dat"};
  Write("cable.csv", "from,to\nX1.1,X2.1\n");
  ASSERT_EQ(Run(command).status, 0);
  Write("cable.csv", List);
  EXPECT_EQ(Run(command).status, 0);
  EXPECT_THAT(folder_.Read("cable.map.csv"), HasSubstr("X2,2,5"));

  const std::string byHand = "connector,pin,channel\nX1,1,9\nX2,1,4\n";
  Write("cable.map.csv", byHand);
  const std::string before = folder_.Read("cable.dat");
  EXPECT_THAT(Run(command).errors, HasSubstr("cable.map.csv is another map"));
  EXPECT_EQ(folder_.Read("cable.map.csv"), byHand);
  EXPECT_EQ(folder_.Read("cable.dat"), before);
}

TEST_F(DocumentProcess, ImportWritesNoFileThatItReadsOrWritesOtherwise) {
  Write("cable.csv", List);
  Write("map.csv", "connector,pin,channel\nX1,1,1\nX1,2,2\nX2,1,3\nX2,2,4\nX1,3,5\n");
  const std::string map = folder_.Read("map.csv");
  const std::vector<std::vector<std::string>> commands = {
      {"import", "cable.csv", "--map", "map.csv", "-o", "map.csv", "--overwrite"},
      {"import", "cable.csv", "--map", "map.csv", "-o", "o.dat", "--names", "./map.csv"},
      {"import", "cable.csv", "--assign", "1", "--map", "o.dat", "-o", "o.dat"},
      {"import", "cable.csv", "--assign", "1", "--map", "o.csv", "--names", "o.csv", "-o", "o.dat"}};
  for (const auto& command : commands) {
    const ProcessResult result = Run(command);
    EXPECT_EQ(result.status, 2) << result.output;
    EXPECT_THAT(result.errors, testing::AnyOf(HasSubstr("is not written"), HasSubstr("cannot be two")));
  }
  EXPECT_EQ(folder_.Read("map.csv"), map);
  EXPECT_FALSE(Exists("o.dat") || Exists("o.csv"));
}

TEST_F(DocumentProcess, ImportIntoAMissingFolderWritesNothing) {
  Write("cable.csv", List);
  EXPECT_EQ(Run({"import", "cable.csv", "--assign", "1", "--names", "p.ini", "-o", "none/cable.dat"}).status,
            2);
  EXPECT_FALSE(Exists("p.ini"));
}

TEST_F(DocumentProcess, ImportSaysWhereADocumentIsWrong) {
  Write("bad.csv", "from,to\nX1.1,\"X2.1\n");
  const ProcessResult result = Run({"import", "bad.csv", "--assign", "1", "-o", "cable.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: bad.csv:2:6: this quote is not closed\n");
  EXPECT_EQ(Run({"import", "none.csv", "--assign", "1", "-o", "cable.dat"}).status, 2);
  EXPECT_FALSE(Exists("cable.dat"));
}

TEST_F(DocumentProcess, ExportedListsAndObjectsAreTheirOwnMap) {
  Write("cable.csv", List);
  ASSERT_EQ(Run({"import", "cable.csv", "--assign", "3", "-o", "cable.dat"}).status, 0);
  for (const std::string format : {"csv", "json"}) {
    ASSERT_EQ(Run({"export", "cable.dat", "--to", format, "-o", "export"}).status, 0);
    const ProcessResult result = Run({"import", "export", "-o", "back-" + format + ".dat"});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(folder_.Read("back-" + format + ".dat"), folder_.Read("cable.dat"));
  }
}

TEST_F(DocumentProcess, ExportNeedsAFormatAndLeavesExpectationsAlone) {
  Write("cable.csv", List);
  ASSERT_EQ(Run({"import", "cable.csv", "--assign", "1", "-o", "cable.dat"}).status, 0);
  EXPECT_THAT(Run({"export", "cable.dat"}).errors, HasSubstr("export needs --to csv"));
  EXPECT_THAT(Run({"export", "cable.dat", "--to", "csv", "-o", "cable.dat"}).errors,
              HasSubstr("is an expectation file: it is not replaced"));
  Write("cable.ini", "[Scanner]\nRelais1=X1.1\n");
  EXPECT_THAT(Run({"export", "cable.dat", "--to", "csv", "-o", "cable.ini"}).errors,
              HasSubstr("cable.ini holds the channels' names: it is not replaced"));
  EXPECT_EQ(folder_.Read("cable.ini"), "[Scanner]\nRelais1=X1.1\n");
  EXPECT_EQ(Run({"export", "cable.csv", "--to", "csv"}).status, 2);
}

TEST_F(DocumentProcess, CompareTellsTheDifferenceByItsStatus) {
  Write("cable.csv", List);
  Write("swapped.csv", "from;to\nX1.1;X2.2\nX1.2;X2.1\nX1.3;\n");
  ASSERT_EQ(Run({"import", "cable.csv", "--assign", "1", "-o", "cable.dat"}).status, 0);
  const ProcessResult equal = Run({"compare", "cable.dat", "cable.csv", "--map", "cable.map.csv"});
  EXPECT_EQ(equal.status, 0);
  EXPECT_EQ(equal.output, "cable.dat against cable.csv:\nequal; 2 nets agree\n");
  const ProcessResult different = Run({"compare", "cable.dat", "swapped.csv", "--map-b", "cable.map.csv"});
  EXPECT_EQ(different.status, 1);
  EXPECT_THAT(different.output, HasSubstr("swapped.csv has (1, 5) (2, 4); cable.dat has (1, 4) (2, 5)"));
  EXPECT_THAT(different.output,
              HasSubstr("swapped: the wires on 1 (X1.1) and 2 (X1.2), or their other ends"));
  EXPECT_EQ(Run({"compare", "cable.csv", "swapped.csv"}).status, 1);
  const ProcessResult nameless = Run({"compare", "cable.dat", "cable.csv"});
  EXPECT_EQ(nameless.status, 2);
  EXPECT_THAT(nameless.errors, HasSubstr("needs a map: --map MAP.csv"));
  EXPECT_EQ(Run({"compare", "cable.dat", "none.csv"}).status, 2);
  EXPECT_EQ(Run({"compare", "cable.dat", "cable.csv", "--map-a", "cable.map.csv"}).status, 2);
}

TEST_F(DocumentProcess, CompareFindsPinsWithAPointInTheirNames) {
  Write("dot.csv", "connector,pin,net\nX1,3.3,A\nX2,1,A\n");
  ASSERT_EQ(Run({"import", "dot.csv", "--assign", "1", "--names", "dot.ini", "-o", "dot.dat"}).status, 0);
  const ProcessResult result = Run({"compare", "dot.dat", "dot.csv", "--project", "./dot"});
  EXPECT_EQ(result.output, "dot.dat against dot.csv, pin by pin:\nequal; 1 net agrees\n");
  EXPECT_EQ(result.status, 0);
}

TEST_F(DocumentProcess, ImportRefusesTwoPinsOfOneName) {
  Write("cable.csv", "connector,pin,net\nX1,1.2,A\nX1.1,2,B\n");
  const ProcessResult result = Run({"import", "cable.csv", "--assign", "1", "-o", "cable.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, StartsWith("kxbench: cable.csv:3:1: X1.1.2 is the name of two pins: "));
  EXPECT_FALSE(Exists("cable.dat"));
}

/// An expectation of three channels with these rows.
std::string ThreeChannels(const std::string& rows) {
  return "[BEREICH]\nSTART=1\nENDE=3\nWIDERSTAND=3\nWIDERSTAND2=4\n[OPTION]\nU_KONTROLLE=1\n"
         "LASTRELAISKARTE=0\nLASTRELAIS=0\nTIMEOUT=77\nMAX ERROR=5\n[DATEN]\n" +
         rows;
}

TEST_F(DocumentProcess, CompareCountsAPairWithoutAStateAsUnknown) {
  Write("b.dat", ThreeChannels("888\n288\n118\n"));
  for (const std::string cell : {"0", "4", "5", "7", "8", "x"}) {
    Write("a.dat", ThreeChannels("888\n288\n" + cell + "18\n"));
    const ProcessResult result = Run({"compare", "a.dat", "b.dat"});
    EXPECT_EQ(result.status, 1) << cell;
    EXPECT_THAT(result.output, HasSubstr("  unknown in a.dat: 1 pair, neither connected nor open\n")) << cell;
    EXPECT_EQ(Run({"compare", "a.dat", "a.dat"}).status, 0) << cell;
    EXPECT_THAT(Run({"compare", "b.dat", "a.dat", "--format", "json"}).output,
                HasSubstr(R"("unknownPairs":{"a":0,"b":1})"))
        << cell;
  }
}

TEST_F(DocumentProcess, CompareWarnsOfAContradictionAndCountsIt) {
  Write("a.dat", ThreeChannels("888\n288\n128\n"));
  Write("b.dat", ThreeChannels("888\n288\n228\n"));
  const std::string warning =
      "kxbench: warning: a.dat contradicts itself: 1 and 3 should not be connected, but 1 - 2 - 3 should "
      "be\n";
  const ProcessResult a = Run({"compare", "a.dat", "b.dat"});
  EXPECT_EQ(a.status, 1);
  EXPECT_EQ(a.errors, warning);
  EXPECT_EQ(a.output,
            "a.dat against b.dat:\n"
            "  contradictory in a.dat: 1 pair, expected open though connections join them\n"
            "different; 1 net agrees\n");
  const ProcessResult b = Run({"compare", "b.dat", "a.dat", "--format", "json"});
  EXPECT_EQ(b.status, 1);
  EXPECT_EQ(b.errors, warning);
  EXPECT_THAT(b.output, HasSubstr(R"("contradictoryPairs":{"a":0,"b":1})"));
}

}  // namespace
