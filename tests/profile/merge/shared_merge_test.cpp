#include "profile/merge/shared_merge.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <memory_resource>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "profile/merge/profile_merge.h"
#include "records/line_blocks.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::AddLines;
using testing::LinesOf;

/// Hands a text out in blocks of so many bytes or a few more.
class TextBlocks final : public MergeSource {
 public:
  TextBlocks(std::string_view text, std::size_t size) : text_(text), size_(size) {}

  bool Begin(MergeText& text) override {
    const std::size_t end = size_ < text_.size() ? text_.find('\n', size_) + 1 : text_.size();
    const std::string_view next = text_.substr(0, end);
    text_.remove_prefix(end);
    text.memory = ByteBuffer(next.size() + kBlockPadding);
    std::memset(text.memory.data() + next.copy(text.memory.data(), next.size()), 0, kBlockPadding);
    text.block = {text.memory.data(), next.size()};
    text.size = next.size();
    return !next.empty();
  }

 private:
  std::string_view text_;
  std::size_t size_;
};

// Trace lines of so many programs, two in a row of each, the second time in another order.
std::string LinesOfPrograms(int programs) {
  std::string text;
  for (int i = 0; i < 2 * programs; ++i) {
    const int program = i < programs ? i : i * 7 % programs;
    const std::string start = "PROFILE:trace\tPROGRAM." + std::to_string(program) + "\t";
    text += start + "7\t1\n" + start + "8\t" + std::to_string(i) + "\n";
  }
  return text;
}

TEST(SharedMerge, MergesLikeOneThread) {
  struct Row {
    std::string name;
    std::string lines;
    std::size_t block_size;
  };
  const std::string odd =
      "PROFILE:trace\tA\t1\t2\nPROFILE:trace\tA\t1\t02\nPROFILE:trace\tA\t1\t1.5\n"
      "PROFILE:starttime\t9\nPROFILE:trace\t\t1\t2\nno line\nPROFILE:trace\tA\tB\t1\t2\n";
  const std::vector<Row> rows = {
      {"no lines", "", 1},
      {"one line", "PROFILE:ticks\t1\n", 1},
      {"a program", LinesOfPrograms(1), 1},
      {"odd lines", odd + LinesOfPrograms(50) + odd, 30},
      {"many lots", LinesOfPrograms(2000), 40},
      {"more programs than a thread knows", LinesOfPrograms(12000), 1000},
  };
  for (const Row& row : rows) {
    const std::string first = "PROFILE:ticks\t1\n";
    ProfileMerge alone;
    AddLines(alone, first + row.lines);
    const std::string want = LinesOf(alone);
    for (const unsigned threads : {1U, 2U, 3U, 8U}) {
      for (const std::size_t names : {0U, 1U, 8192U}) {
        ThreadPlan plan;
        plan.threads = threads;
        plan.merge_names = names;
        TextBlocks blocks(row.lines, row.block_size);
        ProfileMerge merge;
        AddLines(merge, first);
        merge.AddBlocks(blocks, plan);
        EXPECT_TRUE(LinesOf(merge) == want)
            << row.name << ", " << threads << " threads, " << names << " names";
      }
    }
  }
}

/// Has no memory from one allocation on.
class ScarceMemory final : public std::pmr::memory_resource {
 public:
  explicit ScarceMemory(int allocations) : left_(allocations) {}

 private:
  void* do_allocate(std::size_t bytes, std::size_t alignment) override {
    if (left_-- <= 0) {
      throw std::bad_alloc();
    }
    return std::pmr::new_delete_resource()->allocate(bytes, alignment);
  }
  void do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) override {
    std::pmr::new_delete_resource()->deallocate(memory, bytes, alignment);
  }
  bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
    return this == &other;
  }

  std::atomic<int> left_;
};

TEST(SharedMerge, ThrowsWhereThereIsNoMemory) {
  const std::string lines = LinesOfPrograms(2000);
  int failures = 0;
  for (int allocations = 1; allocations < 80; ++allocations) {
    ScarceMemory memory(allocations);
    ThreadPlan plan;
    plan.threads = 3;
    TextBlocks blocks(lines, 100);
    try {
      ProfileMerge merge(&memory);
      merge.AddBlocks(blocks, plan);
    } catch (const std::bad_alloc&) {
      ++failures;
    }
  }
  EXPECT_GT(failures, 10);
  EXPECT_LT(failures, 79) << "with enough memory it is done";
}

}  // namespace

}  // namespace ptick
