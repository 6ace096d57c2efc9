#include "companion/help_text.h"

#include <cstddef>
#include <string_view>

namespace ptick::companion {

namespace {

constexpr std::size_t kColumns = 79;
constexpr std::size_t kHelpColumn = 28;

// Adds words to a text whose last line is `column` long, going on at `indent` on further lines.
void AppendWords(std::string& text, std::string_view words, std::size_t column,
                 std::size_t indent) {
  bool is_line_begin = true;
  while (!words.empty()) {
    const std::string_view word = words.substr(0, words.find(' '));
    words.remove_prefix(word.size() < words.size() ? word.size() + 1 : word.size());
    if (!is_line_begin && column + 1 + word.size() > kColumns) {
      text += '\n';
      text.append(indent, ' ');
      column = indent;
      is_line_begin = true;
    }
    if (!is_line_begin) {
      text += ' ';
      ++column;
    }
    text += word;
    column += word.size();
    is_line_begin = false;
  }
  text += '\n';
}

std::string Names(const OptionInfo& option) {
  std::string names = "  ";
  if (option.short_name == 0) {
    names += "    ";
  } else {
    names += '-';
    names += option.short_name;
    names += option.long_name.empty() ? "" : ", ";
  }
  if (!option.long_name.empty()) {
    names += "--" + option.long_name;
  }
  if (!option.value_name.empty()) {
    names += (option.long_name.empty() ? " " : "=") + option.value_name;
  }
  return names;
}

void AppendOption(std::string& text, const OptionInfo& option) {
  const std::string names = Names(option);
  text += names;
  if (names.size() + 2 > kHelpColumn) {
    text += '\n';
    text.append(kHelpColumn, ' ');
  } else {
    text.append(kHelpColumn - names.size(), ' ');
  }
  AppendWords(text, option.help, kHelpColumn, kHelpColumn);
}

}  // namespace

std::string OptionName(const OptionInfo& option) {
  return option.long_name.empty() ? std::string{'-', option.short_name} : "--" + option.long_name;
}

std::string Format(const HelpText& help) {
  std::string text;
  for (const std::string& usage : help.usage) {
    text += text.empty() ? "Usage: " : "  or:  ";
    text += help.program + " " + usage + "\n";
  }
  text += '\n';
  AppendWords(text, help.summary, 0, 0);
  text += "\nOptions:\n";
  for (const OptionInfo& option : help.options) {
    AppendOption(text, option);
  }
  for (const std::string& note : help.notes) {
    text += '\n';
    AppendWords(text, note, 0, 0);
  }
  return text;
}

}  // namespace ptick::companion
