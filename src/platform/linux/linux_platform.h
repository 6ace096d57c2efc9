#pragma once

#include <memory>
#include <memory_resource>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/large_pages.h"
#include "platform/linux/linux_console.h"
#include "platform/linux/ports/linux_ports.h"
#include "platform/platform.h"

namespace ptick {

/// The services of the system as Linux gives them. One per process, made before anything else is
/// opened: making it fills closed standard descriptors and ignores SIGPIPE.
class LinuxPlatform final : public Platform, public LinuxConsole, public LinuxPorts {
 public:
  /// Keeps a view of argv and allocates nothing.
  LinuxPlatform(int argc, const char* const* argv);

  std::unique_ptr<RecordFile> OpenFile(std::string_view name, int* error = nullptr) override;

  std::pmr::memory_resource* TableMemory() override { return &large_pages_; }

  unsigned Processors() override;

  std::int64_t PageWidth() override;
  std::string AccountName() override;
  std::string OwnPort() override;
  std::vector<std::string> CommandLine() override;

  std::int64_t Now() override;
  std::optional<std::int64_t> ZoneOffset(std::int64_t time) override;

  FirstLines CaptureFirstLines(const std::vector<std::vector<std::string>>& commands) override;
  int RunShell(const std::string& command_line, std::string_view input) override;

 private:
  LargePages large_pages_;
  std::span<const char* const> command_line_;
};

}  // namespace ptick
