// The port operations, until the port channel is in place: no process listens anywhere.
#include <cerrno>

#include "platform/linux/linux_platform.h"

namespace ptick {

int LinuxPlatform::SendPortMessage(std::int64_t /*port*/, std::string_view /*text*/) {
  return ENOENT;
}

int LinuxPlatform::MonitorOn(std::int64_t /*port*/, std::string_view /*file*/,
                             std::string_view /*options*/) {
  return ENOENT;
}

int LinuxPlatform::MonitorOff(std::int64_t /*port*/) { return ENOENT; }

std::vector<std::int64_t> LinuxPlatform::ListeningPorts(std::int64_t /*first*/,
                                                        std::int64_t /*last*/) {
  return {};
}

}  // namespace ptick
