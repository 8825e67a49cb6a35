#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "plugin/editor/ExpectationDocument.h"
#include "text/NumberText.h"

namespace shorttest::testkit {

/// A document, a folder for its files, and the comma as decimal separator.
class DocumentBench : public ::testing::Test {
 protected:
  DocumentBench() {
    SetDecimalSeparator(",");
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~DocumentBench() override {
    SetDecimalSeparator(std::nullopt);
    std::filesystem::remove_all(folder_);
  }

  /// A learned expectation: pairs of channels that are wired, all others open.
  static TShortTestData Learned(int von, int bis, const std::vector<std::pair<int, int>>& wires) {
    TShortTestData data(von, bis);
    for (const auto& [a, b] : wires) data.Put(a - von, b - von, CellState::Connected, 0.4);
    for (int i = 0; i <= data.Highconnections(); ++i) {
      for (int j = 0; j < i; ++j) data.Put(i, j, CellState::NotConnected, 1e9);
    }
    return data;
  }

  /// Opens a file that holds the data, and shows it.
  void Open(const TShortTestData& data) {
    data.SaveExpectationFile(File());
    document.Open(File());
    typed = document.ShowTexts();
    document.ShowParameters();
  }

  /// As OK does it.
  TShortTestData Saved() {
    document.RequireComplete(typed);
    document.Save(File());
    return TShortTestData(File());
  }

  std::string File(const std::string& name = "kabel.dat") const { return (folder_ / name).string(); }

  CellState Pair(int a, int b) const {
    const TShortTestData& data = *document.Data();
    return data.Get(a - data.von, b - data.von);
  }

  /// The message of what `action` throws; empty when it throws nothing.
  template <typename Action>
  static std::string ErrorOf(Action action) {
    try {
      action();
    } catch (const std::exception& error) {
      return error.what();
    }
    return {};
  }

  ExpectationDocument document;
  ConnectionTexts typed;  ///< what stands in the texts

 private:
  std::filesystem::path folder_ =
      std::filesystem::path(::testing::TempDir()) /
      ("document_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
};

}  // namespace shorttest::testkit
