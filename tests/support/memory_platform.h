#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/platform.h"

namespace ptick {

/// A platform that is nothing but memory: a test sets what the program shall find and looks at what
/// it left. Everything not set is absent, empty or the default shown here.
class MemoryPlatform final : public Platform {
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
  struct PortMessage {
    std::int64_t port = 0;
    std::string text;
    bool operator==(const PortMessage&) const = default;
  };
  struct MonitorCall {
    bool on = false;
    std::int64_t port = 0;
    std::string file = {};
    std::string options = {};
    bool operator==(const MonitorCall&) const = default;
  };

  // --- What the program finds ---

  std::map<std::string, Directory, std::less<>> files;  ///< directory -> record -> text
  std::size_t block_size = 4096;                        ///< the most that one read gives

  std::int64_t width = 80;
  std::int64_t length = 24;
  std::string account = "tester";
  std::string own_port = "0";
  std::vector<std::string> arguments = {"ptick"};
  std::int64_t clock = 0;
  std::function<std::optional<std::int64_t>(std::int64_t)> zone = [](std::int64_t) { return 0; };

  bool output_is_terminal = false;
  bool terminal_is_terminal = false;
  bool keyboard = false;
  std::deque<char> keys;   ///< what is typed, key by key; the input ends after the last
  int output_error = 0;    ///< what writing to standard output gives instead of taking the bytes
  int terminal_error = 0;  ///< the same for the terminal

  /// What each command writes, all lines of it, by the command's words joined with blanks.
  std::map<std::string, std::string, std::less<>> command_outputs;
  /// Why a command cannot be run, by the same.
  std::map<std::string, int, std::less<>> command_errors;
  int shell_status = 0;

  std::map<std::int64_t, int> port_errors;  ///< what each port answers; other ports give ENOENT
  std::set<std::int64_t> listening;

  // --- What the program left ---

  std::string printed;      ///< all bytes of standard output
  std::string on_terminal;  ///< all bytes of the terminal
  /// Both in the order of writing; neighbours to the same stream are joined.
  std::vector<std::pair<Stream, std::string>> transcript;
  int keys_asked_for = 0;
  std::vector<std::string> opened_files;                   ///< directories asked for, in order
  std::vector<std::pair<std::string, std::string>> reads;  ///< records asked for, in order
  std::vector<std::vector<std::string>> commands_run;      ///< commands run, in order
  std::vector<ShellRun> shell_runs;
  std::vector<PortMessage> port_messages;  ///< messages tried, those refused included
  std::vector<MonitorCall> monitor_calls;

  // --- Platform ---

  std::unique_ptr<RecordFile> OpenFile(std::string_view name, int* error = nullptr) override;
  std::int64_t PageWidth() override { return width; }
  std::string AccountName() override { return account; }
  std::string OwnPort() override { return own_port; }
  std::vector<std::string> CommandLine() override { return arguments; }
  std::int64_t Now() override { return clock; }
  std::optional<std::int64_t> ZoneOffset(std::int64_t time) override { return zone(time); }
  int Write(Stream stream, std::string_view bytes) override;
  bool IsTerminal(Stream stream) override;
  bool HasKeyboard() override { return keyboard; }
  std::int64_t PageLength() override { return length; }
  std::optional<char> ReadKey() override;
  FirstLines CaptureFirstLines(const std::vector<std::vector<std::string>>& commands) override;
  int RunShell(const std::string& command_line, std::string_view input) override;
  int SendPortMessage(std::int64_t port, std::string_view text) override;
  int MonitorOn(std::int64_t port, std::string_view file, std::string_view options) override;
  int MonitorOff(std::int64_t port) override;
  std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last) override;

 private:
  int PortError(std::int64_t port) const;
};

}  // namespace ptick
