#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ports.h"

namespace ptick {

/// Ports that are nothing but memory.
class MemoryPorts : public virtual Ports {
 public:
  /// The ports that somebody listens on, and what an operation on each returns. The others give
  /// ENOENT.
  std::map<std::int64_t, int> port_results;

  /// What was asked for, in order: "list FIRST LAST", "send PORT TEXT", "on PORT [FILE] [OPTIONS]"
  /// and "off PORT".
  std::vector<std::string> port_calls;

  int SendPortMessage(std::int64_t port, std::string_view text) override;
  int MonitorOn(std::int64_t port, std::string_view file, std::string_view options) override;
  int MonitorOff(std::int64_t port) override;
  std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last) override;

 private:
  int Answer(std::int64_t port, std::string call);
};

}  // namespace ptick
