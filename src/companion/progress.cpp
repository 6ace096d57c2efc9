#include "companion/progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "companion/number_text.h"

namespace ptick::companion {

namespace {

constexpr auto kBeforeFirst = std::chrono::seconds(1);
constexpr auto kBetween = std::chrono::milliseconds(100);

// By the time that each byte has taken so far. A begun second counts as one.
std::uint64_t SecondsLeft(std::uint64_t bytes_read, std::uint64_t bytes_of_all,
                          std::chrono::steady_clock::duration elapsed) {
  const double seconds = std::chrono::duration<double>(elapsed).count();
  const double left =
      seconds * (static_cast<double>(bytes_of_all - bytes_read) / static_cast<double>(bytes_read));
  constexpr double kYears = 1e9;
  return static_cast<std::uint64_t>(std::ceil(std::min(left, kYears)));
}

}  // namespace

std::string ProgressText(std::uint64_t bytes_read, std::optional<std::uint64_t> bytes_of_all,
                         std::chrono::steady_clock::duration elapsed) {
  if (!bytes_of_all || bytes_read > *bytes_of_all || *bytes_of_all == 0) {
    return ByteCount(bytes_read) + " read";
  }
  const double share = static_cast<double>(bytes_read) / static_cast<double>(*bytes_of_all);
  std::string text = fmt::format("{} of {} read, {} %", ByteCount(bytes_read),
                                 ByteCount(*bytes_of_all), static_cast<int>(share * 100));
  if (bytes_read > 0 && bytes_read < *bytes_of_all) {
    text += fmt::format(", {} left", Duration(SecondsLeft(bytes_read, *bytes_of_all, elapsed)));
  }
  return text;
}

Progress::Progress(StatusLine& line, Total total, Clock clock)
    : line_(line),
      total_(std::move(total)),
      clock_(std::move(clock)),
      is_seen_(line.IsSeen()),
      begin_(clock_()),
      next_(begin_ + kBeforeFirst) {}

Progress::~Progress() { line_.Erase(); }

void Progress::Add(std::uint64_t bytes) {
  bytes_read_.fetch_add(bytes, std::memory_order_relaxed);
  if (!is_seen_) {
    return;
  }
  // While one thread shows the line, the others go on.
  const std::unique_lock<std::mutex> lock(showing_, std::try_to_lock);
  if (lock.owns_lock()) {
    Show(clock_());
  }
}

void Progress::Show(std::chrono::steady_clock::time_point now) {
  if (now < next_) {
    return;
  }
  if (!is_total_known_) {
    bytes_of_all_ = total_();
    is_total_known_ = true;
  }
  line_.Show(
      ProgressText(bytes_read_.load(std::memory_order_relaxed), bytes_of_all_, now - begin_));
  next_ = now + kBetween;
}

}  // namespace ptick::companion
