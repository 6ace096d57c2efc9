// Takes the place of the allocation functions of all tests.

#include "companion/support/failing_memory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

namespace ptick::companion::testing {

namespace {

constexpr long kUnlimited = std::numeric_limits<long>::max();
std::atomic<long> g_allocations_left = kUnlimited;

}  // namespace

void FailAllocationsFrom(long number) { g_allocations_left = number - 1; }

bool StopFailingAllocations() { return g_allocations_left.exchange(kUnlimited) < 0; }

void* Allocate(std::size_t size) {
  if (g_allocations_left.fetch_sub(1, std::memory_order_relaxed) <= 0) {
    return nullptr;
  }
  return std::malloc(size == 0 ? 1 : size);  // NOLINT(*-no-malloc)
}

}  // namespace ptick::companion::testing

// NOLINTBEGIN(*-no-malloc,readability-inconsistent-declaration-parameter-name)
void* operator new(std::size_t size) {
  if (void* block = ptick::companion::testing::Allocate(size)) {
    return block;
  }
  throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return ptick::companion::testing::Allocate(size);
}

void* operator new[](std::size_t size) { return operator new(size); }

void operator delete(void* block) noexcept { std::free(block); }

void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }

void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept { std::free(block); }

void operator delete[](void* block) noexcept { std::free(block); }

void operator delete[](void* block, std::size_t /*size*/) noexcept { std::free(block); }
// NOLINTEND(*-no-malloc,readability-inconsistent-declaration-parameter-name)
