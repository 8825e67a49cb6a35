#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <memory>
#include <string>

#include "framework/kxextension.h"

// The plug-in as a DLL in a host's process: loaded, called, unloaded, and all that again.

namespace {

// More often than Windows has slots for thread-local storage (1088), which a DLL that forgets to give one
// back runs out of.
constexpr int Lives = 1200;

std::filesystem::path ProgramFolder() {
  wchar_t name[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, name, MAX_PATH);
  return std::filesystem::path(name).parent_path();
}

class LoadedPlugIn {
 public:
  LoadedPlugIn() : module_(LoadLibraryW((ProgramFolder() / L"ShortTest.dll").c_str())) {}
  ~LoadedPlugIn() {
    if (module_ != nullptr) FreeLibrary(module_);
  }
  LoadedPlugIn(const LoadedPlugIn&) = delete;
  LoadedPlugIn& operator=(const LoadedPlugIn&) = delete;

  bool IsLoaded() const { return module_ != nullptr; }

  std::unique_ptr<TExtensionInfo> Register() const {
    const auto entry = reinterpret_cast<TGetExtensionInfo>(
        reinterpret_cast<void*>(GetProcAddress(module_, "__getExtensionInfo")));
    return std::unique_ptr<TExtensionInfo>(entry(TKXHashTable()));
  }

 private:
  HMODULE module_;
};

TEST(PlugInLibrary, LivesAgainAndAgainInOneProcess) {
  for (int life = 1; life <= Lives; ++life) {
    const LoadedPlugIn plugIn;
    ASSERT_TRUE(plugIn.IsLoaded()) << "life " << life << ", error " << GetLastError();
    const auto info = plugIn.Register();
    ASSERT_EQ(info->Name, "Kurzschlusstest") << "life " << life;
    ASSERT_EQ(info->Commands.size(), 1U) << "life " << life;
  }
}

TEST(PlugInLibrary, IsGoneAfterUnloading) {
  {
    const LoadedPlugIn plugIn;
    ASSERT_TRUE(plugIn.IsLoaded());
    ASSERT_NE(GetModuleHandleW(L"ShortTest.dll"), nullptr);
  }
  EXPECT_EQ(GetModuleHandleW(L"ShortTest.dll"), nullptr);
}

}  // namespace
