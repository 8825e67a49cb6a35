#include <exception>

#include "bench/learning/LearnModule.h"
#include "bench/learning/LearnRun.h"

void kxLearn(const kxbench::LearnRequest& request, kxbench::LearnSummary& summary) {
  summary = kxbench::LearnSummary();
  try {
    kxbench::LearnFile(request, summary);
  } catch (const kxbench::DamagedExpectation& error) {
    summary.end = kxbench::LearnEnd::Damaged;
    summary.failure = error.what();
  } catch (const std::exception& error) {
    summary.failure = error.what();
  } catch (...) {
    summary.failure = "an exception of an unknown kind";
  }
}
