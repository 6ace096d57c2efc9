#include "ptick/command_line.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "output/stop.h"
#include "profile/ticks/sort_order.h"
#include "ptick/source_options.h"
#include "ptick/usage.h"
#include "value/dynamic_array.h"

namespace ptick {

namespace {

struct FlagLetter {
  char letter;
  bool RunOptions::*flag;
};

constexpr std::array kFlagLetters = {
    FlagLetter{'n', &RunOptions::PerProgram},
    FlagLetter{'u', &RunOptions::CpuOption},
    FlagLetter{'a', &RunOptions::AncillaryOption},
    FlagLetter{'p', &RunOptions::PerformsOption},
    FlagLetter{'v', &RunOptions::Verbose},
    FlagLetter{'t', &RunOptions::TypeRateOption},
    FlagLetter{'o', &RunOptions::SharedObjectsOption},
    FlagLetter{'s', &RunOptions::SubroutinesOption},
    FlagLetter{'A', &RunOptions::AllReports},
    FlagLetter{'j', &RunOptions::MonitorOption},
};

bool RunOptions::*FindFlag(char letter) {
  for (const FlagLetter& flag : kFlagLetters) {
    if (flag.letter == letter) {
      return flag.flag;
    }
  }
  return nullptr;
}

class CommandLineParser {
 public:
  CommandLineParser(const std::vector<std::string>& arguments, Platform& platform, Output& output)
      : arguments_(arguments), platform_(platform), output_(output) {}

  RunOptions Parse();

 private:
  void ParseLetter(char letter);
  std::string_view TakeName();

  const std::vector<std::string>& arguments_;
  Platform& platform_;
  Output& output_;
  RunOptions options_;
  std::size_t arg_no_ = 0;     ///< of the argument that is looked at next
  std::string_view arg_rest_;  ///< letters of the current argument still to be handled
};

RunOptions CommandLineParser::Parse() {
  options_.ReportWidth = platform_.PageWidth() - 1;
  while (arg_no_ < arguments_.size()) {
    const std::string& argument = arguments_[arg_no_++];
    if (!argument.starts_with('-')) {
      options_.ProfileList.push_back(argument);
      continue;
    }
    arg_rest_ = std::string_view(argument).substr(1);
    while (!arg_rest_.empty()) {
      const char letter = arg_rest_.front();
      arg_rest_.remove_prefix(1);
      ParseLetter(letter);
    }
  }
  return std::move(options_);
}

void CommandLineParser::ParseLetter(char letter) {
  if (bool RunOptions::*const flag = FindFlag(letter)) {
    options_.*flag = true;
    return;
  }
  switch (letter) {
    case 'i':
      options_.TickOrder = SortOrder::kAscending;
      break;
    case 'k':
      options_.KeyScriptFile = TakeName();
      break;
    case 'f':
      if (options_.SourceFiles.size() >= kSourceFileLimit) {
        // No name is taken: one in the next argument becomes a profile name.
        output_.PrintTerminal("Too many files specified with -f option");
        arg_rest_ = {};
      } else {
        OpenSourceFile(TakeName(), platform_, output_, options_);
      }
      break;
    case 'F':
      OpenSourceFileList(TakeName(), platform_, output_, options_);
      break;
    case 'h':
      throw Stop{PrintUsage(output_) ? 0 : 1};
    default:
      output_.PrintTerminal("Invalid argument");
      PrintUsage(output_);
      throw Stop{1};
  }
}

// The rest of the argument, or the next argument when there is none.
std::string_view CommandLineParser::TakeName() {
  const std::string_view rest = std::exchange(arg_rest_, {});
  if (!rest.empty()) {
    return rest;
  }
  return arg_no_ < arguments_.size() ? std::string_view(arguments_[arg_no_++]) : "";
}

}  // namespace

std::vector<std::string> CommandArguments(const std::vector<std::string>& command_line) {
  std::vector<std::string> arguments;
  for (std::size_t i = 1; i < command_line.size(); ++i) {
    std::string_view rest = command_line[i];
    for (std::size_t mark = rest.find(kFieldMark); mark != std::string_view::npos;
         mark = rest.find(kFieldMark)) {
      arguments.emplace_back(rest.substr(0, mark));
      rest.remove_prefix(mark + 1);
    }
    arguments.emplace_back(rest);
  }
  return arguments;
}

RunOptions ParseCommandLine(const std::vector<std::string>& arguments, Platform& platform,
                            Output& output) {
  return CommandLineParser(arguments, platform, output).Parse();
}

}  // namespace ptick
