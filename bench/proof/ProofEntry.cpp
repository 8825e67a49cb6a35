#include <string>

#include "bench/proof/CheckStand.h"
#include "bench/proof/ProofModule.h"
#include "text/FailureText.h"

void kxProofCheck(const TShortTestData& expectation, const kxbench::proof::DeviceModel& device,
                  kxbench::proof::CheckOutcome& outcome) {
  const std::string failure = shorttest::FailureText([&] {
    static kxbench::proof::CheckStand stand;
    outcome = stand.Check(expectation, device);
  });
  if (failure.empty()) return;
  outcome = {};
  outcome.failure = failure;
}
