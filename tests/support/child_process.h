#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/unique_fd.h"

namespace ptick::testing {

/// One end of a talk between a test and its child process; messages keep their bounds. It is what
/// the two wait on for each other.
class Talk {
 public:
  explicit Talk(UniqueFd socket) : socket_(std::move(socket)) {}
  void Say(std::string_view message) const;
  /// The next message of the other side; "(gone)" when it has ended.
  std::string Hear() const;

 private:
  UniqueFd socket_;
};

/// A process forked from the test; killed and waited for with its owner, stopped or not.
class ChildProcess {
 public:
  /// Runs `body` in the child, which ends with it; what it throws is its last message.
  explicit ChildProcess(const std::function<void(const Talk&)>& body);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() { Kill(); }

  void Say(std::string_view message) const { talk_.Say(message); }
  std::string Hear() const { return talk_.Hear(); }

  /// Stops the child and returns once it has stopped; Continue lets it go on.
  void Stop() const;
  void Continue() const;
  /// Kills the child and returns once it is gone; harmless when it is.
  void Kill();

 private:
  Talk talk_;
  pid_t id_ = -1;
};

}  // namespace ptick::testing
