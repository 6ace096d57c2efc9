// The command line of a companion: its options, once, for parsing, help, man page and completions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "companion/help_text.h"
#include "companion/text_form.h"
#include "companion/usage_error.h"

namespace ptick::companion {

/// The options that all companions have, besides --help and --version.
struct CommonOptions {
  /// Where the result goes; standard output when absent or "-".
  std::optional<std::string> output;
  bool is_quiet = false;
  ColorWhen color = ColorWhen::kAuto;
};

/// The least and the most that a number may be.
struct Bounds {
  std::uint64_t least = 0;
  std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
};

/// The number that a text of digits is; a UsageError says what a text is not that is no such
/// number.
std::uint64_t ParseWholeNumber(std::string_view text, Bounds bounds = {});

/// Options are GNU style: anywhere among the operands, short ones joined (-qo FILE), values as
/// --name=VALUE, --name VALUE, -nVALUE or -n VALUE; "--" ends them, "-" is an operand. Where an
/// option that takes one value is repeated, its last value counts. Long names are typed in full: an
/// abbreviation that is clear today is not when an option is added.
///
/// The functions that add options keep references; what they refer to must live until Parse.
class CommandLine {
 public:
  /// Has the common options, --help and --version.
  explicit CommandLine(std::string program);
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;
  ~CommandLine() = default;

  /// A line of how the program is used, without its name: "[OPTION]... OLD NEW".
  CommandLine& Usage(std::string line);
  /// What the program does, in a sentence or two.
  CommandLine& Summary(std::string summary);

  /// An option without a value. `names` are "-o,--output", or one of the two.
  CommandLine& Flag(std::string_view names, std::string help, bool& is_given);
  /// An option whose value is any text.
  CommandLine& Text(std::string_view names, std::string value_name, std::string help,
                    std::optional<std::string>& value);
  /// The same, all values in their order.
  CommandLine& Texts(std::string_view names, std::string value_name, std::string help,
                     std::vector<std::string>& values);
  /// A whole number, written in digits.
  CommandLine& WholeNumber(std::string_view names, std::string value_name, std::string help,
                           Bounds bounds, std::uint64_t& value);
  /// One of several words.
  template <typename T>
  CommandLine& Choice(std::string_view names, const std::string& value_name,
                      const std::string& help,
                      std::initializer_list<std::pair<std::string_view, T>> choices, T& value) {
    std::vector<std::string> words;
    std::vector<T> values;
    for (const auto& [word, its_value] : choices) {
      words.emplace_back(word);
      values.push_back(its_value);
    }
    return ChoiceOf(names, value_name, help, std::move(words),
                    [values, &value](std::size_t index) { value = values.at(index); });
  }
  /// The same for words that are known when the program runs: `take` gets the place of the word.
  CommandLine& ChoiceOf(std::string_view names, const std::string& value_name,
                        const std::string& help, std::vector<std::string> words,
                        const std::function<void(std::size_t index)>& take);
  /// Any other option. `take` gets each value as it was typed; where that is wrong it throws a
  /// UsageError with what it is not ("a percentage"), and the message says all of it.
  CommandLine& Value(std::string_view names, std::string value_name, std::string help,
                     std::function<void(std::string_view value)> take);
  /// A word among the operands that divides them, at most once. `position` becomes the number of
  /// operands before it.
  CommandLine& Separator(std::string_view name, std::string help,
                         std::optional<std::size_t>& position);

  /// The operands, and how many there must be.
  CommandLine& Operands(std::vector<std::string>& operands, std::size_t least = 0,
                        std::size_t most = std::numeric_limits<std::size_t>::max());
  /// What is to be checked when all has been parsed; throws a UsageError.
  CommandLine& Check(std::function<void()> check);
  /// A paragraph of the help below the options.
  CommandLine& Note(std::string paragraph);

  enum class Wish { kRun, kHelp, kVersion };
  /// Parses the arguments that follow the program's name. Throws a UsageError. To be called once.
  Wish Parse(const std::vector<std::string>& arguments);

  const CommonOptions& Common() const { return common_; }
  /// All options in the order of the help.
  const std::vector<OptionInfo>& Options() const { return help_.options; }
  std::string Help() const { return Format(help_); }

 private:
  using Take = std::function<void(std::string_view value)>;

  OptionInfo& Add(std::string_view names, std::string value_name, std::string help, Take take);
  void TakeOption(std::size_t option, const std::string& value) const;
  void TakeOperands(const std::vector<std::string>& rest);
  bool TakeSeparator(const std::string& argument) const;
  void CheckOperands() const;
  [[noreturn]] void RefuseUnknown(const std::string& argument) const;

  HelpText help_;
  /// What is done with the value of each option.
  std::vector<Take> takes_;
  /// How many options, the first ones, are the program's own.
  std::size_t own_options_ = 0;
  CommonOptions common_;
  bool wants_help_ = false;
  bool wants_version_ = false;
  std::vector<std::string> no_operands_;
  std::vector<std::string>* operands_ = &no_operands_;
  std::size_t least_operands_ = 0;
  std::size_t most_operands_ = 0;
  std::vector<std::function<void()>> checks_;
};

}  // namespace ptick::companion
