#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace text_test {

/// A test that changes the process's environment, which is put back at its end.
class EnvironmentTest : public testing::Test {
 protected:
  ~EnvironmentTest() override {
    for (const auto& [name, value] : before_) {
      if (value) {
        setenv(name.c_str(), value->c_str(), 1);
      } else {
        unsetenv(name.c_str());
      }
    }
  }

  void Set(const std::string& name, const std::string& value) {
    const char* const old = std::getenv(name.c_str());
    before_.try_emplace(name, old != nullptr ? std::optional<std::string>(old) : std::nullopt);
    setenv(name.c_str(), value.c_str(), 1);
  }

 private:
  std::map<std::string, std::optional<std::string>> before_;
};

}  // namespace text_test
