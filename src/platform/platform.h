#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/record_file.h"

namespace ptick {

/// Where printed bytes go.
enum class Stream {
  kOutput,    ///< standard output, descriptor 1: reports and results
  kTerminal,  ///< the terminal, descriptor 2: diagnostics and usage
};

/// What commands wrote.
struct FirstLines {
  /// For each command, in the order given, the first line of what it wrote to standard output and
  /// standard error together, without its end (LF or byte 254): what there was of it where that did
  /// not come in time, empty where there is no such command.
  std::vector<std::string> lines;
  /// The error number of the system that says why commands could not be run for want of processes,
  /// descriptors or memory, the first one; 0 when all could be run. Their lines are empty.
  int error = 0;
};

/// The services of the system that the program runs on, as one set of operations.
class Platform : public RecordFiles {
 public:
  /// Memory for tables that may get big; lives as long as the platform.
  virtual std::pmr::memory_resource* TableMemory() { return std::pmr::get_default_resource(); }

  // --- System values ---

  /// The width of the page in characters, at least 1 (system value 2).
  virtual std::int64_t PageWidth() = 0;
  /// The account name (system value 19).
  virtual std::string AccountName() = 0;
  /// The port number of this process, digits as they were given (system value 101).
  virtual std::string OwnPort() = 0;
  /// The command line, the command name first (system value 1000).
  virtual std::vector<std::string> CommandLine() = 0;

  // --- Clock ---

  /// Seconds since 1 January 1970.
  virtual std::int64_t Now() = 0;
  /// How many seconds local time is ahead of universal time at the moment `time`; nothing when no
  /// calendar can show that moment.
  virtual std::optional<std::int64_t> ZoneOffset(std::int64_t time) = 0;

  // --- Terminal and standard output ---

  /// Writes all bytes; 0, or the error number of the system.
  virtual int Write(Stream stream, std::string_view bytes) = 0;
  /// Whether the stream ends at a real terminal.
  virtual bool IsTerminal(Stream stream) = 0;
  /// Whether keys can be asked for: standard input is a terminal.
  virtual bool HasKeyboard() = 0;
  /// The number of lines of the terminal on standard output, at least 1.
  virtual std::int64_t PageLength() = 0;
  /// Waits for a key press and returns its byte, unechoed; nothing when there is no more input. The
  /// terminal is left as it was found, also when a signal ends the wait.
  virtual std::optional<char> ReadKey() = 0;

  // --- Commands ---

  /// Runs platform commands, each split at blanks and started directly, never through a shell;
  /// several may run at once. Every one has a while to write its first line.
  virtual FirstLines CaptureFirstLines(const std::vector<std::vector<std::string>>& commands) = 0;
  /// Runs a command line with the shell, `input` as its standard input. Returns its exit status
  /// (128 plus the signal number when a signal ended it; 127 when it could not be started). The
  /// shell's own messages go where standard error goes.
  virtual int RunShell(const std::string& command_line, std::string_view input) = 0;

  // --- Ports: each returns 0 or an error number; none of them blocks for long ---

  /// Hands `text` to the process on `port`; does not wait for it to act.
  virtual int SendPortMessage(std::int64_t port, std::string_view text) = 0;
  /// Switches the monitor on for the process on `port`.
  virtual int MonitorOn(std::int64_t port, std::string_view file, std::string_view options) = 0;
  /// Switches the monitor off for the process on `port`.
  virtual int MonitorOff(std::int64_t port) = 0;
  /// The ports from `first` to `last` that a process may be listening on, ascending; empty when the
  /// ports cannot be looked at.
  virtual std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last) = 0;
};

}  // namespace ptick
