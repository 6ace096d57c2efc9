#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/process/process_group.h"
#include "platform/linux/unique_fd.h"

namespace ptick {

/// A command that runs until its first line is there. It is over, and killed with its process group
/// if it still runs, when a line is complete (with LF or byte 254), when 64 KiB of one are there,
/// when nothing more can come, or when its time is up. What it wrote by then is its first line.
///
/// Threads: one, which must live as long as the command runs.
class FirstLineCapture {
 public:
  /// Starts `words` with `input` as standard input; see Error.
  FirstLineCapture(const std::vector<std::string>& words, int input,
                   std::chrono::nanoseconds time_limit);

  bool IsOver() const { return !group_.IsRunning(); }
  /// Why it could not be started or listened to, an error number of the system's; else 0.
  int Error() const { return error_; }
  /// The first line, without its end.
  const std::string& Line() const { return line_; }

  /// To be polled for POLLIN while it is not over.
  int OutputDescriptor() const { return output_.Get(); }
  std::chrono::nanoseconds TimeLeft() const { return time_left_; }

  /// Takes in what it has written, and whether it has ended.
  void Attend();
  /// Counts `time` as waited for.
  void CountWaiting(std::chrono::nanoseconds time);
  /// Ends it now, if it runs.
  void Kill();

 private:
  int Start(const std::vector<std::string>& words, int input);
  bool ReadLine();
  bool KeepLine(std::string_view bytes);

  std::chrono::nanoseconds time_left_;
  UniqueFd output_;
  ProcessGroup group_;
  int error_ = 0;
  std::string line_;
};

}  // namespace ptick
