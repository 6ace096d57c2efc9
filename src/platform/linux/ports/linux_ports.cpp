#include "platform/linux/ports/linux_ports.h"

#include "platform/linux/ports/port_sender.h"

namespace ptick {

int LinuxPorts::SendPortMessage(std::int64_t port, std::string_view text) {
  return ports::SendPortMessage(port, text);
}

int LinuxPorts::MonitorOn(std::int64_t port, std::string_view file, std::string_view options) {
  return ports::MonitorOn(port, file, options);
}

int LinuxPorts::MonitorOff(std::int64_t port) { return ports::MonitorOff(port); }

std::vector<std::int64_t> LinuxPorts::ListeningPorts(std::int64_t first, std::int64_t last) {
  return ports::ListeningPorts(first, last);
}

}  // namespace ptick
