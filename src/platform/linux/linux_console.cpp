#include "platform/linux/linux_console.h"

#include <unistd.h>

#include "platform/linux/key_prompt.h"
#include "platform/linux/system_values.h"
#include "platform/linux/write_all.h"

namespace ptick {

namespace {

int DescriptorOf(Stream stream) {
  return stream == Stream::kOutput ? STDOUT_FILENO : STDERR_FILENO;
}

}  // namespace

int LinuxConsole::Write(Stream stream, std::string_view bytes) {
  return WriteAll(DescriptorOf(stream), bytes);
}

bool LinuxConsole::IsTerminal(Stream stream) { return ::isatty(DescriptorOf(stream)) == 1; }

bool LinuxConsole::HasKeyboard() { return ::isatty(STDIN_FILENO) == 1; }

TerminalSize LinuxConsole::Size() { return ReadTerminalSize(); }

std::optional<char> LinuxConsole::AskForKey(std::string_view prompt, std::string_view keys) {
  return ptick::AskForKey(prompt, keys);
}

}  // namespace ptick
