#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/console.h"
#include "platform/ports.h"
#include "platform/record_file.h"

namespace ptick {

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

/// The services of the system that a program runs on, all of them. What needs only one kind of them
/// takes the interface of that kind.
///
/// Console and Ports are virtual bases so that an implementation can be put together from one of
/// each.
class Platform : public RecordFiles, public virtual Console, public virtual Ports {
 public:
  /// Memory for tables that may get big; lives as long as the platform.
  virtual std::pmr::memory_resource* TableMemory() { return std::pmr::get_default_resource(); }

  /// How many processors this process may use, at least 1.
  virtual unsigned Processors() { return 1; }

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

  // --- Commands ---

  /// Runs platform commands, each split at blanks and started directly, never through a shell;
  /// several may run at once. Every one has a while to write its first line.
  virtual FirstLines CaptureFirstLines(const std::vector<std::vector<std::string>>& commands) = 0;
  /// Runs a command line with the shell, `input` as its standard input. Returns its exit status
  /// (128 plus the signal number when a signal ended it; 127 when it could not be started). The
  /// shell's own messages go where standard error goes.
  virtual int RunShell(const std::string& command_line, std::string_view input) = 0;
};

}  // namespace ptick
