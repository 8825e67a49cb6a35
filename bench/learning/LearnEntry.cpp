#include "bench/learning/LearnModule.h"
#include "bench/learning/LearnRun.h"
#include "text/FailureText.h"

void kxLearn(const kxbench::LearnRequest& request, kxbench::LearnSummary& summary) {
  summary = kxbench::LearnSummary();
  summary.failure = shorttest::FailureText([&] {
    try {
      kxbench::LearnFile(request, summary);
    } catch (const kxbench::DamagedExpectation&) {
      summary.end = kxbench::LearnEnd::Damaged;
      throw;
    }
  });
}
