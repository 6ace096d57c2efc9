#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/ports.h"

namespace ptick {

/// The ports of this user's processes; port_sender.h says what the error numbers mean.
class LinuxPorts : public virtual Ports {
 public:
  int SendPortMessage(std::int64_t port, std::string_view text) override;
  int MonitorOn(std::int64_t port, std::string_view file, std::string_view options) override;
  int MonitorOff(std::int64_t port) override;
  std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last) override;
};

}  // namespace ptick
