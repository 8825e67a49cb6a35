#include "tests/plugin/entry/LoadedPlugin.h"

#include <stdexcept>

#include "plugin/data/ShorttestData.h"
#include "simulator/SimulatedTester.h"
#include "text/NumberText.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace shorttest::testkit {
namespace {

constexpr const char* EntryName = "__getExtensionInfo";

#ifdef _WIN32

TGetExtensionInfo LoadEntry() {
  const HMODULE library = LoadLibraryW(std::filesystem::path(PLUGIN_FILE).c_str());
  if (library == nullptr) throw std::runtime_error("the plug-in cannot be loaded");
  const auto entry = GetProcAddress(library, EntryName);
  if (entry == nullptr) throw std::runtime_error("the plug-in has no entry");
  return reinterpret_cast<TGetExtensionInfo>(reinterpret_cast<void*>(entry));
}

#else

TGetExtensionInfo LoadEntry() {
  void* const library = dlopen(PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  void* const entry = dlsym(library, EntryName);
  if (entry == nullptr) throw std::runtime_error(dlerror());
  return reinterpret_cast<TGetExtensionInfo>(entry);
}

#endif

}  // namespace

TGetExtensionInfo PluginEntry() {
  static const TGetExtensionInfo entry = LoadEntry();
  return entry;
}

PluginTest::PluginTest()
    : window([this](UINT message, WPARAM wParam, LPARAM lParam) { return Receive(message, wParam, lParam); }),
      folder_(std::filesystem::path(::testing::TempDir()) /
              (std::string("plugin-") + ::testing::UnitTest::GetInstance()->current_test_info()->name())) {
  std::filesystem::remove_all(folder_);
  std::filesystem::create_directories(folder_);
  initCalls = 0;
  initThrows = false;
  driverCallsAtInit = -1;
  SetApplication(&ui);
  brenmor_sim_load_text("wire 1 2 0.5\n");
  hostValues.Put("AppParser", reinterpret_cast<std::uintptr_t>(static_cast<TKXParser*>(&parser)));
  hostValues.Put("MsgHandle", reinterpret_cast<std::uintptr_t>(window.Handle()));
  hostValues.Put("BreInit", reinterpret_cast<std::uintptr_t>(&InitHardware));
}

PluginTest::~PluginTest() {
  EXPECT_EQ(ui.Dialogs(), 0);
  EXPECT_EQ(brenmor_sim_closed_channel_relays(), 0);
  EXPECT_EQ(brenmor_sim_closed_auxiliary_relays(), 0);
  EXPECT_EQ(brenmor_sim_outstanding_texts(), 0);
  SetApplication(nullptr);
  brenmor_sim_reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

LRESULT PluginTest::Receive(UINT message, WPARAM /*wParam*/, LPARAM lParam) {
  if (message != 1133) return 0;
  std::string text;
  for (const auto* unit = reinterpret_cast<const char16_t*>(lParam); *unit != 0; ++unit) {
    text += static_cast<char>(*unit);
  }
  records.push_back(text);
  return 0;
}

const TExtensionInfo& PluginTest::Register() {
  info_.reset(PluginEntry()(hostValues));
  return *info_;
}

std::unique_ptr<TKXFuncRunEdit> PluginTest::MakeCommand() {
  if (info_ == nullptr) Register();
  return info_->Commands.at(0)->CreateCommand();
}

void PluginTest::Run(TKXRunEdit& command, const std::string& fileName) {
  TParamList params;
  params.Set("Datafile", "\"...\"", std::make_unique<TStringValue>(fileName));
  command.Run(params);
}

std::string PluginTest::InFolder(const std::string& name) const {
  const auto file = folder_ / std::filesystem::path(std::u8string(name.begin(), name.end()));
  const std::u8string utf8 = file.u8string();
  return {utf8.begin(), utf8.end()};
}

std::string PluginTest::ExpectationFile(const std::string& name, bool connected) {
  TShortTestData data(1, 2);
  data.Put(1, 0, connected ? CellState::Connected : CellState::NotConnected, NoResistance);
  std::string file = InFolder(name);
  data.SaveExpectationFile(file);
  return file;
}

void PluginTest::InitHardware() {
  ++initCalls;
  driverCallsAtInit = brenmor_sim_call_count();
  if (initThrows) throw std::runtime_error("the tester is switched off");
}

}  // namespace shorttest::testkit
