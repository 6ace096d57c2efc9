#include "support/memory_ports.h"

#include <cerrno>
#include <utility>

namespace ptick {

int MemoryPorts::SendPortMessage(std::int64_t port, std::string_view text) {
  return Answer(port, "send " + std::to_string(port) + " " + std::string(text));
}

int MemoryPorts::MonitorOn(std::int64_t port, std::string_view file, std::string_view options) {
  return Answer(port, "on " + std::to_string(port) + " [" + std::string(file) + "] [" +
                          std::string(options) + "]");
}

int MemoryPorts::MonitorOff(std::int64_t port) {
  return Answer(port, "off " + std::to_string(port));
}

std::vector<std::int64_t> MemoryPorts::ListeningPorts(std::int64_t first, std::int64_t last) {
  port_calls.push_back("list " + std::to_string(first) + " " + std::to_string(last));
  std::vector<std::int64_t> ports;
  for (const auto& [port, result] : port_results) {
    if (port >= first && port <= last) {
      ports.push_back(port);
    }
  }
  return ports;
}

int MemoryPorts::Answer(std::int64_t port, std::string call) {
  port_calls.push_back(std::move(call));
  const auto found = port_results.find(port);
  return found == port_results.end() ? ENOENT : found->second;
}

}  // namespace ptick
