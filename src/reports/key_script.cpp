#include "reports/key_script.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "figures/clock_time.h"
#include "output/stop.h"
#include "reports/input_lines.h"
#include "value/arithmetic.h"
#include "value/conversion.h"
#include "value/dynamic_array.h"
#include "value/text.h"

namespace ptick {

namespace {

// Adds text to the script; each field of it becomes a line.
void AppendLines(std::string_view text, std::string& lines) {
  const std::size_t start = lines.size();
  lines += text;
  std::replace(lines.begin() + static_cast<std::ptrdiff_t>(start), lines.end(), kFieldMark, '\n');
  lines += '\n';
}

void AppendBanner(Platform& platform, std::string& lines) {
  const ZoneOffset zone = [&platform](std::int64_t time) { return platform.ZoneOffset(time); };
  AppendLines("*", lines);
  AppendLines("* This script created at " + TimeDate(platform.Now(), zone) + " , port " +
                  platform.OwnPort() + " , account " + platform.AccountName(),
              lines);
  AppendLines("*", lines);
}

// The replayed program runs with "-J" where it was profiled with "-JP".
void AppendProgram(std::string_view command, std::string& lines) {
  AppendLines("PROGRAM " + Quote(Change(command, " -JP", " -J"), '"') + R"( STDOUT "-" STDERR "-")",
              lines);
  AppendLines("PipeNumber = $PIPE", lines);
}

// Seconds per keystroke over the whole run. No characters count as one, so that the time spent
// typing remains.
std::string TypeDelay(const TypingRate& rate, const Value& hertz) {
  Value characters = rate.characters;
  if (characters == 0) {
    characters = 1;
  }
  return Seconds(Divide(rate.ticks, characters), hertz).Text();
}

std::string ScriptLines(const ReportJob& job) {
  const ProfileTables& tables = job.tables;
  const bool typing_rate = job.options.TypeRateOption;
  std::string lines;
  AppendBanner(job.platform, lines);
  const bool has_program = !tables.ProgramCommand.empty();
  if (has_program) {
    AppendProgram(tables.ProgramCommand, lines);
  }
  if (!typing_rate && !tables.Hertz.Empty() && tables.TypeRate) {
    AppendLines("TYPEDELAY " + TypeDelay(*tables.TypeRate, tables.Hertz), lines);
  }
  InputLines(typing_rate).AppendAll(tables.Inputs, lines);
  if (has_program) {
    AppendLines("WAIT PIPE PipeNumber", lines);
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

void WriteKeyScript(const ReportJob& job) {
  const std::string& name = job.options.KeyScriptFile;
  const int status = job.platform.RunShell("dcopy > " + ShellWord(name), ScriptLines(job));
  if (status != 0) {
    throw Stop{1};
  }
  job.output.PrintLine("Keyboard profile written to " + Quote(name, '\''));
}

}  // namespace ptick
