#include "support/child_process.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <exception>
#include <stdexcept>

namespace ptick::testing {

void Talk::Say(std::string_view message) const {
  send(socket_.Get(), message.data(), message.size(), MSG_NOSIGNAL);
}

std::string Talk::Hear() const {
  std::string message(std::size_t{1} << 20, '\0');
  ssize_t size = 0;
  do {
    size = recv(socket_.Get(), message.data(), message.size(), 0);
  } while (size < 0 && errno == EINTR);
  if (size <= 0) {
    return "(gone)";
  }
  message.resize(static_cast<std::size_t>(size));
  return message;
}

ChildProcess::ChildProcess(const std::function<void(const Talk&)>& body) : talk_(UniqueFd()) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw std::runtime_error("socketpair");
  }
  UniqueFd own(ends[0]);
  UniqueFd childs(ends[1]);
  id_ = fork();
  if (id_ < 0) {
    throw std::runtime_error("fork");
  }
  if (id_ == 0) {
    own.Close();
    const Talk talk(std::move(childs));
    try {
      body(talk);
    } catch (const std::exception& error) {
      talk.Say(error.what());
    }
    _exit(0);
  }
  talk_ = Talk(std::move(own));
}

void ChildProcess::Stop() const {
  kill(id_, SIGSTOP);
  waitpid(id_, nullptr, WUNTRACED);
}

void ChildProcess::Continue() const { kill(id_, SIGCONT); }

void ChildProcess::Kill() {
  if (id_ > 0) {
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
    id_ = -1;
  }
}

}  // namespace ptick::testing
