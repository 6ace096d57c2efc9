#include "platform/linux/process/first_line_capture.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace ptick {

namespace {

constexpr std::size_t kMaxLine = std::size_t{64} * 1024;
constexpr std::string_view kLineEnds = "\n\xfe";

}  // namespace

FirstLineCapture::FirstLineCapture(const std::vector<std::string>& words, int input,
                                   std::chrono::nanoseconds time_limit)
    : time_left_(time_limit), error_(Start(words, input)) {}

int FirstLineCapture::Start(const std::vector<std::string>& words, int input) {
  if (words.empty()) {
    return ENOENT;
  }
  std::array<int, 2> ends = {-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    return errno;
  }
  output_ = UniqueFd(ends[0]);
  const UniqueFd write_end(ends[1]);
  ::fcntl(output_.Get(), F_SETFL, O_NONBLOCK);
  return group_.Start(words[0], words, {.input = input, .output = write_end.Get()});
}

void FirstLineCapture::Attend() {
  // Asked first: what an ended command has written is in the pipe by then. Something that it left
  // running may hold the pipe open; nobody waits for that.
  const bool ended = group_.Poll().has_value();
  if (ReadLine() || ended) {
    Kill();
  }
}

void FirstLineCapture::CountWaiting(std::chrono::nanoseconds time) {
  time_left_ -= time;
  if (time_left_ <= std::chrono::nanoseconds::zero()) {
    Kill();
  }
}

void FirstLineCapture::Kill() {
  group_.Kill();
  output_.Close();
}

// Whether the line is over.
bool FirstLineCapture::ReadLine() {
  std::array<char, 16384> block = {};
  for (;;) {
    const ssize_t got = ::read(output_.Get(), block.data(), block.size());
    if (got < 0 && errno == EAGAIN) {
      return false;
    }
    if (got < 0 && errno != EINTR) {
      error_ = errno;
      return true;
    }
    if (got == 0 || (got > 0 && KeepLine({block.data(), static_cast<std::size_t>(got)}))) {
      return true;
    }
  }
}

// Whether these bytes end the line.
bool FirstLineCapture::KeepLine(std::string_view bytes) {
  const std::size_t end = bytes.find_first_of(kLineEnds);
  const std::string_view part = bytes.substr(0, end);
  line_ += part.substr(0, std::min(part.size(), kMaxLine - line_.size()));
  return end != std::string_view::npos || line_.size() == kMaxLine;
}

}  // namespace ptick
