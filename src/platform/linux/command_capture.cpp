#include "platform/linux/command_capture.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <deque>
#include <optional>
#include <thread>
#include <utility>

#include "platform/linux/child_process.h"
#include "platform/linux/unique_fd.h"

namespace ptick {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kLongestLine = 64 * 1024;

/// A command from its start to its end; one that could not be started has ended at once.
class CapturedCommand {
 public:
  CapturedCommand(const std::vector<std::string>& words, Clock::time_point deadline);

  bool Ended() const { return !child_; }
  bool Late() const { return late_; }
  int Descriptor() const { return output_.Get(); }
  Clock::time_point Deadline() const { return deadline_; }

  /// Reads what is there; at the end of the output the command has ended.
  void Read();
  /// Ends a command whose time is up.
  void GiveUp();

  std::string_view FirstLine() const {
    return late_ && !line_complete_ ? std::string_view() : std::string_view(line_);
  }

 private:
  void End();
  void Take(std::string_view text);

  std::optional<pid_t> child_;
  UniqueFd output_;
  Clock::time_point deadline_;
  std::string line_;
  bool line_complete_ = false;
  bool late_ = false;
};

CapturedCommand::CapturedCommand(const std::vector<std::string>& words, Clock::time_point deadline)
    : deadline_(deadline) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    return;
  }
  output_ = UniqueFd(ends[0]);
  const UniqueFd write_end(ends[1]);
  ::fcntl(write_end.Get(), F_SETFL, 0);  // the command expects to write as to any pipe
  const UniqueFd nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  child_ = StartChild(words, {nothing.Get(), write_end.Get(), write_end.Get()}, ChildGroup::kOwn);
}

void CapturedCommand::Read() {
  std::array<char, 4096> block;  // NOLINT(*-member-init): filled by read
  const ssize_t size = ::read(output_.Get(), block.data(), block.size());
  if (size > 0) {
    Take({block.data(), static_cast<std::size_t>(size)});
  } else if (size == 0 || (errno != EAGAIN && errno != EINTR)) {
    End();
  }
}

void CapturedCommand::Take(std::string_view text) {
  if (line_complete_) {
    return;
  }
  const std::size_t line_end = text.find('\n');
  line_complete_ = line_end != std::string_view::npos;
  const std::size_t room = kLongestLine - line_.size();
  line_.append(text.substr(0, std::min(line_end, room)));
}

void CapturedCommand::GiveUp() {
  late_ = true;
  End();
}

// A command that has closed its output, or is late, is not waited for: it has nothing more to say.
void CapturedCommand::End() {
  ::kill(-*child_, SIGKILL);
  WaitForChild(*std::exchange(child_, std::nullopt));
  output_.Close();
}

/// Runs commands side by side and keeps them in order.
class CaptureQueue {
 public:
  CaptureQueue(const std::vector<std::vector<std::string>>& commands,
               const std::function<void(std::string_view)>& done, const CaptureLimits& limits)
      : commands_(commands), done_(done), limits_(limits) {}

  void Run() {
    while (next_ < commands_.size() || !started_.empty()) {
      StartMore();
      HandOut();
      WaitForOutput();
    }
  }

 private:
  // So many results may wait for an earlier command to end.
  static constexpr std::size_t kMostStarted = 64;

  void StartMore();
  void HandOut();
  void WaitForOutput();

  const std::vector<std::vector<std::string>>& commands_;
  const std::function<void(std::string_view)>& done_;
  CaptureLimits limits_;
  std::size_t cores_ = std::max(std::thread::hardware_concurrency(), 1U);
  std::size_t next_ = 0;                 ///< the command to be started next
  std::deque<CapturedCommand> started_;  ///< those not handed out yet, in order
  int late_in_a_row_ = 0;
};

void CaptureQueue::StartMore() {
  auto running =
      static_cast<std::size_t>(std::ranges::count(started_, false, &CapturedCommand::Ended));
  while (next_ < commands_.size() && running < cores_ && started_.size() < kMostStarted &&
         late_in_a_row_ < limits_.LateInARow) {
    started_.emplace_back(commands_[next_++], Clock::now() + limits_.PerCommand);
    if (!started_.back().Ended()) {
      ++running;
    }
  }
}

void CaptureQueue::HandOut() {
  for (; !started_.empty() && started_.front().Ended(); started_.pop_front()) {
    late_in_a_row_ = started_.front().Late() ? late_in_a_row_ + 1 : 0;
    done_(started_.front().FirstLine());
  }
  if (late_in_a_row_ >= limits_.LateInARow && started_.empty()) {
    for (; next_ < commands_.size(); ++next_) {
      done_({});
    }
  }
}

void CaptureQueue::WaitForOutput() {
  std::vector<CapturedCommand*> running;
  std::vector<pollfd> outputs;
  auto deadline = Clock::time_point::max();
  for (CapturedCommand& command : started_) {
    if (!command.Ended()) {
      running.push_back(&command);
      outputs.push_back({.fd = command.Descriptor(), .events = POLLIN, .revents = 0});
      deadline = std::min(deadline, command.Deadline());
    }
  }
  if (running.empty()) {
    return;
  }
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  ::poll(outputs.data(), outputs.size(),
         static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0)));
  for (std::size_t i = 0; i < running.size(); ++i) {
    if (outputs[i].revents != 0) {
      running[i]->Read();
    }
    if (!running[i]->Ended() && Clock::now() >= running[i]->Deadline()) {
      running[i]->GiveUp();
    }
  }
}

}  // namespace

void CaptureCommandLines(const std::vector<std::vector<std::string>>& commands,
                         const std::function<void(std::string_view)>& done,
                         const CaptureLimits& limits) {
  CaptureQueue(commands, done, limits).Run();
}

}  // namespace ptick
