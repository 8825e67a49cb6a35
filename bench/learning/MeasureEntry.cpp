#include <exception>

#include "bench/learning/MeasureModule.h"
#include "bench/learning/MeasureRun.h"

void kxMeasure(const std::string& file, kxbench::MeasureSummary& summary) {
  summary = kxbench::MeasureSummary();
  try {
    kxbench::MeasureDevice(file, summary);
  } catch (const std::exception& error) {
    summary.failure = error.what();
  } catch (...) {
    summary.failure = "an exception of an unknown kind";
  }
}
