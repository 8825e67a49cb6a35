#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// `kxbench diagnose` and `kxbench check --diagnose` on the simulated tester, with the examples.

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::filesystem::path ExamplesFolder() { return std::filesystem::absolute(EXAMPLES_FOLDER); }

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// The devices of a harness among the examples.
std::vector<std::filesystem::path> DevicesOf(const std::string& harness) {
  std::vector<std::filesystem::path> devices;
  for (const auto& entry : std::filesystem::directory_iterator(ExamplesFolder() / harness)) {
    if (entry.path().extension() == ".device") devices.push_back(entry.path());
  }
  return devices;
}

class DiagnoseProcess : public testing::Test {
 protected:
  /// Runs the program with a device of an example, its expectation and its names.
  ProcessResult Run(const std::filesystem::path& device, const std::vector<std::string>& command) {
    const std::filesystem::path folder = device.parent_path();
    const std::string harness = folder.filename().string();
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = {"--device", device.string(), "--project", (folder / harness).string()};
    process.arguments.insert(process.arguments.end(), command.begin(), command.end());
    process.arguments.insert(process.arguments.begin() + 5, (folder / (harness + ".dat")).string());
    process.folder = folder_.Path().string();
    process.environment["BRENMOR_TRACE"] = (folder_.Path() / "trace").string();
    process.environment["LC_ALL"] = "C";
    return process.Run();
  }

  static std::filesystem::path Trailer(const std::string& device) {
    return ExamplesFolder() / "trailer-adapter" / device;
  }

  std::string Trace() const { return ContentOf(folder_.Path() / "trace"); }

  TemporaryFolder folder_;
};

class DiagnoseExample : public DiagnoseProcess, public testing::WithParamInterface<const char*> {};

TEST_P(DiagnoseExample, NamesTheFaultsAsApproved) {
  for (const std::filesystem::path& device : DevicesOf(GetParam())) {
    std::filesystem::path approved = device;
    approved.replace_extension(".diagnosis");
    const bool good = device.filename() == "good.device";
    ASSERT_EQ(std::filesystem::exists(approved), !good) << device;
    if (good) continue;
    const ProcessResult result = Run(device, {"diagnose"});
    EXPECT_EQ(result.output, ContentOf(approved)) << device;
    EXPECT_EQ(result.status, result.output.starts_with("no faults; ") ? 0 : 1) << device;
    EXPECT_THAT(Trace(), HasSubstr("0 channel relays closed, 0 auxiliary relays closed")) << device;
#if defined(SHORTTEST_SLOWED)
    if (GetParam() == std::string("generated-240")) break;  // one takes long enough there
#endif
  }
}

INSTANTIATE_TEST_SUITE_P(Examples, DiagnoseExample,
                         testing::Values("atx-extension", "crossover-cable", "null-modem-cable",
                                         "trailer-adapter"));

// The waits of so many relays and the sanitizers' own time would be minutes.
#if !defined(SHORTTEST_SANITIZED)
INSTANTIATE_TEST_SUITE_P(LargeExample, DiagnoseExample, testing::Values("generated-240"));
#endif

