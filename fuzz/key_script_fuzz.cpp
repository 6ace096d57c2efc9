// The keyboard script of any typed bytes: what was typed can be read back from it, it is printable
// ASCII, and the name of its file reaches the shell as it is.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "model/comparison.h"
#include "model/model_list.h"
#include "model/typed_run.h"
#include "reports/input_lines.h"
#include "reports/key_script.h"
#include "support/memory_platform.h"
#include "value/number_text.h"
#include "value/text.h"

namespace {

using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The bytes that a replayed text stands for.
std::string Decoded(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    Require(text[i] != '"', "quotes inside are marked");
    if (text[i] != '~') {
      bytes += text[i];
      continue;
    }
    const std::string_view code = text.substr(i + 1, 3);
    Require(!code.empty(), "a tilde marks something");
    if (!IsDigit(code.front())) {
      Require(code.front() == '"' || code.front() == '~', "quotes and tildes are marked");
      bytes += code.front();
      ++i;
    } else {
      Require(code.size() == 3 && std::ranges::all_of(code, IsDigit), "a code has three digits");
      const int number = std::stoi(std::string(code));
      Require(number < 32 || (number > 126 && number < 256), "a code stands for an odd byte");
      bytes += static_cast<char>(number);
      i += 3;
    }
  }
  return bytes;
}

// The bytes of a line 'INPUT "..."', and whether Return follows them.
std::string InputOf(std::string_view line, bool& ends_with_return) {
  constexpr std::string_view kStart = "INPUT \"";
  constexpr std::string_view kNoReturn = " NOCR";
  Require(line.starts_with(kStart), "the last line is the input");
  line.remove_prefix(kStart.size());
  ends_with_return = !line.ends_with(kNoReturn);
  line.remove_suffix(ends_with_return ? 0 : kNoReturn.size());
  Require(line.ends_with('"'), "a text is in quotes");
  return Decoded(line.substr(0, line.size() - 1));
}

// A SLEEP or TYPEDELAY line: the word and a number that is not negative.
void CheckDelay(std::string_view line) {
  const std::size_t blank = line.find(' ');
  const std::string_view word = line.substr(0, blank);
  Require(word == "SLEEP" || word == "TYPEDELAY", "delays come before the input");
  const std::string number(line.substr(blank + 1));
  Require(ptick::ParseNumber(number).has_value(), "a delay is a number");
  Require(word != "SLEEP" || number.front() != '-', "a pause is not negative");
}

struct TypedInput {
  std::string code;
  std::string characters;
  std::string start_clock;
  std::string end_clock;
  std::string text;
};

void CheckInput(const TypedInput& input, int code, bool typing_rate) {
  ptick::KeyboardInputs inputs;
  inputs.Add(ptick::ClockSetting::Kind::kHertz, typing_rate ? "100" : "7");
  inputs.Add(ptick::ClockSetting::Kind::kStartClock, "5");
  inputs.Add({{input.code, input.characters, input.start_clock, input.end_clock}, input.text});
  std::string script;
  ptick::InputLines(typing_rate).AppendAll(inputs, script);
  const std::vector<std::string> lines = ptick::model::LinesOf(script);
  for (const std::string& line : lines) {
    Require(std::ranges::all_of(line, [](char c) { return c >= 32 && c <= 126; }),
            "a script is printable ASCII");
    if (&line != &lines.back()) {
      CheckDelay(line);
    }
  }
  bool ends_with_return = false;
  const std::string typed = InputOf(lines.back(), ends_with_return);
  const bool is_return = code == 10 || code == 13;
  Require(ends_with_return == is_return, "Return ends a text, nothing else does");
  const std::string end = code == 0 || is_return ? "" : std::string(1, static_cast<char>(code));
  RequireEqual(input.text + end, typed, "what was typed comes back");
}

// A word of a command line as the shell reads it.
std::string ShellRead(std::string_view word) {
  constexpr std::string_view kSpecial = "|&;<>()$`\\\"' \t\n*?[#~=!{}";
  std::string name;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] == '\'') {
      const std::size_t end = word.find('\'', i + 1);
      Require(end != std::string_view::npos, "a quote ends");
      name += word.substr(i + 1, end - i - 1);
      i = end;
    } else if (word[i] == '\\') {
      Require(i + 1 < word.size(), "a backslash marks something");
      name += word[++i];
    } else {
      Require(kSpecial.find(word[i]) == std::string_view::npos, "special bytes are quoted");
      name += word[i];
    }
  }
  return name;
}

void CheckFileName(const std::string& name) {
  constexpr std::string_view kStart = "dcopy > ";
  if (name.empty()) {
    return;
  }
  ptick::RunOptions options;
  options.KeyScriptFile = name;
  ptick::MemoryPlatform platform;
  ptick::ProfileTables tables;
  const ptick::model::Ran ran = ptick::model::RunTyped([&](ptick::Output& output) {
    ptick::WriteKeyScript({tables, options, platform, output});
  });
  const std::string& command = platform.shell_runs.at(0).command_line;
  Require(command.starts_with(kStart), "the script is copied");
  RequireEqual(name, ShellRead(std::string_view(command).substr(kStart.size())),
               "the file written is the file named");
  RequireEqual("Keyboard profile written to '" + name + "'\n", ran.output, "the file is said");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  const bool typing_rate = input.TakeFlag();
  const int code = input.TakeByte();
  TypedInput typed{.code = std::to_string(code),
                   .characters = input.TakeUpTo('\t'),
                   .start_clock = input.TakeUpTo('\t'),
                   .end_clock = input.TakeUpTo('\t'),
                   .text = ""};
  const std::string name = input.TakeUpTo('\0');
  typed.text = input.TakeUpTo('\0');
  ptick::RunOptions options;
  options.KeyScriptFile = "keys";
  options.TypeRateOption = typing_rate;

  CheckInput(typed, code, typing_rate);
  CheckFileName(name);
  RequireEqual("", ptick::model::KeyScriptDifference(input.TakeRest(), options),
               "the script of a profile is the model's");
  return 0;
}
