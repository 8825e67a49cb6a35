#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// `kxbench draw` as a process, on the simulated tester.

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

fs::path DrawnExamples() { return fs::absolute(PROJECT_FOLDER) / "examples"; }
fs::path ImagesFolder() { return fs::absolute(PROJECT_FOLDER) / "docs" / "images"; }

std::string BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

class DrawProcess : public testing::Test {
 protected:
  ProcessResult Run(const std::string& example, const std::vector<std::string>& options,
                    const std::string& command = "draw") {
    const fs::path harness = DrawnExamples() / example / example;
    return RunProgram({"--project", harness.string(), command, harness.string() + ".dat"}, options);
  }

  /// Draws the document of an example that has this ending.
  ProcessResult RunOnDocument(const std::string& example, const std::string& ending,
                              const std::vector<std::string>& options) {
    return RunProgram({"draw", (DrawnExamples() / example / (example + ending)).string()}, options);
  }

  ProcessResult RunProgram(std::vector<std::string> arguments, const std::vector<std::string>& options) {
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = std::move(arguments);
    process.arguments.insert(process.arguments.end(), options.begin(), options.end());
    process.folder = folder_.Path().string();
    process.environment["BRENMOR_TRACE"] = (folder_.Path() / "trace").string();
    process.environment["LC_ALL"] = "C";
    return process.Run();
  }

  static std::string Map(const std::string& example) {
    return (DrawnExamples() / example / (example + ".map.csv")).string();
  }

  static std::string Device(const std::string& example, const std::string& device) {
    return (DrawnExamples() / example / (device + ".device")).string();
  }

  fs::path In(const std::string& name) const { return folder_.Path() / name; }

  TemporaryFolder folder_;
};

/// drawing-EXAMPLE.svg is what its expectation looks like; drawing-EXAMPLE.DEVICE.svg has the device's
/// faults; drawing-EXAMPLE.csv.svg, .yml and .kbl are the documents.
TEST_F(DrawProcess, ThePicturesOfTheGuideAreWhatIsDrawn) {
  int pictures = 0;
  int withFaults = 0;
  int documents = 0;
  for (const auto& entry : fs::directory_iterator(ImagesFolder())) {
    const std::string stem = entry.path().stem().string();
    if (entry.path().extension() != ".svg" || !stem.starts_with("drawing-")) continue;
    const std::string name = stem.substr(std::string("drawing-").size());
    const std::size_t dot = name.find('.');
    const std::string example = name.substr(0, dot);
    const std::string drawn = dot == std::string::npos ? "" : name.substr(dot);
    std::vector<std::string> options = {"-o", "p.svg"};
    ++pictures;
    if (drawn == ".csv" || drawn == ".yml" || drawn == ".kbl") {
      ++documents;
      options.insert(options.end(), {"--map", Map(example)});
      EXPECT_EQ(RunOnDocument(example, drawn, options).status, 0) << name;
    } else if (!drawn.empty()) {
      ++withFaults;
      options.insert(options.end(), {"--device", Device(example, drawn.substr(1)), "--faults"});
      EXPECT_EQ(Run(example, options).status, 1) << name;
    } else {
      EXPECT_EQ(Run(example, options).status, 0) << name;
    }
    EXPECT_EQ(BytesOf(In("p.svg")), BytesOf(entry.path())) << name << ": scripts/screenshots draws it anew";
  }
  EXPECT_GE(pictures, 5);
  EXPECT_GE(withFaults, 2);
  EXPECT_GE(documents, 3);
}

