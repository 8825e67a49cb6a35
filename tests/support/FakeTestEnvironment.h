#pragma once

#include <stdexcept>

#include "framework/Kxcommandinterfaces.h"
#include "tests/support/CallLog.h"

namespace shorttest::testkit {

/// The host's running test; the log gets "cancel test". It does not become TestEnvironment() by itself.
class FakeTestEnvironment : public ITestEnvironment {
 public:
  explicit FakeTestEnvironment(CallLog& log) : log_(log) {}
  virtual ~FakeTestEnvironment() = default;

  int Cancels() const { return cancels_; }
  void ThrowOnCancel() { throws_ = true; }

  int QueryInterface(const char* /*name*/, void** object) override {
    *object = nullptr;
    return 1;
  }
  int AddRef() override { return 1; }
  int Release() override { return 1; }
  void CancelTest() override {
    ++cancels_;
    log_.Add("cancel test");
    if (throws_) throw std::runtime_error("the host failed");
  }

 private:
  CallLog& log_;
  int cancels_ = 0;
  bool throws_ = false;
};

}  // namespace shorttest::testkit
