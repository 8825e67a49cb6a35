#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <tlhelp32.h>

#include <filesystem>
#include <string>

#include "plugin/data/ShorttestData.h"
#include "tests/windows/ScratchFolder.h"

// `kxbench edit` with its own windows, and a user in front of them.

namespace {

constexpr DWORD PatienceMs = 60000;

std::filesystem::path ProgramFolder() {
  wchar_t name[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, name, MAX_PATH);
  return std::filesystem::path(name).parent_path();
}

/// The process that started a process; 0 when there is none of that number.
DWORD ParentOf(DWORD process) {
  const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  DWORD parent = 0;
  for (BOOL more = Process32FirstW(all, &entry); more; more = Process32NextW(all, &entry)) {
    if (entry.th32ProcessID == process) parent = entry.th32ParentProcessID;
  }
  CloseHandle(all);
  return parent;
}

/// The program: a guard, and the process that it waits for, which has the dialog.
class RunningEditor {
 public:
  explicit RunningEditor(const std::filesystem::path& file) {
    const std::filesystem::path program = ProgramFolder() / L"kxbench.exe";
    std::wstring line = L"\"" + program.wstring() + L"\" edit \"" + file.wstring() + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                        nullptr, &startup, &started)) {
      return;
    }
    CloseHandle(started.hThread);
    process_ = started.hProcess;
    id_ = started.dwProcessId;
  }
  ~RunningEditor() {
    if (process_ == nullptr) return;
    TerminateProcess(process_, 1);
    CloseHandle(process_);
  }
  RunningEditor(const RunningEditor&) = delete;
  RunningEditor& operator=(const RunningEditor&) = delete;

  /// Waits for the dialog; null when it does not come.
  HWND Dialog() {
    const ULONGLONG end = GetTickCount64() + PatienceMs;
    while (GetTickCount64() < end && Runs(10)) {
      EnumWindows(&RunningEditor::Look, reinterpret_cast<LPARAM>(this));
      if (dialog_ != nullptr) return dialog_;
    }
    return nullptr;
  }

  /// Exit status; -1 when the program does not end.
  int Status() const {
    DWORD status = 0;
    if (Runs(PatienceMs) || !GetExitCodeProcess(process_, &status)) return -1;
    return static_cast<int>(status);
  }

 private:
  bool Runs(DWORD waitMs) const { return WaitForSingleObject(process_, waitMs) == WAIT_TIMEOUT; }

  static BOOL CALLBACK Look(HWND window, LPARAM parameter) {
    auto& editor = *reinterpret_cast<RunningEditor*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t title[64] = {};
    GetWindowTextW(window, title, 64);
    if (std::wstring(title) != L"Kurzschlusstest" || !IsWindowVisible(window) ||
        ParentOf(process) != editor.id_)
      return TRUE;
    editor.dialog_ = window;
    return FALSE;
  }

  HANDLE process_ = nullptr;
  DWORD id_ = 0;
  HWND dialog_ = nullptr;
};

struct ButtonSearch {
  const wchar_t* text;
  HWND found;
};

BOOL CALLBACK LookForButton(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<ButtonSearch*>(parameter);
  wchar_t text[64] = {};
  GetWindowTextW(window, text, 64);
  if (std::wstring(text) != search.text) return TRUE;
  search.found = window;
  return FALSE;
}

HWND Button(HWND dialog, const wchar_t* text) {
  ButtonSearch search{text, nullptr};
  EnumChildWindows(dialog, LookForButton, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

class KxbenchEdit : public testing::Test {
 protected:
  KxbenchEdit() {
    TShortTestData data(3, 7);
    data.Schwelle = 10.0;
    data.SaveExpectationFile(Utf8(file_));
    std::filesystem::last_write_time(file_,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    written_ = std::filesystem::last_write_time(file_);
  }

  bool IsSavedAgain() const { return std::filesystem::last_write_time(file_) != written_; }

  ScratchFolder folder_;
  std::filesystem::path file_ = folder_ / L"Gerät 7.dat";
  std::filesystem::file_time_type written_;
};

TEST_F(KxbenchEdit, SavesTheFileOnOk) {
  RunningEditor editor(file_);
  const HWND dialog = editor.Dialog();
  ASSERT_NE(dialog, nullptr);
  const HWND ok = Button(dialog, L"OK");
  ASSERT_NE(ok, nullptr);
  PostMessageW(ok, BM_CLICK, 0, 0);
  EXPECT_EQ(editor.Status(), 0);
  EXPECT_TRUE(IsSavedAgain());
  const TShortTestData saved(Utf8(file_));
  EXPECT_EQ(saved.von, 3);
  EXPECT_EQ(saved.bis, 7);
}

TEST_F(KxbenchEdit, LeavesTheFileAloneWhenClosed) {
  RunningEditor editor(file_);
  const HWND dialog = editor.Dialog();
  ASSERT_NE(dialog, nullptr);
  PostMessageW(dialog, WM_CLOSE, 0, 0);
  EXPECT_EQ(editor.Status(), 3);
  EXPECT_FALSE(IsSavedAgain());
}

}  // namespace
