#include "platform/linux/large_pages.h"

#include <sys/mman.h>

#include <new>

namespace ptick {

namespace {

std::size_t WholePages(std::size_t bytes) {
  return (bytes + LargePages::kPageSize - 1) / LargePages::kPageSize * LargePages::kPageSize;
}

}  // namespace

void* LargePages::do_allocate(std::size_t bytes, std::size_t alignment) {
  if (bytes < kPageSize) {
    return std::pmr::new_delete_resource()->allocate(bytes, alignment);
  }
  void* const memory = ::mmap(nullptr, WholePages(bytes), PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) {  // NOLINT(*-cstyle-cast,*-no-int-to-ptr): the system's own macro
    throw std::bad_alloc();
  }
  ::madvise(memory, WholePages(bytes), MADV_HUGEPAGE);  // a wish: small pages do as well
  return memory;
}

void LargePages::do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) {
  if (bytes < kPageSize) {
    std::pmr::new_delete_resource()->deallocate(memory, bytes, alignment);
  } else {
    ::munmap(memory, WholePages(bytes));
  }
}

bool LargePages::do_is_equal(const std::pmr::memory_resource& other) const noexcept {
  return this == &other;
}

}  // namespace ptick
