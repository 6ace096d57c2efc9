#include "platform/linux/process/captured_command.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

#include "platform/linux/process/child_process.h"

namespace ptick {
namespace {

constexpr std::size_t kLongestLine = std::size_t{64} * 1024;
constexpr std::size_t kMostOutput = std::size_t{1024} * 1024;

}  // namespace

CapturedCommand::CapturedCommand(const std::vector<std::string>& words,
                                 std::chrono::nanoseconds time_limit)
    : time_left_(time_limit) {
  std::array<int, 2> ends = {-1, -1};
  if (words.empty() || ::pipe2(ends.data(), O_CLOEXEC) != 0) {
    return;
  }
  output_ = UniqueFd(ends[0]);
  const UniqueFd write_end(ends[1]);
  ::fcntl(output_.Get(), F_SETFL, O_NONBLOCK);
  process_ =
      StartChild(words[0], words, {.output = write_end.Get(), .own_group = true}).value_or(0);
  if (!IsRunning()) {
    output_.Close();
  }
}

void CapturedCommand::Attend() {
  // Asked first: what an ended command has written is in the pipe by then.
  const bool ended = IsRunning() && PollChild(process_).has_value();
  ReadOutput();
  if (ended) {
    // Something that it left running may hold the pipe open; nobody waits for that.
    process_ = 0;
    output_.Close();
  }
}

void CapturedCommand::CountWaiting(std::chrono::nanoseconds time) {
  time_left_ -= time;
  if (IsRunning() && time_left_ <= std::chrono::nanoseconds::zero()) {
    Kill();
    timed_out_ = true;
    first_line_.clear();
  }
}

void CapturedCommand::Kill() {
  if (IsRunning()) {
    ::kill(-process_, SIGKILL);
    WaitForChild(process_);
    process_ = 0;
  }
  output_.Close();
}

void CapturedCommand::ReadOutput() {
  std::array<char, 16384> block = {};
  while (output_.IsOpen()) {
    const ssize_t got = ::read(output_.Get(), block.data(), block.size());
    if (got < 0 && errno == EAGAIN) {
      return;
    }
    if (got > 0) {
      KeepFirstLine({block.data(), static_cast<std::size_t>(got)});
      bytes_read_ += static_cast<std::size_t>(got);
    }
    const bool is_over = got == 0 || (got < 0 && errno != EINTR);
    if (is_over || bytes_read_ >= kMostOutput) {
      output_.Close();
    }
  }
}

void CapturedCommand::KeepFirstLine(std::string_view bytes) {
  if (line_ended_) {
    return;
  }
  const std::size_t end = bytes.find('\n');
  line_ended_ = end != std::string_view::npos;
  const std::string_view line = bytes.substr(0, end);
  first_line_ += line.substr(0, std::min(line.size(), kLongestLine - first_line_.size()));
}

}  // namespace ptick
