#include "companion/progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace ptick::companion {

namespace {

using namespace std::chrono_literals;
using Time = std::chrono::steady_clock::time_point;

class RecordedLine final : public StatusLine {
 public:
  explicit RecordedLine(bool is_seen = true) : is_seen_(is_seen) {}

  bool IsSeen() const override { return is_seen_; }
  void Show(std::string_view text) override { shown_.emplace_back(text); }
  void Erase() override { shown_.emplace_back("(erased)"); }

  std::vector<std::string> Take() { return std::exchange(shown_, {}); }

 private:
  bool is_seen_;
  std::vector<std::string> shown_;
};

TEST(ProgressText, SaysWhatIsKnown) {
  struct Row {
    std::uint64_t read;
    std::optional<std::uint64_t> all;
    std::chrono::milliseconds elapsed;
    std::string want;
  };
  const std::vector<Row> rows = {
      {0, std::nullopt, 1s, "0 bytes read"},
      {1'500'000, std::nullopt, 1s, "1.50 MB read"},
      {0, 1000, 2s, "0 bytes of 1.00 kB read, 0 %"},
      {250, 1000, 2s, "250 bytes of 1.00 kB read, 25 %, 6 s left"},
      {250, 1000, 2100ms, "250 bytes of 1.00 kB read, 25 %, 7 s left"},
      {999, 1000, 2s, "999 bytes of 1.00 kB read, 99 %, 1 s left"},
      {1000, 1000, 2s, "1.00 kB of 1.00 kB read, 100 %"},
      {1'200'000'000, 3'400'000'000, 100s, "1.20 GB of 3.40 GB read, 35 %, 3 min 4 s left"},
      // More than was there when it was looked at, and nothing at all.
      {1001, 1000, 2s, "1.00 kB read"},
      {0, 0, 2s, "0 bytes read"},
      {1, UINT64_MAX, 1s, "1 bytes of 18.4 EB read, 0 %, 277777 h 46 min left"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ProgressText(row.read, row.all, row.elapsed), row.want);
  }
}

// A clock that a test turns.
struct Clock {
  std::shared_ptr<Time> now = std::make_shared<Time>(Time() + 1h);

  Progress::Clock Function() const {
    return [now = now] { return *now; };
  }
  void Turn(std::chrono::milliseconds time) const { *now += time; }
};

TEST(Progress, ShowsAfterASecondAndTenTimesASecond) {
  RecordedLine line;
  const Clock clock;
  {
    Progress progress(
        line, [] { return 1000; }, clock.Function());
    progress.Add(100);
    clock.Turn(999ms);
    progress.Add(100);
    EXPECT_EQ(line.Take(), std::vector<std::string>{});
    clock.Turn(1ms);
    progress.Add(50);
    EXPECT_EQ(line.Take(), std::vector<std::string>{"250 bytes of 1.00 kB read, 25 %, 3 s left"});
    clock.Turn(99ms);
    progress.Add(50);
    EXPECT_EQ(line.Take(), std::vector<std::string>{});
    clock.Turn(901ms);
    progress.Add(200);
    EXPECT_EQ(line.Take(), std::vector<std::string>{"500 bytes of 1.00 kB read, 50 %, 2 s left"});
  }
  EXPECT_EQ(line.Take(), std::vector<std::string>{"(erased)"});
}

TEST(Progress, AsksForTheTotalOnceAndLate) {
  RecordedLine line;
  const Clock clock;
  int asked = 0;
  Progress progress(
      line,
      [&asked]() -> std::optional<std::uint64_t> {
        ++asked;
        return std::nullopt;
      },
      clock.Function());
  progress.Add(1);
  EXPECT_EQ(asked, 0);
  for (int i = 0; i < 3; ++i) {
    clock.Turn(2s);
    progress.Add(1);
  }
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(line.Take(),
            (std::vector<std::string>{"2 bytes read", "3 bytes read", "4 bytes read"}));
}

TEST(Progress, ShowsNothingWhereNobodySeesIt) {
  RecordedLine line(false);
  const Clock clock;
  {
    Progress progress(
        line,
        []() -> std::optional<std::uint64_t> {
          ADD_FAILURE() << "asked for the total";
          return std::nullopt;
        },
        clock.Function());
    clock.Turn(1h);
    progress.Add(1);
  }
  EXPECT_EQ(line.Take(), std::vector<std::string>{"(erased)"});
}

TEST(Progress, CountsForSeveralThreads) {
  RecordedLine line;
  const Clock clock;
  Progress progress(
      line, [] { return std::nullopt; }, clock.Function());
  clock.Turn(2s);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&progress] {
      for (int j = 0; j < 10'000; ++j) {
        progress.Add(1);
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  clock.Turn(2s);
  progress.Add(1);
  EXPECT_EQ(line.Take().back(), "40.0 kB read");
}

}  // namespace

}  // namespace ptick::companion
