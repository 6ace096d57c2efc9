#include "companion/support/sample_run.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick::companion::testing {

namespace {

using ptick::testing::AwaitEnd;
using ptick::testing::StartForked;
using ptick::testing::TempDirectory;

[[noreturn]] void Execute(std::vector<std::string> command) {
  std::vector<char*> argv;
  for (std::string& word : command) {
    argv.push_back(word.data());
  }
  argv.push_back(nullptr);
  ::execv(argv.front(), argv.data());
  ::_exit(127);
}

std::vector<std::string> SampleCommand(const std::vector<std::string>& arguments) {
  std::vector<std::string> command = {PTICK_SAMPLE};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return command;
}

void Redirect(int fd, const std::string& file, int flags) {
  const UniqueFd opened(::open(file.c_str(), flags | O_CLOEXEC, 0600));
  ::dup2(opened.Get(), fd);
}

}  // namespace

pid_t Start(const std::function<int()>& body) {
  const pid_t process = StartForked(body);
  if (process < 0) {
    throw std::runtime_error("fork");
  }
  return process;
}

pid_t StartProgram(std::vector<std::string> command, const std::function<void()>& prepare) {
  return Start([&]() -> int {
    prepare();
    Execute(std::move(command));
  });
}

pid_t StartSample(const std::vector<std::string>& arguments, const std::function<void()>& prepare) {
  return StartProgram(SampleCommand(arguments), prepare);
}

SampleRun RunSample(const std::vector<std::string>& arguments, const SampleSetting& setting) {
  const TempDirectory directory;
  directory.Write("in", setting.input);
  const pid_t process = StartSample(arguments, [&] {
    Redirect(STDIN_FILENO, directory / "in", O_RDONLY);
    Redirect(STDOUT_FILENO, directory / "out", O_WRONLY | O_CREAT | O_APPEND);
    Redirect(STDERR_FILENO, directory / "err", O_WRONLY | O_CREAT | O_APPEND);
    setting.prepare();
  });
  const int status = AwaitEnd(process);
  return {.status = status, .out = directory.Read("out"), .err = directory.Read("err")};
}

TerminalRun::TerminalRun(const std::function<int()>& body) {
  const winsize size = {.ws_row = 24, .ws_col = 40, .ws_xpixel = 0, .ws_ypixel = 0};
  int own = -1;
  int its = -1;
  if (::openpty(&own, &its, nullptr, nullptr, &size) != 0) {
    throw std::runtime_error("openpty");
  }
  terminal_ = UniqueFd(own);
  const UniqueFd side(its);
  process_ = Start([&]() -> int {
    ::setsid();
    ::ioctl(its, TIOCSCTTY, 0);
    ::dup2(its, STDOUT_FILENO);
    ::dup2(its, STDERR_FILENO);
    ::setenv("TERM", "xterm", 1);
    for (const char* name : {"COLUMNS", "NO_COLOR"}) {
      ::unsetenv(name);
    }
    return body();
  });
}

TerminalRun::TerminalRun(const std::vector<std::string>& arguments,
                         const std::function<void()>& prepare)
    : TerminalRun([&]() -> int {
        prepare();
        Execute(SampleCommand(arguments));
      }) {}

bool TerminalRun::ReadMore() {
  std::array<char, 4096> block = {};
  const ssize_t got = ::read(terminal_.Get(), block.data(), block.size());
  if (got > 0) {
    shown_.append(block.data(), static_cast<std::size_t>(got));
  }
  return got > 0;
}

void TerminalRun::Await(std::string_view text) {
  while (shown_.find(text) == std::string::npos) {
    if (!ReadMore()) {
      throw std::runtime_error("not shown: " + std::string(text) + "; but: " + shown_);
    }
  }
}

void TerminalRun::Signal(int signal) const { ::kill(process_, signal); }

int TerminalRun::End() {
  while (ReadMore()) {
  }
  return AwaitEnd(process_);
}

}  // namespace ptick::companion::testing