TEST_F(DrawProcess, WritesAnSvgAndSaysSo) {
  const ProcessResult result = Run("trailer-adapter", {"-o", "p.SVG"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, StartsWith("p.SVG: "));
  EXPECT_THAT(BytesOf(In("p.SVG")), StartsWith("<svg "));
  EXPECT_FALSE(fs::exists(In("trace")));  // nothing was measured, nor a driver loaded
}

TEST_F(DrawProcess, WritesAPageWhereTheNameSaysSo) {
  for (const char* name : {"p.html", "p.htm"}) {
    EXPECT_EQ(Run("trailer-adapter", {"-o", name}).status, 0);
    EXPECT_THAT(BytesOf(In(name)), StartsWith("<!DOCTYPE html>"));
  }
}

TEST_F(DrawProcess, AHyphenIsStandardOutput) {
  const ProcessResult result = Run("trailer-adapter", {"-o", "-"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, StartsWith("<svg "));
  EXPECT_THAT(result.output, EndsWith("</svg>\n"));
}

TEST_F(DrawProcess, MeasuresTheDeviceAndOpensEveryRelay) {
  const ProcessResult result =
      Run("trailer-adapter", {"-o", "p.svg", "--device", Device("trailer-adapter", "open-wire"), "--faults"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("1 fault marked"));
  EXPECT_THAT(BytesOf(In("p.svg")), HasSubstr("open: the wire from 4 (A4-R) to 17 (B4-R)"));
  EXPECT_THAT(BytesOf(In("trace")), HasSubstr("0 channel relays closed, 0 auxiliary relays closed"));
}

TEST_F(DrawProcess, AGoodDeviceHasNoFaults) {
  const ProcessResult result =
      Run("trailer-adapter", {"-o", "p.svg", "--device", Device("trailer-adapter", "good"), "--faults"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr("0 faults marked"));
}

TEST_F(DrawProcess, ADiagnosisThatWasKeptGivesTheSameDrawing) {
  const std::string device = Device("null-modem-cable", "swapped-pair");
  const ProcessResult diagnosis =
      Run("null-modem-cable", {"--device", device, "--format", "json"}, "diagnose");
  ASSERT_EQ(diagnosis.status, 1);
  folder_.Write("result.json", diagnosis.output);
  EXPECT_EQ(Run("null-modem-cable", {"-o", "kept.svg", "--faults", "result.json"}).status, 1);
  EXPECT_EQ(Run("null-modem-cable", {"-o", "measured.svg", "--device", device, "--faults"}).status, 1);
  EXPECT_EQ(BytesOf(In("kept.svg")), BytesOf(In("measured.svg")));
}

/// What `diagnose` prints of a good device, with a "fail" in place of its "pass", as after a check whose nets
/// are as expected.
TEST_F(DrawProcess, AFailedCheckIsSaidThoughNoFaultCanBeMarked) {
  std::string json =
      Run("trailer-adapter", {"--device", Device("trailer-adapter", "good"), "--format", "json"}, "diagnose")
          .output;
  const std::string pass = "\"pass\"";
  ASSERT_NE(json.find(pass), std::string::npos);
  folder_.Write("result.json", json.replace(json.find(pass), pass.size(), "\"fail\""));
  const ProcessResult result = Run("trailer-adapter", {"-o", "p.svg", "--faults", "result.json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("0 faults marked, 1 in the list alone"));
  EXPECT_THAT(result.errors, HasSubstr("the check failed, though the nets are as expected"));
  EXPECT_THAT(BytesOf(In("p.svg")), HasSubstr("the check failed, though the nets are as expected"));
}

TEST_F(DrawProcess, ADiagnosisOfAnotherHarnessIsRefused) {
  folder_.Write("other.json",
                Run("null-modem-cable",
                    {"--device", Device("null-modem-cable", "open-wire"), "--format", "json"}, "diagnose")
                    .output);
  const ProcessResult result = Run("trailer-adapter", {"-o", "p.svg", "--faults", "other.json"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(
      result.errors,
      HasSubstr("other.json: it is a diagnosis of another harness than trailer-adapter.dat: it expects"));
  EXPECT_FALSE(fs::exists(In("p.svg")));
  const ProcessResult document = RunOnDocument(
      "trailer-adapter", ".csv", {"-o", "p.svg", "--map", Map("trailer-adapter"), "--faults", "other.json"});
  EXPECT_EQ(document.status, 2);
}

TEST_F(DrawProcess, DocumentsTakeTheDiagnosisOfTheirExpectation) {
  folder_.Write("result.json",
                Run("trailer-adapter",
                    {"--device", Device("trailer-adapter", "open-wire"), "--format", "json"}, "diagnose")
                    .output);
  for (const std::string ending : {".csv", ".yml", ".kbl"}) {
    const ProcessResult mapped =
        RunOnDocument("trailer-adapter", ending,
                      {"-o", "p.svg", "--map", Map("trailer-adapter"), "--faults", "result.json"});
    EXPECT_EQ(mapped.status, 1) << mapped.errors;
    EXPECT_THAT(mapped.output, HasSubstr("1 fault marked"));
    EXPECT_EQ(mapped.errors, "");
    const ProcessResult unmapped =
        RunOnDocument("trailer-adapter", ending, {"-o", "p.svg", "--faults", "result.json"});
    EXPECT_EQ(unmapped.status, 1);
    EXPECT_THAT(unmapped.output, HasSubstr("0 faults marked, 1 in the list alone"));
    EXPECT_THAT(unmapped.errors, HasSubstr("F1 is marked nowhere"));
  }
}

TEST_F(DrawProcess, DocumentsAreDrawnWithAndWithoutTheirMap) {
  const std::string example = "trailer-adapter";
  for (const std::string ending : {".csv", ".yml", ".kbl"}) {
    SCOPED_TRACE(ending);
    const ProcessResult alone = RunOnDocument(example, ending, {"-o", "p.svg"});
    EXPECT_EQ(alone.status, 0) << alone.errors;
    const std::string plain = BytesOf(In("p.svg"));
    EXPECT_THAT(plain, StartsWith("<svg"));
    EXPECT_EQ(RunOnDocument(example, ending, {"-o", "p.svg", "--map", Map(example)}).status, 0);
    EXPECT_NE(BytesOf(In("p.svg")), plain) << "the channels stand beside the pins";
  }
  const ProcessResult measured = RunOnDocument(example, ".csv", {"-o", "p.svg", "--faults"});
  EXPECT_EQ(measured.status, 2);
  EXPECT_THAT(measured.errors, HasSubstr("measuring a device needs an expectation file"));
}

struct RefusedDrawing {
  const char* name;
  std::vector<std::string> options;
  const char* message;
};

class DrawProcessRefused : public DrawProcess, public testing::WithParamInterface<RefusedDrawing> {};

TEST_P(DrawProcessRefused, WithOneLineAndNoFile) {
  folder_.Write("good.svg", "old");
  folder_.Write("bad.json", "[1]");
  const ProcessResult result = Run("trailer-adapter", GetParam().options);
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, HasSubstr(GetParam().message));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
  EXPECT_EQ(BytesOf(In("good.svg")), "old");
  EXPECT_FALSE(fs::exists(In("p.png")));
}

INSTANTIATE_TEST_SUITE_P(
    Commands, DrawProcessRefused,
    testing::Values(
        RefusedDrawing{"NoPicture", {}, "draw needs -o PICTURE.svg"},
        RefusedDrawing{
            "UnknownEnding", {"-o", "p.png"}, "-o p.png: expected a name that ends in .svg or .html"},
        RefusedDrawing{"NoFolder", {"-o", "none/p.svg"}, "none"},
        RefusedDrawing{"NoDiagnosis",
                       {"-o", "good.svg", "--faults", "bad.json"},
                       "--faults bad.json: it is no diagnosis"},
        RefusedDrawing{"MissingDiagnosis", {"-o", "good.svg", "--faults", "none.json"}, "--faults: "},
        RefusedDrawing{"NoDevice", {"-o", "good.svg", "--device", "none.device", "--faults"}, "none.device"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
