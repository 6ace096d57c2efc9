#include "platform/linux/linux_platform.h"

#include <cstddef>
#include <ctime>

#include "platform/linux/process/first_lines.h"
#include "platform/linux/process/process_start.h"
#include "platform/linux/process/shell.h"
#include "platform/linux/processors.h"
#include "platform/linux/record_files.h"
#include "platform/linux/system_values.h"

namespace ptick {

LinuxPlatform::LinuxPlatform(int argc, const char* const* argv)
    : command_line_(argv, static_cast<std::size_t>(argc)) {
  PrepareProcess();
}

std::unique_ptr<RecordFile> LinuxPlatform::OpenFile(std::string_view name, int* error) {
  return OpenRecordFile(name, error);
}

unsigned LinuxPlatform::Processors() { return CountProcessors(); }

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

FirstLines LinuxPlatform::CaptureFirstLines(const std::vector<std::vector<std::string>>& commands) {
  return ptick::CaptureFirstLines(commands);
}

int LinuxPlatform::RunShell(const std::string& command_line, std::string_view input) {
  return RunShellLine(command_line, input);
}

}  // namespace ptick
