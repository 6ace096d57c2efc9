#include "parallel/piece_work.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace ptick {

namespace {

constexpr std::size_t kNever = ~std::size_t{0};

/// Pieces that keep a record of what happens to them, and fail where they are told to.
class RecordedWork final : public PieceWork {
 public:
  RecordedWork(std::size_t count, unsigned thread_count)
      : count_(count), slots_(SlotsFor(thread_count), kNever) {}

  bool Begin(std::size_t slot) override {
    EXPECT_FALSE(beginning_.exchange(true));
    EXPECT_EQ(slots_.at(slot), kNever) << "the slot is free";
    if (begun_ == begin_fails_at) {
      throw std::runtime_error("begin");
    }
    const bool is_left = begun_ < count_;
    if (is_left) {
      slots_[slot] = begun_++;
    }
    beginning_ = false;
    return is_left;
  }

  void Do(std::size_t slot, unsigned thread) override {
    const std::size_t piece = slots_[slot];
    if (piece == do_fails_at) {
      throw std::runtime_error("do");
    }
    if (piece % 3 == 0) {  // others overtake it
      std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    const std::scoped_lock lock(mutex_);
    done.insert(piece);
    threads.insert(thread);
  }

  bool Finish(std::size_t slot) override {
    EXPECT_EQ(std::this_thread::get_id(), caller_);
    const std::size_t piece = slots_[slot];
    if (piece == finish_fails_at) {
      throw std::runtime_error("finish");
    }
    {
      const std::scoped_lock lock(mutex_);
      EXPECT_TRUE(done.contains(piece));
    }
    finished.push_back(piece);
    slots_[slot] = kNever;
    return piece != last_wanted;
  }

  std::size_t begin_fails_at = kNever;
  std::size_t do_fails_at = kNever;
  std::size_t finish_fails_at = kNever;
  std::size_t last_wanted = kNever;

  std::set<std::size_t> done;
  std::set<unsigned> threads;
  std::vector<std::size_t> finished;

 private:
  std::size_t count_;
  std::vector<std::size_t> slots_;
  std::size_t begun_ = 0;
  std::atomic<bool> beginning_ = false;
  std::mutex mutex_;
  std::thread::id caller_ = std::this_thread::get_id();
};

std::vector<std::size_t> NumbersBelow(std::size_t count) {
  std::vector<std::size_t> numbers(count);
  for (std::size_t i = 0; i < count; ++i) {
    numbers[i] = i;
  }
  return numbers;
}

TEST(PieceWork, DoesAllPiecesAndFinishesThemInOrder) {
  for (const unsigned threads : {1U, 2U, 3U, 8U}) {
    for (const std::size_t count : {0U, 1U, 2U, 7U, 100U}) {
      RecordedWork work(count, threads);
      DoInOrder(work, threads);
      EXPECT_EQ(work.done.size(), count) << threads << " threads";
      EXPECT_EQ(work.finished, NumbersBelow(count)) << threads << " threads";
      EXPECT_LE(work.threads.size(), threads);
    }
  }
}

TEST(PieceWork, DoesWithAnyNumberOfSlots) {
  for (const std::size_t slots : {1U, 2U, 3U, 50U}) {
    RecordedWork work(100, 50);
    DoInOrder(work, 3, slots);
    EXPECT_EQ(work.finished, NumbersBelow(100)) << slots << " slots";
  }
}

TEST(PieceWork, LeavesOneThreadAlone) {
  RecordedWork work(20, 1);
  DoInOrder(work, 1);
  EXPECT_EQ(work.threads, std::set<unsigned>{0});
}

TEST(PieceWork, UsesMoreThreadsThanOne) {
  RecordedWork work(200, 3);
  DoInOrder(work, 3);
  EXPECT_GT(work.threads.size(), 1U);
}

TEST(PieceWork, EndsWhereNoFurtherPieceIsWanted) {
  for (const unsigned threads : {1U, 2U, 3U, 8U}) {
    RecordedWork work(1000, threads);
    work.last_wanted = 5;
    DoInOrder(work, threads);
    EXPECT_EQ(work.finished, NumbersBelow(6)) << threads << " threads";
    EXPECT_LE(work.done.size(), 6 + SlotsFor(threads)) << "few are on their way";
  }
}

TEST(PieceWork, ThrowsWhatAPieceThrows) {
  struct Row {
    std::size_t RecordedWork::*place;
    const char* want;
  };
  const std::vector<Row> rows = {{&RecordedWork::begin_fails_at, "begin"},
                                 {&RecordedWork::do_fails_at, "do"},
                                 {&RecordedWork::finish_fails_at, "finish"}};
  for (const Row& row : rows) {
    for (const unsigned threads : {1U, 2U, 3U, 8U}) {
      for (const std::size_t piece : {0U, 1U, 30U, 99U}) {
        RecordedWork work(100, threads);
        work.*row.place = piece;
        std::string thrown;
        try {
          DoInOrder(work, threads);
        } catch (const std::runtime_error& error) {
          thrown = error.what();
        }
        EXPECT_EQ(thrown, row.want) << threads << " threads, piece " << piece;
        EXPECT_LE(work.finished.size(), piece) << row.want;
      }
    }
  }
}

TEST(PieceWork, DoesEachNumberOnce) {
  for (const unsigned threads : {1U, 2U, 3U, 8U}) {
    std::vector<std::atomic<int>> calls(500);
    DoEach(calls.size(), threads, [&calls](std::size_t n) { ++calls.at(n); });
    for (const std::atomic<int>& count : calls) {
      ASSERT_EQ(count, 1) << threads << " threads";
    }
  }
}

}  // namespace

}  // namespace ptick
