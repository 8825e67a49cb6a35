#include "tests/bench/program/ProcessFixture.h"

/// Whatever keeps the program from running: exit status 2 and one clear line.

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

MATCHER(IsOneLine, "is one line") { return arg.find('\n') + 1 == arg.size(); }

class KxbenchFailure : public KxbenchProcess {
 protected:
  /// The one line that the program says; standard output must stay empty.
  std::string FailureOf(const std::vector<std::string>& arguments) {
    const ProcessResult result = Run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    return result.errors;
  }
};

TEST_F(KxbenchFailure, UnknownOption) {
  EXPECT_EQ(FailureOf({"--colour", "info"}), "kxbench: unknown option --colour (see kxbench info --help)\n");
}

TEST_F(KxbenchFailure, MissingExtension) {
  const std::string file = (folder_.Path() / Library("none")).string();
  EXPECT_EQ(FailureOf({"--plugin", Library("none"), "info"}),
            "kxbench: cannot load the plug-in " + file + ": no such file\n");
}

TEST_F(KxbenchFailure, ExtensionThatIsNoLibrary) {
  folder_.Write(Library("text"), "no library\n");
  EXPECT_THAT(
      FailureOf({"--plugin", Library("text"), "info"}),
      AllOf(StartsWith("kxbench: cannot load the plug-in "), HasSubstr(Library("text") + ": "), IsOneLine()));
}

TEST_F(KxbenchFailure, LibraryThatIsNoExtension) {
  const std::string file = Fake("broken/" + Library("NoExtension"));
  EXPECT_EQ(FailureOf({"--plugin", file, "info"}),
            "kxbench: " + file + " is no plug-in: it does not export __getExtensionInfo\n");
}

TEST_F(KxbenchFailure, MissingDriver) {
#ifdef _WIN32
  const std::string missing = "a library that it needs is missing";  // the system does not tell which
#else
  const std::string missing = "libabsent_driver.so: ";
#endif
  EXPECT_THAT(FailureOf({"--plugin", Fake("broken/" + Library("NeedsAbsentDriver")), "info"}),
              AllOf(StartsWith("kxbench: cannot load the plug-in "),
                    HasSubstr(Library("NeedsAbsentDriver") + ": " + missing), IsOneLine()));
}

TEST_F(KxbenchFailure, ExtensionWithoutDescription) {
  environment_["FAKE_EXTENSION"] = "null";
  EXPECT_THAT(FailureOf({"info"}), HasSubstr("gives no description of itself\n"));
}

TEST_F(KxbenchFailure, ExtensionThatFailsAtItsEntry) {
  environment_["FAKE_EXTENSION"] = "throw";
  EXPECT_EQ(FailureOf({"info"}), "kxbench: no licence for this host\n");
}

TEST_F(KxbenchFailure, ExtensionWithoutACommand) {
  environment_["FAKE_EXTENSION"] = "no-command";
  EXPECT_THAT(FailureOf({"info"}), HasSubstr("cannot create its command\n"));
}

TEST_F(KxbenchFailure, MissingDevice) {
  EXPECT_EQ(FailureOf({"--device", "none.device", "check", "a.dat"}),
            "kxbench: --device none.device: there is no such file\n");
}

TEST_F(KxbenchFailure, MissingProjectFolder) {
  EXPECT_EQ(FailureOf({"--project", "none/name", "check", "a.dat"}),
            "kxbench: --project none/name: there is no such folder\n");
}

TEST_F(KxbenchFailure, MissingScript) {
  EXPECT_EQ(FailureOf({"run", "none.kx"}), "kxbench: cannot read the script none.kx\n");
}

TEST_F(KxbenchFailure, ScriptThatIsAFolder) {
  EXPECT_EQ(FailureOf({"run", "."}), "kxbench: cannot read the script .\n");
}

TEST_F(KxbenchFailure, ScriptAboveSixteenMebibytes) {
  Does("huge.kx", "");
  std::filesystem::resize_file(folder_.Path() / "huge.kx", std::uintmax_t{2} << 30U);
  EXPECT_EQ(
      FailureOf({"run", "huge.kx"}),
      "kxbench: cannot read the script huge.kx: it holds 2147483648 bytes, more than the 16777216 that are "
      "possible\n");
}

#ifndef _WIN32
TEST_F(KxbenchFailure, ScriptThatNeverEnds) {
  EXPECT_EQ(
      FailureOf({"run", "/dev/zero"}),
      "kxbench: cannot read the script /dev/zero: it holds more than the 16777216 bytes that are possible\n");
}
#endif

TEST_F(KxbenchFailure, NoDisplay) {
  environment_["FAKE_UI"] = "no-display";
  EXPECT_EQ(FailureOf({"--progress", "window", "check", "a.dat"}),
            "kxbench: cannot show windows: no display can be reached\n");
}

TEST_F(KxbenchFailure, NoWindowUserInterface) {
  std::filesystem::copy_file(Fake("bench/" + Program()), folder_.Path() / Program());
  Process process = Kxbench({"--progress", "window", "check", "a.dat"});
  process.program = (folder_.Path() / Program()).string();
#ifdef _WIN32
  process.environment["PATH"] = Fake("bench");
  const std::string library = "kxui_wx.dll";
#else
  process.environment["LD_LIBRARY_PATH"] = Fake("bench");
  const std::string library = "libkxui_wx.so";
#endif
  const ProcessResult result = process.Run();
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: cannot load the window user interface " +
                               (folder_.Path() / library).string() + ": no such file\n");
}

struct Thrown {
  const char* name;
  const char* line;
  const char* text;
};

class KxbenchThrown : public KxbenchProcess, public testing::WithParamInterface<Thrown> {};

TEST_P(KxbenchThrown, EndsWithOneLineThatNamesTheFile) {
  Does("a.dat", GetParam().line);
  const ProcessResult result = Run({"--format", "records", "check", "a.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, std::string("kxbench: ShortTest(\"a.dat\"): ") + GetParam().text + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Exceptions, KxbenchThrown,
    testing::Values(Thrown{"OfTheExtensionsOwnType", "throw Relaiskarte 2 antwortet nicht",
                           "Relaiskarte 2 antwortet nicht"},
                    Thrown{"OfNoClass", "throw-number", "an exception of an unknown kind"},
                    Thrown{"AfterRecords", "record Kurzschlusstest|0|0||0||\nthrow bus", "bus"},
                    Thrown{"AfterACancel", "cancel\nthrow bus", "bus"}),
    [](const auto& row) { return row.param.name; });

TEST_F(KxbenchFailure, ErrorInAScriptNamesItsLineAndEndsIt) {
  Does("good.dat", EmptyReport);
  Does("broken.dat", "throw bus error\n");
  folder_.Write("night.kx", "ShortTest(\"good.dat\")\nShortTest(\"broken.dat\")\nShortTest(\"good.dat\")\n");
  const ProcessResult result = Run({"--format", "records", "run", "night.kx"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "Kurzschlusstest|0|0||0||\n");
  EXPECT_EQ(result.errors, "kxbench: night.kx:2: bus error\n");
}

#ifndef _WIN32
TEST_F(KxbenchFailure, OutputThatCannotBeWritten) {
  Does("good.dat", EmptyReport);
  for (const char* format : {"records", "report"}) {
    Process process = Kxbench({"--format", format, "check", "good.dat"});
    process.outputFile = "/dev/full";
    const ProcessResult result = process.Run();
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.errors, StartsWith("kxbench: cannot write to standard output: "));
  }
}
#endif

}  // namespace
