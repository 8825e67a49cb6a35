#include "tests/bench/program/ProcessFixture.h"

/// check, run and info from end to end.

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* GoodDevice = "record Verbindungstest|2|2||2||\nrecord Kurzschlusstest|0|0||0||\n";
constexpr const char* BadDevice =
    "record Spannung an Kanal 12|0,7|5,312|V|||\nrecord Kurzschlusstest|0|0||0||\n";

TEST_F(KxbenchProcess, CheckOfAGoodDevice) {
  Does("good.dat", GoodDevice);
  const ProcessResult result = Run({"check", "good.dat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output,
            "ShortTest(\"good.dat\")\n"
            "\n"
            "  Verbindungstest  2    expected 2\n"
            "  Kurzschlusstest  0    expected 0\n"
            "\n"
            "PASS: no findings\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(KxbenchProcess, CheckOfABadDevice) {
  Does("bad.dat", BadDevice);
  const ProcessResult result = Run({"check", "bad.dat"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("Spannung an Kanal 12  5,312    0,7      -  V\n"));
  EXPECT_THAT(result.output, EndsWith("FAIL: 1 finding\n"));
}

TEST_F(KxbenchProcess, RecordsStandAloneOnStandardOutputInTheirOrder) {
  Does("bad.dat", "record Ä|||\nrecord B|0|1|€|2||\nrecord \U0001F50C\nrecord Ä|||\n");
  const ProcessResult result = Run({"--format", "records", "check", "bad.dat"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "Ä|||\nB|0|1|€|2||\n\U0001F50C\nÄ|||\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(KxbenchProcess, CheckTakesAnyFileName) {
#ifdef _WIN32
  const std::string name = "Prüfling '7' + (alt).dat";
#else
  const std::string name = "Prüfling \"7\" // + (alt).dat";
#endif
  Does(name, GoodDevice);
  EXPECT_EQ(Run({"check", name}).status, 0);
}

TEST_F(KxbenchProcess, ScriptRunsLineByLine) {
  Does("good.dat", GoodDevice);
  Does("bad.dat", BadDevice);
  folder_.Write("night.kx",
                "// all\n\nShortTest(\"bad.dat\")\nshorttest(PROJEKTPFAD + \"good.dat\") // again\n");
  const ProcessResult result = Run({"run", "night.kx"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, StartsWith("night.kx:3: ShortTest(\"bad.dat\")\n"));
  EXPECT_THAT(result.output, HasSubstr("night.kx:4: shorttest(PROJEKTPFAD + \"good.dat\")\n"));
  EXPECT_THAT(result.output, EndsWith("\nFAIL: 1 of 2 commands without findings\n"));
}

TEST_F(KxbenchProcess, ScriptPassesEvaluatedParameters) {
  folder_.Write("echo.kx", "Echo(PROJECTNAME + \"-\" + (1 + 1), 20 + 3)\n");
  const ProcessResult result = Run({"--format", "records", "run", "echo.kx"});
  EXPECT_EQ(result.output, "echo-2||23||||\n");
}

TEST_F(KxbenchProcess, ScriptIsCheckedWholeBeforeItsFirstLineRuns) {
  Does("good.dat", GoodDevice);
  folder_.Write("night.kx", "ShortTest(\"good.dat\")\nShortTest(\"good.dat\" + KABEL)\n");
  const ProcessResult result = Run({"run", "night.kx"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "kxbench: night.kx:2:24: unknown variable KABEL\n");
}

TEST_F(KxbenchProcess, ProjectReachesTheExtension) {
  folder_.Write("trailer/x.dat", "record \n");
  Does("vars.dat", "variable PROJEKTPFAD\nvariable projectname\n");
  const ProcessResult result =
      Run({"--format", "records", "--project", "trailer/Adapter", "check", "vars.dat"});
  EXPECT_EQ(result.output, (folder_.Path() / "trailer" / "").string() + "\nAdapter\n");
}

TEST_F(KxbenchProcess, DeviceReachesTheDriverByItsWholeName) {
  Does("good.device", "");
  Does("device.dat", "environment BRENMOR_DEVICE\n");
  const ProcessResult result = Run({"--format", "records", "--device", "good.device", "check", "device.dat"});
  EXPECT_EQ(result.output, (folder_.Path() / "good.device").string() + "\n");
}

TEST_F(KxbenchProcess, HardwareInitialisationCanBeCalled) {
  Does("init.dat", std::string("init\n") + GoodDevice);
  EXPECT_EQ(Run({"check", "init.dat"}).status, 0);
}

TEST_F(KxbenchProcess, QuestionsWithNobodyToAskAreClosed) {
  Does("ask.dat", "ask\n");
  const ProcessResult result = Run({"--format", "records", "check", "ask.dat"});
  EXPECT_EQ(result.output, "2\n");
  EXPECT_EQ(result.errors, "Frage\n(nobody to ask, answered: Cancel)\n");
}

TEST_F(KxbenchProcess, ExtensionObjectsGoBeforeItsLibrary) {
  Does("good.dat", GoodDevice);
  environment_["FAKE_LOG"] = (folder_.Path() / "log").string();
  EXPECT_EQ(Run({"check", "good.dat"}).status, 0);
  EXPECT_EQ(folder_.Read("log"), "command destroyed\nlibrary unloaded\n");
}

TEST_F(KxbenchProcess, InfoDescribesTheExtension) {
  const ProcessResult result = Run({"info"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output,
            "Extension:    Fake\n"
            "Description:  Extension for tests\n"
            "Definitions:  Data\\FakeCommands.def\n"
            "Library:      " +
                Fake("bench/" + Library("ShortTest")) +
                "\n"
                "\n"
                "Command 10020:  procedure ShortTest(Datafile : String)\n"
                "  Datafile : String\n"
                "\n"
                "Command 10021:  procedure Echo(First : String; Second : Integer)\n"
                "  First : String\n"
                "  Second : Integer\n");
}

TEST_F(KxbenchProcess, WindowsShowTheProgressWhenTheyAreAskedFor) {
  Does("ask.dat", "ask\n");
  environment_["FAKE_UI"] = "5";
  const ProcessResult result = Run({"--format", "records", "--progress", "window", "check", "ask.dat"});
  EXPECT_EQ(result.output, "5\n");
  EXPECT_EQ(result.errors, "windows started\nwindow: Frage\nwindows ended\n");
}

}  // namespace
