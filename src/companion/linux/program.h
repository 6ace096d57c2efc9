// The frame of a companion's main: command line, work, result, exit status.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/command_line.h"
#include "companion/exit_status.h"
#include "companion/linux/result_file.h"
#include "companion/linux/standard_error.h"
#include "companion/messages.h"
#include "companion/progress.h"
#include "companion/text_form.h"

namespace ptick::companion {

/// What the work of a program is given.
class Session {
 public:
  /// `program` lives as long as this.
  Session(std::string_view program, const CommonOptions& options, StandardError& standard_error)
      : program_(program), options_(options), standard_error_(standard_error) {}

  /// Where problems are told that do not end the work; those that do are thrown as Trouble.
  Messages& GetMessages() { return standard_error_; }
  /// For Progress.
  StatusLine& GetStatusLine() { return standard_error_; }

  /// Opens the result, by -o: once, and best before the work, so that what is wrong with it is
  /// known at once.
  ResultFile& OpenResult(ResultKind kind);
  /// What the open result looks like for people.
  TextForm Form() const;

  /// Puts the result in its place, if one is open. RunProgram does this; who needs it done before
  /// the work is over may do it earlier.
  void FinishResult();

 private:
  std::string_view program_;
  const CommonOptions& options_;
  StandardError& standard_error_;
  std::unique_ptr<ResultFile> result_;
};

struct Program {
  /// As its users type it.
  const char* name;
  /// Adds usage, summary, options and operands.
  std::function<void(CommandLine& command_line)> describe;
  /// Does the work when the command line was parsed. May throw Trouble, and a UsageError.
  std::function<ExitStatus(Session& session)> run;
};

/// Runs a program and returns what main is to return: parses the command line, answers --help and
/// --version, does the work, finishes its result unless the status is kTrouble, tells what went
/// wrong, lack of memory included.
int RunProgram(const Program& program, int argc, char* const* argv);

/// How many bytes all inputs have together; nothing when one is no regular file or cannot be looked
/// at. "-" is standard input.
std::optional<std::uint64_t> BytesOfAll(const std::vector<std::string>& inputs);

}  // namespace ptick::companion
