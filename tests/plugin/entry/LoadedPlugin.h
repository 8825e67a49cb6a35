#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "framework/MessageWindow.h"
#include "framework/kxcomponents.h"
#include "framework/kxextension.h"
#include "tests/support/FakeUserInterface.h"

namespace shorttest::testkit {

/// The plug-in's entry. The library is loaded at the first call and stays loaded: exceptions and commands of
/// its making live on in the test program.
TGetExtensionInfo PluginEntry();

/// A parser that is only told apart from others.
class NoParser : public TKXParser {
 public:
  std::unique_ptr<TKXExpression> ParseExpression(const std::string& /*text*/) override { return nullptr; }
  TKXEnvironment& GetEnvironment() override { throw std::logic_error("the parser has no environment"); }
};

/// A host: its values, its message window, a user interface with a script, and the simulated tester with a
/// device of two channels, wired together.
class PluginTest : public ::testing::Test {
 protected:
  PluginTest();
  ~PluginTest() override;

  /// Calls the entry with the host's values, and keeps the description.
  const TExtensionInfo& Register();

  /// A command made through the description; the host registers first if it did not.
  std::unique_ptr<TKXFuncRunEdit> MakeCommand();

  /// Runs a command with this file name.
  static void Run(TKXRunEdit& command, const std::string& fileName);

  /// Writes an expectation file for channels 1 and 2 and returns its name.
  std::string ExpectationFile(const std::string& name, bool connected);

  /// The file name within this test's own folder.
  std::string InFolder(const std::string& name) const;

  /// The value of the host's "BreInit".
  static void InitHardware();

  static inline int initCalls = 0;
  static inline bool initThrows = false;
  static inline std::int64_t driverCallsAtInit = 0;

  CallLog log;
  FakeUserInterface ui{log};
  NoParser parser;
  std::vector<std::string> records;  ///< texts of message 1133, UTF-8; ASCII alone is expected
  kx::MessageWindow window;
  TKXHashTable hostValues;

 private:
  LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam);

  std::unique_ptr<TExtensionInfo> info_;
  std::filesystem::path folder_;
};

}  // namespace shorttest::testkit
