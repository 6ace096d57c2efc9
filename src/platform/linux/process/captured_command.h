#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/unique_fd.h"

namespace ptick {

/// A command that is run in a process group of its own, with the first line of its output kept.
/// Going away while it runs kills it with all of its group.
class CapturedCommand {
 public:
  /// Starts `words`; one that cannot be started has ended without output.
  CapturedCommand(const std::vector<std::string>& words, std::chrono::nanoseconds time_limit);
  CapturedCommand(const CapturedCommand&) = delete;
  CapturedCommand& operator=(const CapturedCommand&) = delete;
  ~CapturedCommand() { Kill(); }

  bool IsRunning() const { return process_ > 0; }
  bool HasTimedOut() const { return timed_out_; }
  std::chrono::nanoseconds TimeLeft() const { return time_left_; }

  /// The descriptor to poll for output; -1 when no more is to come, or to be looked at.
  int OutputDescriptor() const { return output_.Get(); }

  /// Takes in what it has written and whether it has ended. What is written behind the first line
  /// is thrown away; after a megabyte of output the command is not listened to any more.
  void Attend();

  /// Counts `time` as waited for. When the limit is used up, the command is killed and has no first
  /// line.
  void CountWaiting(std::chrono::nanoseconds time);

  /// Ends it now, if it runs.
  void Kill();

  /// The first line without its line end, at most 64 KiB of it.
  std::string_view FirstLine() const { return first_line_; }

 private:
  void ReadOutput();
  void KeepFirstLine(std::string_view bytes);

  std::chrono::nanoseconds time_left_;
  UniqueFd output_;
  pid_t process_ = 0;  // 0 when there is none any more
  bool timed_out_ = false;
  bool line_ended_ = false;
  std::size_t bytes_read_ = 0;
  std::string first_line_;
};

}  // namespace ptick
