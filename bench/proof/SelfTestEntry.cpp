#include <exception>
#include <new>

#include "bench/proof/SelfTestModule.h"
#include "bench/proof/SelfTestRun.h"

void kxSelfTest(const kxbench::SelfTestRequest& request, kxbench::SelfTestSummary& summary) {
  summary = kxbench::SelfTestSummary();
  try {
    kxbench::TestTester(request, summary);
  } catch (const std::bad_alloc&) {
    summary.failure = "out of memory";  // short enough to need none
  } catch (const std::exception& error) {
    summary.failure = error.what();
  } catch (...) {
    summary.failure = "an exception of an unknown kind";
  }
}
