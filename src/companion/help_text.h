// The options of a program as its help, man page and completions show them.
#pragma once

#include <string>
#include <vector>

namespace ptick::companion {

struct OptionInfo {
  /// 'o' for -o, 0 for none.
  char short_name = 0;
  /// "output" for --output, empty for none.
  std::string long_name;
  /// "FILE", empty for an option without a value.
  std::string value_name;
  /// The only values that it takes, empty where it takes others.
  std::vector<std::string> choices;
  std::string help;
  /// Whether it is a word among the operands that divides them.
  bool divides_operands = false;
};

/// How messages call it: "--output", or "-f" where there is no long name.
std::string OptionName(const OptionInfo& option);

/// What --help prints: how the program is used, what it does, its options, one below the other.
struct HelpText {
  std::string program;
  /// What follows the program's name: "[OPTION]... OLD NEW".
  std::vector<std::string> usage;
  std::string summary;
  std::vector<OptionInfo> options;
  /// Paragraphs below the options.
  std::vector<std::string> notes;
};

/// No line is longer than 79 columns unless one word is.
std::string Format(const HelpText& help);

}  // namespace ptick::companion
