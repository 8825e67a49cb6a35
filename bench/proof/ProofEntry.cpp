#include <exception>

#include "bench/proof/CheckStand.h"
#include "bench/proof/ProofModule.h"

void kxProofCheck(const TShortTestData& expectation, const kxbench::proof::DeviceModel& device,
                  kxbench::proof::CheckOutcome& outcome) {
  try {
    static kxbench::proof::CheckStand stand;
    outcome = stand.Check(expectation, device);
  } catch (const std::exception& error) {
    outcome = {};
    outcome.failure = error.what();
  }
}
