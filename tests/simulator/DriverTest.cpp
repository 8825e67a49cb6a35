// The driver library as its users see it: nine C functions, the environment, and the control interface.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#ifdef _WIN32
#include <windows.h>
#endif

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "simulator/SimulatedTester.h"

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr double Over = 1e9;

void SetEnvironment(const char* name, const std::string& value) {
#ifdef _WIN32
  _putenv_s(name, value.c_str());
#else
  setenv(name, value.c_str(), 1);
#endif
}

/// A text in the system's 8-bit encoding, which is how the driver hands out its texts, as UTF-8.
std::string FromSystemEncoding(const std::string& text) {
#ifdef _WIN32
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<std::size_t>(MultiByteToWideChar(
      CP_ACP, 0, text.data(), static_cast<int>(text.size()), wide.data(), static_cast<int>(wide.size()))));
  std::string utf8(3 * wide.size(), '\0');
  utf8.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(),
                                                           static_cast<int>(wide.size()), utf8.data(),
                                                           static_cast<int>(utf8.size()), nullptr, nullptr)));
  return utf8;
#else
  return text;
#endif
}

/// The loaded driver library, as fresh as on its first day and with its clock stopped.
class SimulatedDriver : public testing::Test {
 protected:
  SimulatedDriver() {
    SetEnvironment("BRENMOR_DEVICE", "");
    SetEnvironment("BRENMOR_TRACE", "");
    brenmor_sim_reset();
    brenmor_sim_manual_time(1);
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~SimulatedDriver() override {
    EXPECT_EQ(brenmor_sim_outstanding_texts(), 0);
    brenmor_sim_reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  std::string Put(const std::string& name, const std::string& text) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return (folder_ / name).string();
  }

  std::string Get(const std::string& name) {
    std::ifstream file(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  void Connect(const std::string& description) {
    ASSERT_EQ(brenmor_sim_load_text(description.c_str()), 0) << brenmor_sim_load_error();
    for (const int value : {176, 178}) brenmor_bus_write(128, 0, value);
    for (const int value : {177, 179}) brenmor_bus_write(129, 0, value);
  }

  static void Close(int channel, int line) { brenmor_bus_write(128 + line, 0, 128 + channel - 1); }

  /// The pending error, fetched and freed like the plug-in does; empty when there is none.
  static std::string Error() {
    if (brenmor_bus_get_error() == 0) return {};
    char* message = brenmor_bus_get_error_msg();
    std::string text = message;
    brenmor_free_mem(message);
    return FromSystemEncoding(text);
  }

  std::filesystem::path folder_ =
      std::filesystem::path(testing::TempDir()) /
      (std::string("driver-") + testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(SimulatedDriver, MeasuresALoadedDevice) {
  Connect("wire 1 5 0.42\ncharge 3 24 tau 1");
  Close(1, 0);
  Close(5, 1);
  EXPECT_EQ(brenmor_adx_read(10, 1, 2), 0.42);
  EXPECT_EQ(brenmor_adx_read(10, 2, 2), 0.00042);
  brenmor_bus_write(128, 0, 0);
  Close(3, 0);
  brenmor_sim_advance_ms(2000);
  EXPECT_NEAR(brenmor_adx_read(8, 2, 20), 24.0 * std::exp(-2.0), 1e-6);
  EXPECT_EQ(brenmor_adx_hw_generation(), 2);
  EXPECT_EQ(Error(), "");
}

TEST_F(SimulatedDriver, TellsWhatIsClosed) {
  Connect("");
  EXPECT_EQ(brenmor_sim_closed_channel_relays(), 0);
  EXPECT_EQ(brenmor_sim_closed_auxiliary_relays(), 4);
  Close(1, 0);
  Close(48, 1);
  EXPECT_EQ(brenmor_sim_closed_channel_relays(), 2);
  EXPECT_EQ(brenmor_sim_is_closed(48, 1), 1);
  EXPECT_EQ(brenmor_sim_is_closed(48, 0), 0);
  EXPECT_EQ(brenmor_sim_is_closed(0, 0), 0);
  EXPECT_EQ(brenmor_sim_is_closed(241, 0), 0);
  EXPECT_EQ(brenmor_sim_terminator_on(), 0);
  brenmor_relay_set(0, 4, 1);
  EXPECT_EQ(brenmor_sim_terminator_on(), 1);
}

TEST_F(SimulatedDriver, LoadStartsOver) {
  Connect("wire 1 5");
  Close(1, 0);
  brenmor_relay_set(0, 4, 1);
  brenmor_bus_write(127, 0, 64);
  ASSERT_EQ(brenmor_sim_load_text("cards 2"), 0);
  EXPECT_EQ(brenmor_sim_closed_channel_relays(), 0);
  EXPECT_EQ(brenmor_sim_closed_auxiliary_relays(), 0);
  EXPECT_EQ(brenmor_sim_terminator_on(), 0);
  EXPECT_EQ(brenmor_sim_call_count(), 0);
  EXPECT_EQ(brenmor_bus_get_error(), 0);
  EXPECT_EQ(brenmor_msu_write_relay(96, 2), 1);
}

TEST_F(SimulatedDriver, CountsTheCallsToTheHardwareAlone) {
  Connect("");
  EXPECT_EQ(brenmor_sim_call_count(), 4);
  brenmor_bus_delete_error();
  Error();
  EXPECT_EQ(brenmor_sim_call_count(), 4);
  brenmor_adx_hw_generation();
  EXPECT_EQ(brenmor_sim_call_count(), 5);
}

TEST_F(SimulatedDriver, FailsTheCallThatATestChose) {
  Connect("");
  brenmor_sim_fail_call(6, "Übertragungsfehler");
  Close(1, 0);
  EXPECT_EQ(Error(), "");
  Close(2, 0);
  EXPECT_EQ(Error(), "Übertragungsfehler");
  EXPECT_EQ(brenmor_sim_is_closed(2, 0), 0);
}

TEST_F(SimulatedDriver, ErrorStaysUntilItIsDeleted) {
  Connect("");
  brenmor_bus_write(130, 0, 128);
  EXPECT_EQ(Error(), "bus address 130: relay card 2 does not answer");
  EXPECT_EQ(Error(), "bus address 130: relay card 2 does not answer");
  brenmor_bus_delete_error();
  EXPECT_EQ(Error(), "");
}

TEST_F(SimulatedDriver, TextWithoutAnErrorIsEmptyAndMustBeFreedAllTheSame) {
  Connect("");
  char* message = brenmor_bus_get_error_msg();
  EXPECT_STREQ(message, "");
  EXPECT_EQ(brenmor_sim_outstanding_texts(), 1);
  brenmor_free_mem(message);
  EXPECT_EQ(brenmor_sim_outstanding_texts(), 0);
}

TEST_F(SimulatedDriver, CountsTextsThatWereNotGivenBack) {
  Connect("");
  brenmor_bus_write(130, 0, 128);
  char* first = brenmor_bus_get_error_msg();
  char* second = brenmor_bus_get_error_msg();
  EXPECT_EQ(brenmor_sim_outstanding_texts(), 2);
  brenmor_free_mem(first);
  brenmor_sim_reset();
  EXPECT_EQ(brenmor_sim_outstanding_texts(), 1);
  EXPECT_STREQ(second, "bus address 130: relay card 2 does not answer");
  ASSERT_EQ(brenmor_sim_load_text(""), 0);
  brenmor_free_mem(second);
}

TEST_F(SimulatedDriver, ForeignMemoryIsRefused) {
  Connect("");
  brenmor_free_mem(nullptr);
  EXPECT_EQ(Error(), "");
  int foreign = 0;
  brenmor_free_mem(&foreign);
  EXPECT_EQ(Error(), "memory was given back that is not the driver's");
}

TEST_F(SimulatedDriver, UnusableTextFailsEveryCallWithTheReason) {
  EXPECT_EQ(brenmor_sim_load_text("wire 1 2\nwire 3"), 1);
  EXPECT_STREQ(brenmor_sim_load_error(), "device description:2:1: expected: wire POINT POINT [OHM]");
  EXPECT_EQ(brenmor_msu_write_relay(1, 2), 0);
  EXPECT_EQ(Error(), "device description:2:1: expected: wire POINT POINT [OHM]");
  EXPECT_EQ(brenmor_sim_load_text(""), 0);
  EXPECT_STREQ(brenmor_sim_load_error(), "");
  EXPECT_EQ(brenmor_msu_write_relay(1, 2), 1);
}

TEST_F(SimulatedDriver, LoadsAFile) {
  EXPECT_EQ(brenmor_sim_load_file(Put("a.device", "generation 7").c_str()), 0);
  EXPECT_EQ(brenmor_adx_hw_generation(), 7);
  EXPECT_EQ(brenmor_sim_load_file((folder_ / "none.device").string().c_str()), 1);
  EXPECT_THAT(brenmor_sim_load_error(), EndsWith("none.device: cannot be read: there is no such file"));
}

// --- the environment

TEST_F(SimulatedDriver, FirstCallReadsTheDeviceThatTheEnvironmentNames) {
  SetEnvironment("BRENMOR_DEVICE", Put("a.device", "generation 7"));
  EXPECT_EQ(brenmor_adx_hw_generation(), 7);
  Put("a.device", "generation 8");
  EXPECT_EQ(brenmor_adx_hw_generation(), 7) << "read once";
  brenmor_sim_reset();
  EXPECT_EQ(brenmor_adx_hw_generation(), 8);
}

TEST_F(SimulatedDriver, LoadedDeviceComesBeforeTheEnvironment) {
  SetEnvironment("BRENMOR_DEVICE", Put("a.device", "generation 7"));
  ASSERT_EQ(brenmor_sim_load_text("generation 9"), 0);
  EXPECT_EQ(brenmor_adx_hw_generation(), 9);
}

struct UnusableRow {
  const char* name;
  const char* device;  ///< value of BRENMOR_DEVICE, in the test's folder; empty: not set
  const char* text;    ///< what every error ends in
};

void PrintTo(const UnusableRow& row, std::ostream* out) { *out << row.name; }

class UnusableDevice : public SimulatedDriver, public testing::WithParamInterface<UnusableRow> {};

TEST_P(UnusableDevice, FailsEveryCallWithTheReason) {
  Put("bad.device", "cards 1\nwire 1 five\n");
  const std::string device = GetParam().device;
  SetEnvironment("BRENMOR_DEVICE", device.empty() ? "" : (folder_ / device).string());
  const auto expectError = [&](const char* call) {
    const std::string error = Error();
    EXPECT_THAT(error, StartsWith("BRENMOR_DEVICE")) << call;
    EXPECT_THAT(error, EndsWith(GetParam().text)) << call;
    brenmor_bus_delete_error();
    EXPECT_EQ(Error(), "") << call;
  };
  brenmor_bus_write(128, 0, 64);
  expectError("bus_write");
  EXPECT_EQ(brenmor_msu_write_relay(1, 2), 0);
  expectError("msu_write_relay");
  brenmor_relay_set(0, 0, 1);
  expectError("relay_set");
  EXPECT_EQ(brenmor_adx_read(10, 1, 2), Over);
  expectError("adx_read");
  EXPECT_EQ(brenmor_adx_hw_generation(), 0);
  expectError("adx_hw_generation");
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, UnusableDevice,
    testing::Values(UnusableRow{"NotSet", "", " is not set: it names the file that describes the device"},
                    UnusableRow{"NoSuchFile", "none.device",
                                "none.device: cannot be read: there is no such file"},
                    UnusableRow{"Folder", ".", "cannot be read: it is a directory"},
                    UnusableRow{"Mistake", "bad.device",
                                "bad.device:2:8: there is no point 'five' (declare it with 'channel' or "
                                "'node' first)"}),
    [](const auto& row) { return row.param.name; });

TEST_F(SimulatedDriver, TraceHoldsEveryCallInOrder) {
  SetEnvironment("BRENMOR_DEVICE", Put("a.device", "cards 1\nwire 1 5 0.42\n"));
  SetEnvironment("BRENMOR_TRACE", (folder_ / "a.trace").string());
  brenmor_bus_delete_error();
  brenmor_bus_write(128, 0, 64);
  brenmor_msu_write_relay(1, 2);
  brenmor_msu_write_relay(96, 2);
  EXPECT_EQ(Error(), "relay 96: relay card 2 does not answer");
  brenmor_bus_delete_error();
  for (const int value : {176, 178, 128}) brenmor_bus_write(128, 0, value);
  for (const int value : {177, 179, 132}) brenmor_bus_write(129, 0, value);
  brenmor_relay_set(0, 48, 1);
  brenmor_adx_read(10, 1, 2);
  brenmor_adx_hw_generation();
  const std::string calls =
      "bus_delete_error\n"
      "bus_write 128 0 64 -> 0\n"
      "msu_write_relay 1 2 -> 1\n"
      "msu_write_relay 96 2 -> 0\n"
      "bus_get_error -> 1\n"
      "bus_get_error_msg -> \"relay 96: relay card 2 does not answer\"\n"
      "free_mem\n"
      "bus_delete_error\n"
      "bus_write 128 0 176 -> 0\n"
      "bus_write 128 0 178 -> 0\n"
      "bus_write 128 0 128 -> 0\n"
      "bus_write 129 0 177 -> 0\n"
      "bus_write 129 0 179 -> 0\n"
      "bus_write 129 0 132 -> 0\n"
      "relay_set 0 48 1 -> 0\n"
      "adx_read 10 1 2 -> 0.42\n"
      "adx_hw_generation -> 2\n";
  EXPECT_EQ(Get("a.trace"), calls) << "while the library is loaded";
  brenmor_sim_reset();
  EXPECT_EQ(Get("a.trace"), calls +
                                "# end: 2 channel relays closed, 4 auxiliary relays closed, terminating "
                                "resistor on, 0 texts not freed\n"
                                "# closed: channel 1 on line 0\n"
                                "# closed: channel 5 on line 1\n");
}

TEST_F(SimulatedDriver, TraceOfAnUnusableDevice) {
  SetEnvironment("BRENMOR_TRACE", (folder_ / "a.trace").string());
  brenmor_msu_write_relay(1, 2);
  EXPECT_EQ(Get("a.trace"), "msu_write_relay 1 2 -> 0\n");
}

TEST_F(SimulatedDriver, TraceThatCannotBeOpenedIsAnError) {
  ASSERT_EQ(brenmor_sim_load_text(""), 0);
  SetEnvironment("BRENMOR_TRACE", (folder_ / "no" / "a.trace").string());
  EXPECT_EQ(brenmor_msu_write_relay(1, 2), 0);
  EXPECT_THAT(Error(), StartsWith("BRENMOR_TRACE: "));
  EXPECT_THAT(Error(), HasSubstr("a.trace cannot be opened for writing"));
  EXPECT_EQ(brenmor_sim_load_text(""), 0);
  EXPECT_EQ(brenmor_msu_write_relay(1, 2), 0) << "a new device does not bring the trace back";
}

}  // namespace
