// CLI11 does this, with two of its ways kept out: it takes the value of `--name=`, which is empty,
// from the next argument, and reads what follows the `-` of `-q-` as an argument of its own. Marks
// in those places, zero bytes, which no argument holds, keep it from both.

#include "companion/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "companion/usage_error.h"

namespace ptick::companion {

namespace {

constexpr char kMark = '\0';
// What is left of `-q-` when -q is taken off.
constexpr std::string_view kUnknownDash("-\0", 2);

std::string Marked(const std::string& argument) {
  if (argument.starts_with("--")) {
    return argument.find('=') == std::string::npos ? argument : argument + kMark;
  }
  std::string marked;
  for (std::size_t i = 0; i < argument.size(); ++i) {
    if (argument.front() == '-' && argument[i] == '-' && i >= 2) {
      marked += kMark;
    }
    marked += argument[i];
  }
  return marked;
}

std::string Unmarked(std::string argument) {
  std::erase(argument, kMark);
  return argument;
}

std::string ParserNames(const OptionInfo& option) {
  std::string names;
  if (option.short_name != 0) {
    names = {'-', option.short_name};
  }
  if (!option.long_name.empty()) {
    names += (names.empty() ? "--" : ",--") + option.long_name;
  }
  return names;
}

// What the parser says of a mismatch begins with the option.
std::string Mismatch(const std::vector<OptionInfo>& options, const CLI::ArgumentMismatch& error) {
  const std::string text = error.what();
  const std::string name = text.substr(0, text.find_first_of(": "));
  for (const OptionInfo& option : options) {
    if (!option.value_name.empty() && OptionName(option) == name) {
      return "option '" + name + "' needs a value";
    }
  }
  return "option '--" + name + "' takes no value";
}

class Parser {
 public:
  explicit Parser(const std::vector<OptionInfo>& options) : options_(options) {
    app_.set_help_flag();
    app_.allow_extras();
    for (std::size_t i = 0; i < options.size(); ++i) {
      if (options[i].divides_operands) {
        continue;
      }
      CLI::Option* added = options[i].value_name.empty()
                               ? app_.add_flag(ParserNames(options[i]))->disable_flag_override()
                               : app_.add_option(ParserNames(options[i]))->expected(1);
      added->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
      places_[added] = i;
    }
  }

  Arguments Parse(const std::vector<std::string>& arguments) {
    std::vector<std::string> last_first(arguments.size());
    std::transform(arguments.rbegin(), arguments.rend(), last_first.begin(), Marked);
    try {
      app_.parse(std::move(last_first));
    } catch (const CLI::ArgumentMismatch& error) {
      throw UsageError(Mismatch(options_, error));
    }
    Arguments parsed;
    std::map<const CLI::Option*, std::size_t> taken;
    for (const CLI::Option* option : app_.parse_order()) {
      const std::size_t place = places_.at(option);
      const std::string& value = option->results().at(taken[option]++);
      const bool has_value = !options_[place].value_name.empty();
      parsed.options.push_back({.option = place, .value = has_value ? Unmarked(value) : ""});
    }
    for (const std::string& argument : app_.remaining()) {
      if (argument.starts_with(kUnknownDash)) {
        throw UsageError("unknown option '" + Unmarked(argument) + "'");
      }
      parsed.rest.push_back(Unmarked(argument));
    }
    return parsed;
  }

 private:
  const std::vector<OptionInfo>& options_;
  CLI::App app_;
  std::map<const CLI::Option*, std::size_t> places_;
};

}  // namespace

Arguments ParseArguments(const std::vector<OptionInfo>& options,
                         const std::vector<std::string>& arguments) {
  return Parser(options).Parse(arguments);
}

}  // namespace ptick::companion
