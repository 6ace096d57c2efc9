#include "companion/linux/program.h"

#include <sys/stat.h>
#include <unistd.h>

#include <exception>
#include <new>
#include <stdexcept>

#include "companion/linux/signal_cleanup.h"
#include "companion/linux/standard_streams.h"
#include "companion/linux/terminal.h"
#include "companion/problem.h"
#include "companion/usage_error.h"

namespace ptick::companion {

namespace {

// To standard output, whatever -o says.
void Print(const std::string& text, std::string_view program, StandardError& standard_error) {
  ResultFile output(std::nullopt, ResultKind::kText, program, standard_error);
  output.Write(text);
  output.Finish();
}

ExitStatus Run(const Program& program, const std::vector<std::string>& arguments,
               StandardError& standard_error) {
  CommandLine command_line(program.name);
  program.describe(command_line);
  switch (command_line.Parse(arguments)) {
    case CommandLine::Wish::kHelp:
      Print(command_line.Help(), program.name, standard_error);
      return ExitStatus::kDone;
    case CommandLine::Wish::kVersion:
      Print(std::string(program.name) + " " PTICK_VERSION "\n", program.name, standard_error);
      return ExitStatus::kDone;
    case CommandLine::Wish::kRun:
      break;
  }
  standard_error.SetQuiet(command_line.Common().is_quiet);
  Session session(program.name, command_line.Common(), standard_error);
  const ExitStatus status = program.run(session);
  if (status != ExitStatus::kTrouble) {
    session.FinishResult();
  }
  return status;
}

void Tell(StandardError& standard_error, const std::string& reason) {
  standard_error.Tell({.file = std::nullopt, .line = std::nullopt, .reason = reason});
}

// All that ends a run early is caught here, and the result is gone by then.
ExitStatus RunAndTell(const Program& program, int argc, char* const* argv,
                      StandardError& standard_error) {
  try {
    return Run(program, {argv + (argc > 0 ? 1 : 0), argv + argc}, standard_error);
  } catch (const UsageError& error) {
    Tell(standard_error, error.what());
    standard_error.TellHelp();
  } catch (const Trouble& trouble) {
    standard_error.Tell(trouble.What());
  } catch (const std::bad_alloc&) {
    standard_error.TellOutOfMemory();
  } catch (const std::exception& error) {
    Tell(standard_error, error.what());
  }
  return ExitStatus::kTrouble;
}

}  // namespace

ResultFile& Session::OpenResult(ResultKind kind) {
  if (result_) {
    throw std::logic_error("the result is open already");
  }
  result_ = std::make_unique<ResultFile>(options_.output, kind, program_, standard_error_);
  return *result_;
}

TextForm Session::Form() const {
  if (!result_) {
    throw std::logic_error("the result is not open");
  }
  return FormFor(result_->Descriptor(), options_.color);
}

void Session::FinishResult() {
  if (result_) {
    result_->Finish();
    result_.reset();
  }
}

int RunProgram(const Program& program, int argc, char* const* argv) {
  PrepareStandardStreams();
  InstallSignalCleanup();
  StandardError standard_error(program.name);
  ExitStatus status = ExitStatus::kTrouble;
  try {
    status = RunAndTell(program, argc, argv, standard_error);
  } catch (const std::bad_alloc&) {
    // Not even the message found room.
    standard_error.TellOutOfMemory();
  }
  return static_cast<int>(status);
}

std::optional<std::uint64_t> BytesOfAll(const std::vector<std::string>& inputs) {
  std::uint64_t bytes = 0;
  for (const std::string& input : inputs) {
    struct stat status = {};
    const int result =
        input == "-" ? ::fstat(STDIN_FILENO, &status) : ::stat(input.c_str(), &status);
    if (result != 0 || !S_ISREG(status.st_mode)) {
      return std::nullopt;
    }
    bytes += static_cast<std::uint64_t>(status.st_size);
  }
  return bytes;
}

}  // namespace ptick::companion
