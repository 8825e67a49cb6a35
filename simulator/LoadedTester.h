#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/CallTrace.h"
#include "simulator/DeviceDescription.h"
#include "simulator/ErrorTexts.h"
#include "simulator/Tester.h"
#include "simulator/TimeSource.h"

namespace simulator {

/// What the driver library holds while it is loaded: the tester with its device, the trace of the calls, the
/// texts handed out, the time.
///
/// The first driver call reads the environment: BRENMOR_DEVICE names the device description (unless a device
/// was loaded before), BRENMOR_TRACE the file for the trace, which BRENMOR_TRACE_APPEND=1 appends to what it
/// holds. If either file is unusable, every call fails with the reason.
class LoadedTester {
 public:
  /// The one of this library.
  static LoadedTester& Instance();

  ~LoadedTester();

  /// Loads a device: relays open, no error, no call counted. If the description is unusable, LoadError tells
  /// why, and so does every driver call. Return whether it was usable.
  bool LoadFile(const std::string& fileName);
  bool LoadText(std::string_view text);

  /// Why the last load failed; empty when it did not.
  const std::string& LoadError() const { return loadError_; }

  /// Back to the state after loading the library: the next driver call reads the environment. Texts handed
  /// out stay the caller's.
  void Reset();

  /// Runs one driver call and traces it. `action` takes the tester and returns the result. Lets no exception
  /// out: what the tester does not catch itself becomes its pending error and `failed` the result.
  template <typename Result, typename Action>
  Result Call(std::string_view name, std::initializer_list<std::int32_t> arguments, Result failed,
              Action&& action) noexcept {
    Result result = failed;
    try {
      result = action(Ready());
      if (trace_) trace_->Call(name, arguments, result);
    } catch (const std::exception& exception) {
      Fail(exception.what());
    }
    return result;
  }

  // The driver's functions that do not answer with a number.
  char* ErrorText() noexcept;
  void FreeMemory(void* memory) noexcept;
  void DeleteError() noexcept;

  /// The tester; null before the first load or call.
  const Tester* CurrentTester() const { return tester_ ? &*tester_ : nullptr; }

  /// The tester, loaded from the environment if need be.
  Tester& Ready();

  TimeSource& Time() { return time_; }
  std::size_t OutstandingTexts() const { return texts_.Outstanding(); }

 private:
  template <typename Read>
  bool Load(Read&& read);
  void MakeUnusable(const std::string& cause);
  void LoadFromEnvironment();
  void StartTrace();
  void EndTrace();
  void Fail(const char* text) noexcept;

  TimeSource time_;
  ErrorTexts texts_;
  std::optional<Tester> tester_;
  std::optional<CallTrace> trace_;
  std::string loadError_;
  std::string traceError_;
  bool environmentRead_ = false;
};

}  // namespace simulator
