#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/bench/program/DriverFolder.h"
#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// Relays that are closed, as the bus addresses them; a terminating resistor has the address -1 - card.
using ClosedRelays = std::set<std::pair<int, int>>;

/// What the log of the witness driver says.
struct WitnessLog {
  ClosedRelays closed;         ///< in the end
  std::size_t mostClosed = 0;  ///< at any time
  bool terminated = false;     ///< the terminating resistor was on at any time
  int loaded = 0;              ///< how many processes loaded the driver
  long calls = 0;              ///< calls of the process that ended last

  explicit WitnessLog(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) Read(line);
  }

 private:
  void Read(const std::string& line) {
    std::istringstream words(line);
    std::string function;
    int first = 0;
    int second = 0;
    int third = 0;
    words >> function;
    if (function == "calls") words >> calls;
    words >> first >> second >> third;
    if (function == "loaded") ++loaded;
    if (function == "bus_write") Write(first, third);
    terminated = terminated || (function == "relay_set" && third == 1);
    if (function == "relay_set") Set({-1 - first, second}, third == 1);
    mostClosed = std::max(mostClosed, closed.size());
  }
  void Write(int address, int value) {
    if (value == 64) {
      std::erase_if(closed, [address](const auto& relay) { return relay.first == address; });
    } else {
      Set({address, value & 63}, value >= 128);
    }
  }
  void Set(const std::pair<int, int>& relay, bool on) {
    if (on) {
      closed.insert(relay);
    } else {
      closed.erase(relay);
    }
  }
};

/// What a check with the expectation of WitnessBench says first.
inline constexpr char NothingExpected[] = "kxbench: warning: a.dat: no connection is expected\n";

/// The real program, plug-in and learn module with the witness driver.
class WitnessBench : public testing::Test {
 protected:
  WitnessBench() { Learn(); }

  Process Kxbench(const std::vector<std::string>& arguments) {
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = arguments;
    process.folder = folder_.Path().string();
    process.environment = environment_;
    process.environment["WITNESS_LOG"] = (folder_.Path() / "log").string();
    process.environment["LC_ALL"] = "C";
    UseDriverIn(WITNESS_FOLDER, process);
    return process;
  }

  /// What the log says since it was forgotten.
  WitnessLog Log() const { return WitnessLog(folder_.Read("log")); }
  void ForgetLog() { std::filesystem::remove(folder_.Path() / "log"); }

  TemporaryFolder folder_;
  std::map<std::string, std::string> environment_;

 private:
  /// Nothing is connected: the expectation needs no known-good device. It has a terminating resistor.
  void Learn() {
    const ProcessResult result = Kxbench({"learn", "--channels", "40-56", "a.dat"}).Run();
    EXPECT_EQ(result.status, 0) << result.errors;
    std::string text = folder_.Read("a.dat");
    for (const std::string key : {"LASTRELAISKARTE=", "LASTRELAIS="}) {
      const std::size_t value = text.find(key) + key.size();
      text.replace(value, text.find_first_of("\r\n", value) - value, "2");
    }
    folder_.Write("a.dat", text);
    ForgetLog();
  }
};
