// The port operations, each handed to the port channel.
#include "platform/linux/linux_platform.h"
#include "platform/linux/ports.h"

namespace ptick {

int LinuxPlatform::SendPortMessage(std::int64_t port, std::string_view text) {
  return ports::SendPortMessage(port, text);
}

int LinuxPlatform::MonitorOn(std::int64_t port, std::string_view file, std::string_view options) {
  return ports::MonitorOn(port, file, options);
}

int LinuxPlatform::MonitorOff(std::int64_t port) { return ports::MonitorOff(port); }

std::vector<std::int64_t> LinuxPlatform::ListeningPorts(std::int64_t first, std::int64_t last) {
  return ports::ListeningPorts(first, last);
}

}  // namespace ptick
