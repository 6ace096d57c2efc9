#pragma once

#include <cstddef>
#include <memory_resource>

namespace ptick {

/// Memory for tables that may get big. Allocations of 2 MiB and more are mapped with huge pages
/// where the system has them, so that random lookups in a big table miss the TLB less. Whatever is
/// smaller comes from the heap.
///
/// Threads: any.
class LargePages final : public std::pmr::memory_resource {
 public:
  static constexpr std::size_t kPageSize = std::size_t{2} << 20U;

 private:
  void* do_allocate(std::size_t bytes, std::size_t alignment) override;
  void do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) override;
  bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override;
};

}  // namespace ptick
