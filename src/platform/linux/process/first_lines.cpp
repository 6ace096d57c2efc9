#include "platform/linux/process/first_lines.h"

#include <fcntl.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/process/first_line_capture.h"
#include "platform/linux/process/signal_hold.h"
#include "platform/linux/shortage.h"
#include "platform/linux/unique_fd.h"
#include "platform/linux/wait_ready.h"

namespace ptick {

namespace {

using Clock = std::chrono::steady_clock;

// EAGAIN: no more processes.
bool IsLack(int error) { return error == EAGAIN || IsShortage(error); }

// The commands in the order given: those that have been run, some that run, those to come.
class CaptureQueue {
 public:
  CaptureQueue(const std::vector<std::vector<std::string>>& commands, const CaptureLimits& limits)
      : commands_(commands), limits_(limits) {
    results_.lines.resize(commands.size());
  }

  // Signals are held from before a command starts, so that none can end the process between the
  // start and the wait and leave the command running.
  FirstLines Run() {
    const UniqueFd input(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (!input.IsOpen()) {
      results_.error = errno;
      return std::move(results_);
    }
    SignalHold hold;
    StartMore(input.Get());
    while (!running_.empty()) {
      Wait(hold);
      Collect();
      StartMore(input.Get());
    }
    return std::move(results_);
  }

 private:
  struct Running {
    std::size_t number;  // of the command
    FirstLineCapture capture;
  };

  void StartMore(int input) {
    while (next_ < commands_.size() && running_.size() < limits_.at_once) {
      FirstLineCapture capture(commands_[next_], input, limits_.time_to_first_line);
      if (capture.Error() == 0) {
        running_.push_back({.number = next_, .capture = std::move(capture)});
      } else if (IsLack(capture.Error())) {
        if (!running_.empty()) {
          return;  // those that run will give back what it needs
        }
        NoteError(capture.Error());
      }
      ++next_;
    }
  }

  // Waits until a command writes or ends, its time is up, or a signal comes, and attends to it.
  void Wait(SignalHold& hold) {
    const Clock::time_point start = Clock::now();
    AwaitEvent(hold.Descriptor());
    const std::chrono::nanoseconds waited = Clock::now() - start;
    // Before the commands are looked at: one that ends after this wakes the next wait.
    LetSignalsIn(hold);
    for (Running& running : running_) {
      if (!running.capture.IsOver()) {
        running.capture.Attend();
        running.capture.CountWaiting(waited);
      }
    }
  }

  void AwaitEvent(int signals) const {
    std::vector<pollfd> sources = {{.fd = signals, .events = POLLIN, .revents = 0}};
    std::chrono::nanoseconds time_left = limits_.time_to_first_line;
    for (const Running& running : running_) {
      sources.push_back({.fd = running.capture.OutputDescriptor(), .events = POLLIN, .revents = 0});
      time_left = std::min(time_left, running.capture.TimeLeft());
    }
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(time_left).count();
    WaitReady(sources, static_cast<int>(milliseconds));
  }

  // A signal that ends this process ends the commands first.
  void LetSignalsIn(SignalHold& hold) {
    while (const std::optional<int> signal = hold.Take()) {
      if (SignalHold::EndsTheProcess(*signal)) {
        for (Running& running : running_) {
          running.capture.Kill();
        }
      }
      SignalHold::Deliver(*signal);
    }
  }

  void Collect() {
    for (const Running& running : running_) {
      if (running.capture.IsOver()) {
        results_.lines[running.number] = running.capture.Line();
        NoteError(running.capture.Error());
      }
    }
    std::erase_if(running_, [](const Running& running) { return running.capture.IsOver(); });
  }

  void NoteError(int error) { results_.error = results_.error != 0 ? results_.error : error; }

  const std::vector<std::vector<std::string>>& commands_;
  const CaptureLimits& limits_;
  FirstLines results_;
  std::vector<Running> running_;
  std::size_t next_ = 0;  // the first command that was not started
};

}  // namespace

FirstLines CaptureFirstLines(const std::vector<std::vector<std::string>>& commands,
                             const CaptureLimits& limits) {
  return CaptureQueue(commands, limits).Run();
}

}  // namespace ptick
