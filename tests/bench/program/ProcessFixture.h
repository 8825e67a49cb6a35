#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// What a check of a device without findings or connections reports, in the words of the fake extension.
inline constexpr const char* EmptyReport = "record Kurzschlusstest|0|0||0||\n";

/// A whole expectation file. What stands after its data block is not read as part of it.
inline constexpr const char* TwoConnectedChannels =
    "[BEREICH]\nSTART=1\nENDE=2\nWIDERSTAND=10\nWIDERSTAND2=10\n"
    "[OPTION]\nU_KONTROLLE=2\nLASTRELAISKARTE=0\nLASTRELAIS=0\nTIMEOUT=5000\nMAX ERROR=10\n"
    "[DATEN]\n88\n28\n";

/// Runs kxbench in a folder of its own, with the fake extension beside the program.
class KxbenchProcess : public testing::Test {
 protected:
  /// Whole name of a file among the fakes.
  static std::string Fake(const std::string& name) {
    return std::filesystem::absolute(std::filesystem::path(FAKES_FOLDER) / name).make_preferred().string();
  }

  /// File name of a library that is loaded by its own name.
  static std::string Library(const std::string& name) {
#ifdef _WIN32
    return name + ".dll";
#else
    return name + ".so";
#endif
  }

  static std::string Program() {
#ifdef _WIN32
    return "kxbench.exe";
#else
    return "kxbench";
#endif
  }

  Process Kxbench(const std::vector<std::string>& arguments) {
    Process process;
    process.program = Fake("bench/" + Program());
    process.arguments = arguments;
    process.environment = environment_;
    process.folder = folder_.Path().string();
    return process;
  }

  ProcessResult Run(const std::vector<std::string>& arguments) { return Kxbench(arguments).Run(); }

  /// Writes the expectation file `name`, of two connected channels, and into it what the fake command does
  /// when it is given the file.
  void Does(const std::string& name, const std::string& lines) {
    folder_.Write(name, std::string(TwoConnectedChannels) + "[FAKE]\n" + lines);
  }

  TemporaryFolder folder_;
  std::map<std::string, std::string> environment_;
};
