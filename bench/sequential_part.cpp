// sequential_part ARGUMENT...: runs ptick with these arguments on one thread, sharing all that
// several would share, and prints on standard error what part of the time they could not share,
// with what that predicts. Standard output is the report.
//
// It brings its own DoInOrder, which does one piece after the other and looks at the clock.

#include <chrono>
#include <cstdio>
#include <functional>

#include "parallel/piece_work.h"
#include "platform/linux/linux_platform.h"
#include "ptick/driver.h"

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr unsigned kThreads = 8;

Seconds in_order{};  // NOLINT(*-avoid-non-const-global-variables): written by DoInOrder alone
Seconds shared{};    // NOLINT(*-avoid-non-const-global-variables): the same

// Adds the time that a call takes.
template <typename Call>
auto Timed(Seconds& sum, const Call& call) {
  const Clock::time_point begin = Clock::now();
  const auto result = call();
  sum += Clock::now() - begin;
  return result;
}

}  // namespace

namespace ptick {

// Each thread gets its pieces in turn.
void DoInOrder(PieceWork& work, unsigned threads) {
  bool goes_on = true;
  for (unsigned piece = 0; goes_on; ++piece) {
    goes_on = Timed(in_order, [&] { return work.Begin(0); });
    if (goes_on) {
      Timed(shared, [&] { return work.Do(0, piece % threads), true; });
      goes_on = Timed(in_order, [&] { return work.Finish(0); });
    }
  }
}

void DoInOrder(PieceWork& work, unsigned threads, std::size_t /*slots*/) {
  DoInOrder(work, threads);
}

void DoEach(std::size_t count, unsigned /*threads*/, const std::function<void(std::size_t)>& work) {
  for (std::size_t n = 0; n < count; ++n) {
    Timed(shared, [&] { return work(n), true; });
  }
}

}  // namespace ptick

int main(int argc, char** argv) {
  const Clock::time_point begin = Clock::now();
  ptick::LinuxPlatform platform(argc, argv);
  const int status = ptick::RunPtick(platform, {.threads = kThreads});
  const Seconds all = Clock::now() - begin;
  const Seconds alone = all - in_order - shared;
  std::fprintf(stderr, "all %.3f s: alone %.3f, in order %.3f, shared %.3f\n", all.count(),
               alone.count(), in_order.count(), shared.count());
  for (const int threads : {2, 8, 32}) {
    // What is done in order is done by one thread at a time, but beside what is shared.
    const Seconds each = (in_order + shared) / threads;
    const Seconds predicted = alone + (each < in_order ? in_order : each);
    std::fprintf(stderr, "%d threads: x %.2f\n", threads, predicted / all);
  }
  return status;
}
