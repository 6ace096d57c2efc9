#include "reports/key_script.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "output/stop.h"
#include "value/arithmetic.h"
#include "value/conversion.h"
#include "value/dynamic_array.h"
#include "value/text.h"

namespace ptick {

namespace {

// Stacked text: every field of it is a line that the next command reads.
void Stack(std::string_view text, std::string& lines) {
  const std::size_t start = lines.size();
  lines += text;
  std::replace(lines.begin() + static_cast<std::ptrdiff_t>(start), lines.end(), kFieldMark, '\n');
  lines += '\n';
}

void StackBanner(Platform& platform, std::string& lines) {
  const ZoneOffset zone = [&platform](std::int64_t time) { return platform.ZoneOffset(time); };
  Stack("*", lines);
  Stack("* This script created at " + TimeDate(platform.Now(), zone) + " , port " +
            platform.OwnPort() + " , account " + platform.AccountName(),
        lines);
  Stack("*", lines);
}

// The replayed program runs with "-J" where it was profiled with "-JP".
void StackProgram(std::string_view command, std::string& lines) {
  Stack("PROGRAM " + Quote(Change(command, " -JP", " -J"), '"') + R"( STDOUT "-" STDERR "-")",
        lines);
  Stack("PipeNumber = $PIPE", lines);
}

// Seconds per keystroke over the whole run. No characters count as one, so that the time spent
// typing remains.
std::string TypeDelay(const TypingRate& rate, const Value& hertz) {
  Value characters = rate.characters;
  if (characters == 0) {
    characters = 1;
  }
  return Divide(Divide(rate.ticks, characters), hertz).Text();
}

std::string ScriptLines(const ProfileTables& tables, const RunOptions& options,
                        Platform& platform) {
  std::string lines;
  StackBanner(platform, lines);
  const bool has_program = !tables.ProgramCommand.empty();
  if (has_program) {
    StackProgram(tables.ProgramCommand, lines);
  }
  if (!options.TypeRateOption && !tables.Hertz.Empty() && tables.TypeRate) {
    Stack("TYPEDELAY " + TypeDelay(*tables.TypeRate, tables.Hertz), lines);
  }
  for (std::size_t n = 0; n < tables.KeyScript.size(); ++n) {
    Stack(tables.KeyScript[n], lines);
  }
  if (has_program) {
    Stack("WAIT PIPE PipeNumber", lines);
  }
  return lines;
}

// A file name as one word of a shell command line, whatever bytes it holds.
std::string ShellWord(const std::string& name) {
  constexpr std::string_view kPlain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-/+,:@%";
  if (name.find_first_not_of(kPlain) == std::string::npos) {
    return name;
  }
  return Quote(Change(name, "'", R"('\'')"), '\'');
}

}  // namespace

void WriteKeyScript(const ProfileTables& tables, const RunOptions& options, Platform& platform,
                    Output& output) {
  const int status = platform.RunShell("dcopy > " + ShellWord(options.KeyScriptFile),
                                       ScriptLines(tables, options, platform));
  if (status != 0) {
    throw Stop{1};
  }
  output.PrintLine("Keyboard profile written to " + Quote(options.KeyScriptFile, '\''));
}

}  // namespace ptick
