#include "bench/proof/SelfTestModule.h"
#include "bench/proof/SelfTestRun.h"
#include "text/FailureText.h"

void kxSelfTest(const kxbench::SelfTestRequest& request, kxbench::SelfTestSummary& summary) {
  summary = kxbench::SelfTestSummary();
  summary.failure = shorttest::FailureText([&] { kxbench::TestTester(request, summary); });
}
