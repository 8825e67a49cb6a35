#include "bench/learning/MeasureModule.h"
#include "bench/learning/MeasureRun.h"
#include "text/FailureText.h"

void kxMeasure(const std::string& file, kxbench::MeasureSummary& summary) {
  summary = kxbench::MeasureSummary();
  summary.failure = shorttest::FailureText([&] { kxbench::MeasureDevice(file, summary); });
}
