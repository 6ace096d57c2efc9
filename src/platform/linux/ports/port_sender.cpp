#include "platform/linux/ports/port_sender.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/ports/port_connection.h"
#include "platform/linux/ports/port_wire.h"
#include "platform/linux/ports/runtime_directory.h"

namespace ptick::ports {

namespace {

struct CloseDirectory {
  void operator()(DIR* directory) const { ::closedir(directory); }
};
using DirectoryStream = std::unique_ptr<DIR, CloseDirectory>;

int RequestMonitor(std::int64_t port, const std::string& packet, std::chrono::milliseconds limit) {
  const Opened connection = ConnectToPort(port);
  if (connection.error != 0) {
    return connection.error;
  }
  const int error = SendPacket(connection.descriptor, packet);
  return error != 0 ? error : AwaitReply(connection.descriptor, limit);
}

DirectoryStream OpenForListing() {
  const Opened directory = OpenRuntimeDirectory();
  if (directory.error != 0) {
    return nullptr;
  }
  const int listing = ::openat(directory.descriptor.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (listing < 0) {
    return nullptr;
  }
  DirectoryStream stream(::fdopendir(listing));
  if (!stream) {
    ::close(listing);
  }
  return stream;
}

}  // namespace

int SendPortMessage(std::int64_t port, std::string_view text) {
  const Opened connection = ConnectToPort(port);
  return connection.error != 0 ? connection.error : SendPacket(connection.descriptor, text);
}

int MonitorOn(std::int64_t port, std::string_view file, std::string_view options,
              std::chrono::milliseconds limit) {
  const std::optional<std::string> packet = MonitorOnPacket(file, options);
  return packet ? RequestMonitor(port, *packet, limit) : EINVAL;
}

int MonitorOff(std::int64_t port, std::chrono::milliseconds limit) {
  return RequestMonitor(port, MonitorOffPacket(), limit);
}

std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last) {
  std::vector<std::int64_t> ports;
  const DirectoryStream directory = OpenForListing();
  if (!directory) {
    return ports;
  }
  while (const dirent* entry = ::readdir(directory.get())) {  // NOLINT(concurrency-mt-unsafe)
    const auto port = ParseSocketName(static_cast<const char*>(entry->d_name));
    if (port && *port >= first && *port <= last) {
      ports.push_back(*port);
    }
  }
  std::ranges::sort(ports);
  // A file that is renamed during the pass may be met twice.
  ports.erase(std::unique(ports.begin(), ports.end()), ports.end());
  return ports;
}

}  // namespace ptick::ports
