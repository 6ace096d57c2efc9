#include "platform/linux/ports/port_endpoint.h"

#include <sys/epoll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/ports/port_connection.h"
#include "platform/linux/shortage.h"

namespace ptick::ports {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

[[noreturn]] void Fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

// Until when to wait; nothing for ever, also where the clock does not reach that far.
std::optional<Clock::time_point> Deadline(std::optional<Milliseconds> timeout) {
  const Clock::time_point now = Clock::now();
  if (!timeout || *timeout > std::chrono::floor<Milliseconds>(Clock::time_point::max() - now)) {
    return std::nullopt;
  }
  return now + *timeout;
}

bool HasPassed(const std::optional<Clock::time_point>& deadline) {
  return deadline && Clock::now() >= *deadline;
}

// As epoll_wait takes it: 0 when the time has passed, -1 for ever.
int WaitTime(const std::optional<Clock::time_point>& deadline) {
  if (!deadline) {
    return -1;
  }
  constexpr std::int64_t kMax = std::numeric_limits<int>::max();
  const auto left = std::chrono::ceil<Milliseconds>(*deadline - Clock::now());
  return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, kMax));
}

}  // namespace

int Received::Reply(int result) {
  if (!connection.IsOpen()) {
    return ENOTCONN;
  }
  const int error = SendPacket(connection, ReplyPacket(result));
  connection.Close();
  return error;
}

PortEndpoint::PortEndpoint(std::int64_t port)
    : port_(port), events_(::epoll_create1(EPOLL_CLOEXEC)), buffer_(kMaxRequest, '\0') {
  if (!events_.IsOpen()) {
    Fail("epoll");
  }
  Watch(port_.Listener());
}

std::optional<Received> PortEndpoint::Receive(std::optional<Milliseconds> timeout) {
  const std::optional<Clock::time_point> deadline = Deadline(timeout);
  // Events that bring no request are worked off even with no time left, so that a request after
  // them is found; but not without end, or a flood of them would outlast every timeout.
  for (std::size_t fruitless = 0; fruitless <= kPendingLimit || !HasPassed(deadline); ++fruitless) {
    const std::optional<int> ready = NextEvent(deadline);
    if (!ready) {
      break;
    }
    UniqueFd connection = *ready == port_.Listener().Get() ? Accept() : TakePending(*ready);
    if (connection.IsOpen()) {
      if (auto received = Read(std::move(connection))) {
        return received;
      }
    }
  }
  return std::nullopt;
}

void PortEndpoint::Watch(const UniqueFd& descriptor) const {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.fd = descriptor.Get();
  if (::epoll_ctl(events_.Get(), EPOLL_CTL_ADD, descriptor.Get(), &event) != 0) {
    Fail("epoll");
  }
}

std::optional<int> PortEndpoint::NextEvent(const std::optional<Clock::time_point>& deadline) const {
  for (;;) {
    epoll_event event{};
    const int count = ::epoll_wait(events_.Get(), &event, 1, WaitTime(deadline));
    if (count > 0) {
      const int ready = event.data.fd;
      return ready;
    }
    if (count < 0 && errno != EINTR) {
      Fail("epoll");
    }
    if (HasPassed(deadline)) {
      return std::nullopt;
    }
  }
}

// The next connection, when it is one of the same user; none otherwise.
UniqueFd PortEndpoint::Accept() {
  UniqueFd connection;
  for (;;) {
    connection =
        UniqueFd(::accept4(port_.Listener().Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (connection.IsOpen() || !IsShortage(errno)) {
      break;
    }
    if (pending_.empty()) {
      Fail("accept");
    }
    DropOldest();
  }
  if (connection.IsOpen() && !IsOwnUser(connection)) {
    connection.Close();
  }
  return connection;
}

UniqueFd PortEndpoint::TakePending(int descriptor) {
  const auto found = std::ranges::find(pending_, descriptor, &UniqueFd::Get);
  if (found == pending_.end()) {
    return {};
  }
  // Closing alone would not do: a copy in a child process keeps the events coming.
  ::epoll_ctl(events_.Get(), EPOLL_CTL_DEL, descriptor, nullptr);
  UniqueFd connection = std::move(*found);
  pending_.erase(found);
  return connection;
}

void PortEndpoint::DropOldest() { TakePending(pending_.front().Get()); }

// Reads the one packet of a connection. One that has not sent it yet is put aside; one that sends
// no request is closed.
std::optional<Received> PortEndpoint::Read(UniqueFd connection) {
  const ssize_t size =
      ::recv(connection.Get(), buffer_.data(), buffer_.size(), MSG_DONTWAIT | MSG_TRUNC);
  if (size < 0 && (errno == EAGAIN || errno == EINTR)) {
    if (pending_.size() == kPendingLimit) {
      DropOldest();
    }
    Watch(connection);
    pending_.push_back(std::move(connection));
    return std::nullopt;
  }
  if (size <= 0 || static_cast<std::size_t>(size) > buffer_.size()) {
    return std::nullopt;
  }
  const std::string_view packet(buffer_.data(), static_cast<std::size_t>(size));
  std::optional<PortRequest> request = ParseRequest(packet);
  if (!request) {
    SendPacket(connection, ReplyPacket(EINVAL));
    return std::nullopt;
  }
  if (request->what == PortRequest::Kind::kControl) {
    connection.Close();
  }
  return Received{std::move(*request), std::move(connection)};
}

}  // namespace ptick::ports
