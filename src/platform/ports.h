#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace ptick {

/// Messages to running processes, each of which listens on a port, and the switch of the monitor.
/// The operations return 0 or an error number of the system; none of them blocks for long.
class Ports {
 public:
  Ports() = default;
  Ports(const Ports&) = delete;
  Ports& operator=(const Ports&) = delete;
  virtual ~Ports() = default;

  /// Hands `text` to the process on `port`; does not wait for it to act.
  virtual int SendPortMessage(std::int64_t port, std::string_view text) = 0;
  /// Switches the monitor on for the process on `port`.
  virtual int MonitorOn(std::int64_t port, std::string_view file, std::string_view options) = 0;
  /// Switches the monitor off for the process on `port`.
  virtual int MonitorOff(std::int64_t port) = 0;
  /// The ports from `first` to `last` that a process may be listening on, ascending; empty when the
  /// ports cannot be looked at.
  virtual std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last) = 0;
};

}  // namespace ptick
