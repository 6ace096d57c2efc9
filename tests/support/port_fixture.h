#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/linux/unique_fd.h"
#include "support/child_process.h"

namespace ptick::testing {

/// A test with a runtime directory of its own, mode 0700 and empty, that goes with it.
class PortTest : public ::testing::Test {
 protected:
  PortTest();
  ~PortTest() override;

  /// The runtime directory and what is in it.
  const std::filesystem::path& Directory() const { return directory_; }
  std::filesystem::path Socket(std::int64_t port) const;
  /// A place beside the runtime directory.
  std::filesystem::path Outside(std::string_view name) const { return root_ / name; }

 private:
  std::filesystem::path root_;
  std::filesystem::path directory_;
};

/// A socket of `type` that listens at `path`, with room for `backlog` + 1 waiting connections.
UniqueFd ListenAt(const std::filesystem::path& path, int backlog = 16, int type = SOCK_SEQPACKET);
/// The socket file of a process that has died.
void LeaveStaleSocket(const std::filesystem::path& path);
/// A connection to the socket at `path`.
UniqueFd ConnectTo(const std::filesystem::path& path);
/// The next connection, waited for.
UniqueFd AcceptFrom(const UniqueFd& listener);
/// The next packet, waited for; empty at the end of the connection.
std::string ReadPacket(const UniqueFd& socket);
/// Whether the packet has been taken.
bool WritePacket(const UniqueFd& socket, std::string_view packet);
/// Waits until there is something to read, without reading it.
void AwaitReadable(int descriptor);

/// A child's body: listens on `port`, says "listening", then says each request as
/// "control TEXT", "on FILE|OPTIONS" or "off", and answers those of the monitor with `reply`.
void RunListener(const Talk& talk, std::int64_t port, int reply = 0);

}  // namespace ptick::testing
