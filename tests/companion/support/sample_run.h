#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/unique_fd.h"

namespace ptick::companion::testing {

/// The results of a run of ptick-sample.
struct SampleRun {
  /// The exit status, or 128 plus the number of the signal that ended it.
  int status = 0;
  std::string out;
  std::string err;
};

/// How it is run.
struct SampleSetting {
  /// Its standard input.
  std::string_view input = {};
  /// Run in its process before it starts, with its standard streams in place.
  std::function<void()> prepare = [] {};
};

/// Runs ptick-sample to its end, its standard output and standard error going to files.
SampleRun RunSample(const std::vector<std::string>& arguments, const SampleSetting& setting = {});

/// Starts `body` in a process of its own with the usual signals; throws where there is none to be
/// had, so that no test sends signals to a process without a number, which is every process.
pid_t Start(const std::function<int()>& body);

/// Starts a program so, after `prepare`; its path is the first word of the command.
pid_t StartProgram(std::vector<std::string> command, const std::function<void()>& prepare);
/// Starts ptick-sample so.
pid_t StartSample(const std::vector<std::string>& arguments, const std::function<void()>& prepare);

/// A pseudo-terminal of 40 columns, and a process that runs in its foreground.
class TerminalRun {
 public:
  /// Starts `body` with standard output and standard error on the terminal, then exits with what it
  /// returns.
  explicit TerminalRun(const std::function<int()>& body);
  /// Starts ptick-sample there, after `prepare`.
  TerminalRun(const std::vector<std::string>& arguments, const std::function<void()>& prepare);

  /// Waits until the terminal has shown a text.
  void Await(std::string_view text);
  void Signal(int signal) const;
  /// Waits for the end and returns the status, as above.
  int End();
  /// Everything that was shown until now.
  const std::string& Shown() const { return shown_; }

 private:
  bool ReadMore();

  UniqueFd terminal_;
  pid_t process_ = -1;
  std::string shown_;
};

}  // namespace ptick::companion::testing
