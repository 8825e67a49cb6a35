#include "simulator/LoadedTester.h"

#include "simulator/DescriptionReader.h"
#include "text/Environment.h"
#include "text/Paths.h"
#include "text/SystemText.h"

namespace simulator {
namespace {

constexpr const char* DeviceVariable = "BRENMOR_DEVICE";
constexpr const char* TraceVariable = "BRENMOR_TRACE";
constexpr const char* AppendVariable = "BRENMOR_TRACE_APPEND";

// Made when the library is loaded and freed when it is unloaded: after everything that was linked against
// it, so that calls from the callers' own clean-up still find it.
LoadedTester theTester;

std::string RelayText(int count, const char* kind) {
  return std::to_string(count) + " " + kind + (count == 1 ? " relay" : " relays") + " closed";
}

}  // namespace

LoadedTester& LoadedTester::Instance() { return theTester; }

LoadedTester::~LoadedTester() {
  try {
    EndTrace();
  } catch (const std::exception&) {
    // No memory for the last lines: the trace lacks them.
  }
}

void LoadedTester::MakeUnusable(const std::string& cause) { tester_.emplace(cause, time_); }

template <typename Read>
bool LoadedTester::Load(Read&& read) {
  loadError_.clear();
  try {
    tester_.emplace(read(), time_);
  } catch (const std::exception& error) {  // a mistake in the description; a name no file can have
    loadError_ = error.what();
    MakeUnusable(loadError_);
  }
  if (!traceError_.empty()) MakeUnusable(traceError_);
  return loadError_.empty();
}

bool LoadedTester::LoadFile(const std::string& fileName) {
  return Load([&] { return ReadDeviceDescription(shorttest::PathFromUtf8(fileName)); });
}

bool LoadedTester::LoadText(std::string_view text) {
  return Load([&] { return ParseDeviceDescription(text, "device description"); });
}

void LoadedTester::LoadFromEnvironment() {
  const std::optional<std::string> fileName = shorttest::EnvironmentVariable(DeviceVariable);
  if (!fileName) {
    MakeUnusable(std::string(DeviceVariable) + " is not set: it names the file that describes the device");
  } else if (!LoadFile(*fileName)) {
    MakeUnusable(std::string(DeviceVariable) + ": " + loadError_);
  }
}

Tester& LoadedTester::Ready() {
  if (!environmentRead_) {
    if (!tester_) LoadFromEnvironment();
    StartTrace();
    environmentRead_ = true;  // after what may throw for want of memory: the next call tries again
  }
  return *tester_;
}

void LoadedTester::StartTrace() {
  const std::optional<std::string> fileName = shorttest::EnvironmentVariable(TraceVariable);
  if (!fileName) return;
  const bool append = shorttest::EnvironmentVariable(AppendVariable).value_or("") == "1";
  trace_ = CallTrace::Open(shorttest::PathFromUtf8(*fileName),
                           append ? CallTrace::Start::Appended : CallTrace::Start::Anew);
  if (trace_) return;
  traceError_ = std::string(TraceVariable) + ": " + *fileName + " cannot be opened for writing";
  MakeUnusable(traceError_);
}

void LoadedTester::EndTrace() {
  if (!trace_) return;
  const RelayMatrix& relays = tester_->Relays();
  trace_->Comment("end: " + RelayText(relays.ClosedChannelRelays(), "channel") + ", " +
                  RelayText(relays.ClosedAuxiliaryRelays(), "auxiliary") + ", terminating resistor " +
                  (tester_->TerminatorOn() ? "on" : "off") + ", " + std::to_string(texts_.Outstanding()) +
                  " texts not freed");
  for (int channel = 0; channel < MaxChannels; ++channel) {
    for (int line = 0; line < LineCount; ++line) {
      if (relays.IsClosed(channel / ChannelsPerCard, line, channel % ChannelsPerCard)) {
        trace_->Comment("closed: channel " + std::to_string(channel + 1) + " on line " +
                        std::to_string(line));
      }
    }
  }
  trace_.reset();
}

void LoadedTester::Reset() {
  EndTrace();
  tester_.reset();
  loadError_.clear();
  traceError_.clear();
  environmentRead_ = false;
  time_ = TimeSource();
}

void LoadedTester::Fail(const char* text) noexcept {
  try {
    Ready().SetPendingError(text);
  } catch (const std::exception&) {
    // No memory even for the text: the result alone tells of the failure.
  }
}

char* LoadedTester::ErrorText() noexcept {
  try {
    const std::string* error = Ready().PendingError();
    const std::string text = error != nullptr ? *error : std::string();
    if (trace_) trace_->Call("bus_get_error_msg", text);
    return texts_.HandOut(shorttest::Utf8ToSystemText(text));
  } catch (const std::exception& exception) {
    Fail(exception.what());
    return nullptr;
  }
}

void LoadedTester::FreeMemory(void* memory) noexcept {
  try {
    Tester& tester = Ready();
    if (trace_) trace_->Call("free_mem");
    if (!texts_.TakeBack(memory)) tester.SetPendingError("memory was given back that is not the driver's");
  } catch (const std::exception& exception) {
    Fail(exception.what());
  }
}

void LoadedTester::DeleteError() noexcept {
  try {
    Ready().DeletePendingError();
    if (trace_) trace_->Call("bus_delete_error");
  } catch (const std::exception& exception) {
    Fail(exception.what());
  }
}

}  // namespace simulator
