#include "platform/linux/linux_platform.h"

#include <unistd.h>

#include <cstddef>
#include <ctime>

#include "platform/linux/ports/port_sender.h"
#include "platform/linux/process/first_lines.h"
#include "platform/linux/process/process_start.h"
#include "platform/linux/process/shell.h"
#include "platform/linux/record_files.h"
#include "platform/linux/system_values.h"
#include "platform/linux/terminal.h"
#include "platform/linux/write_all.h"

namespace ptick {
namespace {

int DescriptorOf(Stream stream) {
  return stream == Stream::kOutput ? STDOUT_FILENO : STDERR_FILENO;
}

}  // namespace

LinuxPlatform::LinuxPlatform(int argc, const char* const* argv)
    : command_line_(argv, static_cast<std::size_t>(argc)) {
  PrepareProcess();
}

std::unique_ptr<RecordFile> LinuxPlatform::OpenFile(std::string_view name, int* error) {
  return OpenRecordFile(name, error);
}

std::int64_t LinuxPlatform::PageWidth() { return ReadPageWidth(); }

std::string LinuxPlatform::AccountName() { return ReadAccountName(); }

std::string LinuxPlatform::OwnPort() { return ReadOwnPort(); }

std::vector<std::string> LinuxPlatform::CommandLine() {
  return {command_line_.begin(), command_line_.end()};
}

std::int64_t LinuxPlatform::Now() { return std::time(nullptr); }

std::optional<std::int64_t> LinuxPlatform::ZoneOffset(std::int64_t time) {
  return ReadZoneOffset(time);
}

int LinuxPlatform::Write(Stream stream, std::string_view bytes) {
  return WriteAll(DescriptorOf(stream), bytes);
}

bool LinuxPlatform::IsTerminal(Stream stream) { return ::isatty(DescriptorOf(stream)) == 1; }

bool LinuxPlatform::HasKeyboard() { return ::isatty(STDIN_FILENO) == 1; }

std::int64_t LinuxPlatform::PageLength() { return ReadPageLength(); }

std::optional<char> LinuxPlatform::ReadKey() { return WaitForKey(); }

FirstLines LinuxPlatform::CaptureFirstLines(const std::vector<std::vector<std::string>>& commands) {
  return ptick::CaptureFirstLines(commands);
}

int LinuxPlatform::RunShell(const std::string& command_line, std::string_view input) {
  return RunShellLine(command_line, input);
}

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
