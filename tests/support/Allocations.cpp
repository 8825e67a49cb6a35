#include "tests/support/Allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::ptrdiff_t live = 0;
int untilFailure = 0;  // 0: none fails
bool lasting = false;
bool happened = false;

}  // namespace

void* operator new(std::size_t size) {
  if (untilFailure > 0 && --untilFailure == 0) {
    happened = true;
    if (lasting) untilFailure = 1;
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  ++live;
  return memory;
}

void operator delete(void* memory) noexcept {
  if (memory != nullptr) --live;
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }

namespace shorttest::testkit {

std::ptrdiff_t LiveAllocations() { return live; }

FailingAllocation::FailingAllocation(int n, Shortage shortage) {
  happened = false;
  lasting = shortage == Shortage::Lasting;
  untilFailure = n;
}

FailingAllocation::~FailingAllocation() { untilFailure = 0; }

bool FailingAllocation::Happened() { return happened; }

}  // namespace shorttest::testkit
