#include <exception>
#include <new>

#include "bench/learning/LearnModule.h"
#include "bench/learning/LearnRun.h"

void kxLearn(const kxbench::LearnRequest& request, kxbench::LearnSummary& summary) {
  summary = kxbench::LearnSummary();
  try {
    kxbench::LearnFile(request, summary);
  } catch (const kxbench::DamagedExpectation& error) {
    summary.end = kxbench::LearnEnd::Damaged;
    summary.failure = error.what();
  } catch (const std::bad_alloc&) {
    summary.failure = "out of memory";  // short enough to need none
  } catch (const std::exception& error) {
    summary.failure = error.what();
  } catch (...) {
    summary.failure = "an exception of an unknown kind";
  }
}
