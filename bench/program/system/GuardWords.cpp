#include "bench/program/system/GuardWords.h"

#include <sstream>

#include "bench/program/system/System.h"

namespace kxbench {

namespace {

constexpr const char* DriverWord = "driver ";
constexpr const char* ExpectationWord = "expectation ";
constexpr const char* DoneWord = "done";

}  // namespace

std::string DriverLibraryName() { return LibraryFileName("BrenmorHWDevice", LibraryPrefix::Lib); }

std::string DriverMessage(const std::string& file) { return DriverWord + file + "\n"; }

std::string ExpectationMessage(const std::string& file) { return ExpectationWord + file + "\n"; }

std::string DoneMessage() { return DoneWord + std::string("\n"); }

GuardNews ReadNews(const std::string& messages) {
  GuardNews news;
  std::istringstream lines(messages.substr(0, messages.rfind('\n') + 1));
  for (std::string line; std::getline(lines, line);) {
    if (line == DoneWord) news.done = true;
    if (line.starts_with(DriverWord)) news.driver = line.substr(std::string(DriverWord).size());
    if (line.starts_with(ExpectationWord))
      news.expectations.push_back(line.substr(std::string(ExpectationWord).size()));
  }
  return news;
}

std::string GuardLine(const std::string& how, const std::string& driver, const std::string& failure) {
  if (driver.empty()) return how + ": no driver had been loaded, no relay was switched";
  if (failure.empty()) return how + ": every relay was opened";
  return how + ": RELAYS MAY BE CLOSED: " + failure;
}

}  // namespace kxbench
