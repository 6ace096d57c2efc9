#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/platform.h"
#include "support/memory_console.h"
#include "support/memory_ports.h"

namespace ptick {

/// A platform that is nothing but memory: a test sets what the program shall find and looks at what
/// it left; the console and the ports have headers of their own. Everything not set is absent,
/// empty or the default shown here.
class MemoryPlatform final : public Platform, public MemoryConsole, public MemoryPorts {
 public:
  /// A record: its text, after how many bytes reading it fails, if it does, and whether it can be
  /// read more than once.
  struct Record {
    std::string text;
    std::optional<std::size_t> fails_after = std::nullopt;
    bool is_pipe = false;
  };
  using Directory = std::map<std::string, Record, std::less<>>;

  struct ShellRun {
    std::string command_line;
    std::string input;
    bool operator==(const ShellRun&) const = default;
  };

  // --- What the program finds ---

  std::map<std::string, Directory, std::less<>> files;  ///< directory -> record -> text
  std::size_t block_size = 4096;                        ///< the most that one read gives

  std::int64_t width = 80;
  std::string account = "tester";
  std::string own_port = "0";
  std::vector<std::string> arguments = {"ptick"};
  std::int64_t clock = 0;
  std::function<std::optional<std::int64_t>(std::int64_t)> zone = [](std::int64_t) { return 0; };

  /// What each command writes, all lines of it, by the command's words joined with blanks.
  std::map<std::string, std::string, std::less<>> command_outputs;
  /// Why a command cannot be run, by the same.
  std::map<std::string, int, std::less<>> command_errors;
  int shell_status = 0;

  // --- What the program left ---

  std::vector<std::string> opened_files;                   ///< directories asked for, in order
  std::vector<std::pair<std::string, std::string>> reads;  ///< records asked for, in order
  std::vector<std::vector<std::string>> commands_run;      ///< commands run, in order
  std::vector<ShellRun> shell_runs;

  // --- Platform ---

  std::unique_ptr<RecordFile> OpenFile(std::string_view name, int* error = nullptr) override;
  std::int64_t PageWidth() override { return width; }
  std::string AccountName() override { return account; }
  std::string OwnPort() override { return own_port; }
  std::vector<std::string> CommandLine() override { return arguments; }
  std::int64_t Now() override { return clock; }
  std::optional<std::int64_t> ZoneOffset(std::int64_t time) override { return zone(time); }
  FirstLines CaptureFirstLines(const std::vector<std::vector<std::string>>& commands) override;
  int RunShell(const std::string& command_line, std::string_view input) override;
};

}  // namespace ptick
