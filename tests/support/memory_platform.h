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
  /// A record: its text, and after how many bytes reading it fails, if it does.
  struct Record {
    std::string Text;
    std::optional<std::size_t> FailsAfter = std::nullopt;
  };
  using Directory = std::map<std::string, Record, std::less<>>;

  struct ShellRun {
    std::string CommandLine;
    std::string Input;
    bool operator==(const ShellRun&) const = default;
  };
  struct PortMessage {
    std::int64_t Port = 0;
    std::string Text;
    bool operator==(const PortMessage&) const = default;
  };
  struct MonitorCall {
    bool On = false;
    std::int64_t Port = 0;
    std::string File = {};
    std::string Options = {};
    bool operator==(const MonitorCall&) const = default;
  };

  // --- What the program finds ---

  std::map<std::string, Directory, std::less<>> Files;  ///< directory -> record -> text
  std::size_t BlockSize = 4096;                         ///< the most that one read gives

  std::int64_t Width = 80;
  std::int64_t Length = 24;
  std::string Account = "tester";
  std::string Port = "0";
  std::vector<std::string> Arguments = {"ptick"};
  std::int64_t Clock = 0;
  std::function<std::optional<std::int64_t>(std::int64_t)> Zone = [](std::int64_t) { return 0; };

  bool OutputIsTerminal = false;
  bool TerminalIsTerminal = false;
  bool Keyboard = false;
  std::deque<char> Keys;  ///< what is typed, key by key; the input ends after the last
  int OutputError = 0;    ///< what writing to standard output gives instead of taking the bytes
  int TerminalError = 0;  ///< the same for the terminal

  /// What each command writes, all lines of it, by the command's words joined with blanks.
  std::map<std::string, std::string, std::less<>> CommandOutputs;
  int ShellStatus = 0;

  std::map<std::int64_t, int> PortErrors;  ///< what each port answers; other ports give ENOENT
  std::set<std::int64_t> Listening;

  // --- What the program left ---

  std::string Output;    ///< all bytes of standard output
  std::string Terminal;  ///< all bytes of the terminal
  /// Both in the order of writing; neighbours to the same stream are joined.
  std::vector<std::pair<Stream, std::string>> Transcript;
  int KeysAskedFor = 0;
  std::vector<std::string> OpenedFiles;                    ///< directories asked for, in order
  std::vector<std::pair<std::string, std::string>> Reads;  ///< records asked for, in order
  std::vector<std::vector<std::string>> Commands;          ///< commands run, in order
  std::vector<ShellRun> ShellRuns;
  std::vector<PortMessage> PortMessages;  ///< messages tried, those refused included
  std::vector<MonitorCall> MonitorCalls;

  // --- Platform ---

  std::unique_ptr<RecordFile> OpenFile(std::string_view name) override;
  std::int64_t PageWidth() override { return Width; }
  std::string AccountName() override { return Account; }
  std::string OwnPort() override { return Port; }
  std::vector<std::string> CommandLine() override { return Arguments; }
  std::int64_t Now() override { return Clock; }
  std::optional<std::int64_t> ZoneOffset(std::int64_t time) override { return Zone(time); }
  int Write(Stream stream, std::string_view bytes) override;
  bool IsTerminal(Stream stream) override;
  bool HasKeyboard() override { return Keyboard; }
  std::int64_t PageLength() override { return Length; }
  std::optional<char> ReadKey() override;
  void CaptureFirstLines(const std::vector<std::vector<std::string>>& commands,
                         const std::function<void(std::string_view)>& done) override;
  int RunShell(const std::string& command_line, std::string_view input) override;
  int SendPortMessage(std::int64_t port, std::string_view text) override;
  int MonitorOn(std::int64_t port, std::string_view file, std::string_view options) override;
  int MonitorOff(std::int64_t port) override;
  std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last) override;

 private:
  int PortError(std::int64_t port) const;
};

}  // namespace ptick
