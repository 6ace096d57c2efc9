#include "platform/linux/process/first_lines.h"

#include <poll.h>
#include <sched.h>

#include <algorithm>
#include <deque>

#include "platform/linux/process/captured_command.h"
#include "platform/linux/process/signal_hold.h"

namespace ptick {
namespace {

using Clock = std::chrono::steady_clock;

// How far commands may run ahead of the oldest one that has not ended.
constexpr std::size_t kWindow = 64;

class CaptureRun {
 public:
  CaptureRun(const std::vector<std::vector<std::string>>& commands, const CaptureLimits& limits)
      : commands_(commands), limits_(limits) {}

  /// Calls `done` for every command.
  void Run(const std::function<void(std::string_view)>& done) {
    for (std::size_t i = 0; i < commands_.size(); ++i) {
      if (timeouts_in_a_row_ >= limits_.timeouts_in_a_row) {
        window_.clear();
        done({});
        continue;
      }
      AwaitFirst();
      timeouts_in_a_row_ = window_.front().HasTimedOut() ? timeouts_in_a_row_ + 1 : 0;
      done(window_.front().FirstLine());
      window_.pop_front();
    }
  }

 private:
  // Signals are held from before a command starts, so that none can end the process between the
  // start and the wait and leave the command behind.
  void AwaitFirst() {
    SignalHold hold;
    StartMore();
    while (window_.front().IsRunning()) {
      Wait(hold);
      // Once it has ended it is looked at first: it may be the timeout after which nothing is run.
      if (window_.front().IsRunning()) {
        StartMore();
      }
    }
  }

  void StartMore() {
    auto running =
        std::count_if(window_.begin(), window_.end(),
                      [](const CapturedCommand& command) { return command.IsRunning(); });
    const auto at_once = static_cast<std::ptrdiff_t>(std::max<std::size_t>(limits_.at_once, 1));
    while (running < at_once && window_.size() < kWindow && next_ < commands_.size()) {
      window_.emplace_back(commands_[next_++], limits_.time_per_command);
      running += window_.back().IsRunning() ? 1 : 0;
    }
  }

  // Waits until a command writes or ends, or its time is up, and attends to it.
  void Wait(SignalHold& hold) {
    // A command may have ended before its signal was held back.
    if (AttendAll()) {
      return;
    }
    const Clock::time_point start = Clock::now();
    Poll(hold.Descriptor());
    const std::chrono::nanoseconds waited = Clock::now() - start;
    AttendAll();
    for (CapturedCommand& command : window_) {
      command.CountWaiting(waited);
    }
    while (const std::optional<int> signal = hold.Take()) {
      if (SignalHold::EndsTheProcess(*signal)) {
        for (CapturedCommand& command : window_) {
          command.Kill();
        }
      }
      SignalHold::Deliver(*signal);
    }
  }

  // Whether a command ended.
  bool AttendAll() {
    bool ended = false;
    for (CapturedCommand& command : window_) {
      if (command.IsRunning()) {
        command.Attend();
        ended = ended || !command.IsRunning();
      }
    }
    return ended;
  }

  void Poll(int signals) const {
    std::vector<pollfd> sources = {{.fd = signals, .events = POLLIN, .revents = 0}};
    std::chrono::nanoseconds time_left = limits_.time_per_command;
    for (const CapturedCommand& command : window_) {
      if (command.IsRunning()) {
        sources.push_back({.fd = command.OutputDescriptor(), .events = POLLIN, .revents = 0});
        time_left = std::min(time_left, command.TimeLeft());
      }
    }
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(time_left).count();
    ::poll(sources.data(), sources.size(), static_cast<int>(milliseconds));
  }

  const std::vector<std::vector<std::string>>& commands_;
  const CaptureLimits& limits_;
  std::deque<CapturedCommand> window_;  // started and not handed over yet, oldest first
  std::size_t next_ = 0;                // the first command that was not started
  int timeouts_in_a_row_ = 0;
};

}  // namespace

std::size_t CountCores() {
  cpu_set_t cores = {};
  if (::sched_getaffinity(0, sizeof(cores), &cores) != 0) {
    return 1;
  }
  return static_cast<std::size_t>(std::max(CPU_COUNT(&cores), 1));
}

void CaptureOutputs(const std::vector<std::vector<std::string>>& commands,
                    const std::function<void(std::string_view)>& done,
                    const CaptureLimits& limits) {
  CaptureRun(commands, limits).Run(done);
}

}  // namespace ptick