TEST_F(DiagnoseProcess, OfAGoodDeviceFindsNoFaults) {
  const ProcessResult result = Run(Trailer("good.device"), {"diagnose"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "no faults; 7 nets agree\n");
}

TEST_F(DiagnoseProcess, PrintsOneObjectForPrograms) {
  const ProcessResult result = Run(Trailer("open-wire.device"), {"diagnose", "--format", "json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(
      result.output,
      R"({"format": "diagnosis", "version": 1, "verdict": "fail", "faults": [)"
      R"({"kind": "open", "channels": [4], )"
      R"("text": "open: the wire from 4 (A4-R) to 17 (B4-R); look at its two contacts first, then along the wire", )"
      R"("ohm": null, "alternatives": [{"kind": "open", "channels": [17], )"
      R"("text": "open: the wire from 4 (A4-R) to 17 (B4-R); look at its two contacts first, then along the wire"}]}], )"
      R"("nets": {"expected": [[1, 14], [2, 15], [3, 16], [4, 17], [5, 18], [6, 19], [7, 20], [8], [9], [10], [11], [12], [13]], )"
      R"("measured": [[1, 14], [2, 15], [3, 16], [4], [5, 18], [6, 19], [7, 20], [8], [9], [10], [11], [12], [13], [17]]}})"
      "\n");
}

TEST_F(DiagnoseProcess, OfAGoodDeviceIsAPassForPrograms) {
  const ProcessResult result = Run(Trailer("good.device"), {"diagnose", "--format", "json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr(R"("verdict": "pass", "faults": [], )"));
}

TEST_F(DiagnoseProcess, LeavesTheExpectationAsItIs) {
  const std::string before = ContentOf(ExamplesFolder() / "trailer-adapter/trailer-adapter.dat");
  Run(Trailer("swapped-pair.device"), {"diagnose"});
  EXPECT_EQ(ContentOf(ExamplesFolder() / "trailer-adapter/trailer-adapter.dat"), before);
}

TEST_F(DiagnoseProcess, AfterACheckComesAfterItsCallsAndRecords) {
  const ProcessResult checked = Run(Trailer("swapped-pair.device"), {"check", "--format", "records"});
  std::string calls = Trace();
  calls.resize(calls.find("# end"));
  const ProcessResult both =
      Run(Trailer("swapped-pair.device"), {"check", "--diagnose", "--format", "records"});
  EXPECT_EQ(both.status, 1);
  EXPECT_EQ(both.output, checked.output);
  EXPECT_THAT(both.errors, HasSubstr("swapped: the wires on 1 (A1-L) and 4 (A4-R)"));
#ifndef _WIN32  // where the driver is loaded anew, it begins a trace of its own
  EXPECT_THAT(Trace(), StartsWith(calls));
#endif
}

TEST_F(DiagnoseProcess, AfterACheckWithoutFindingsMeasuresNothing) {
  const ProcessResult checked = Run(Trailer("good.device"), {"check"});
  const std::string calls = Trace();
  const ProcessResult both = Run(Trailer("good.device"), {"check", "--diagnose"});
  EXPECT_EQ(both.status, 0);
  EXPECT_EQ(both.output, checked.output);
  EXPECT_EQ(Trace(), calls);
  const ProcessResult json = Run(Trailer("good.device"), {"check", "--diagnose", "--format", "json"});
  EXPECT_THAT(json.output,
              StartsWith(R"({"format": "diagnosis", "version": 1, "verdict": "pass", "faults": [])"));
  EXPECT_EQ(Trace(), calls);
}

TEST_F(DiagnoseProcess, AfterACheckStandsBelowItsReport) {
  const ProcessResult result = Run(Trailer("swapped-pair.device"), {"check", "--diagnose"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("FAIL: 4 findings\n\nDiagnosis:\n  swapped: the wires on 1 (A1-L)"));
  EXPECT_THAT(result.output, EndsWith("FAIL: 1 fault\n"));
}

TEST_F(DiagnoseProcess, AsJsonNeedsADiagnosisToBeAsked) {
  const ProcessResult result = Run(Trailer("good.device"), {"check", "--format", "json"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: --format json is the format of a diagnosis: it needs --diagnose\n");
  EXPECT_EQ(result.output, "");
}

TEST_F(DiagnoseProcess, OfKeptRecordsNeedsNoDevice) {
  folder_.Write("records", Run(Trailer("swapped-pair.device"), {"check", "--format", "records"}).output);
  const ProcessResult result = Run(Trailer("good.device"), {"diagnose", "--records", "records"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, ContentOf(Trailer("swapped-pair.diagnosis")));
  EXPECT_EQ(Run(Trailer("good.device"), {"diagnose", "--records", "none"}).status, 2);
}

TEST_F(DiagnoseProcess, WithoutATesterSaysWhy) {
  const ProcessResult result = Run(Trailer("none.device"), {"diagnose"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, HasSubstr("there is no such file"));
  EXPECT_THAT(result.output, Not(HasSubstr("no faults")));
}

}  // namespace
