#include "companion/command_line.h"

#include <algorithm>
#include <charconv>

#include "companion/arguments.h"

namespace ptick::companion {

namespace {

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

// "a, b or c"
std::string Alternatives(const std::vector<std::string>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) {
      text += i + 1 == words.size() ? " or " : ", ";
    }
    text += words[i];
  }
  return text;
}

OptionInfo Named(std::string_view names) {
  OptionInfo option;
  const std::size_t comma = names.find(',');
  for (const std::string_view name :
       {names.substr(0, comma), comma == std::string_view::npos ? "" : names.substr(comma + 1)}) {
    if (name.starts_with("--")) {
      option.long_name = name.substr(2);
    } else if (name.size() == 2) {
      option.short_name = name[1];
    }
  }
  return option;
}

}  // namespace

std::uint64_t ParseWholeNumber(std::string_view text, Bounds bounds) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc() && end == text.data() + text.size() && number >= bounds.least &&
      number <= bounds.most) {
    return number;
  }
  std::string what = "a whole number";
  if (bounds.most != Bounds().most) {
    what += " from " + std::to_string(bounds.least) + " to " + std::to_string(bounds.most);
  } else if (bounds.least > 0) {
    what += " of " + std::to_string(bounds.least) + " or more";
  }
  throw UsageError(what);
}

CommandLine::CommandLine(std::string program) {
  help_.program = std::move(program);
  Text("-o,--output", "FILE",
       "write the result to FILE, whole or not at all; '-' is standard output", common_.output);
  Flag("-q,--quiet", "show no progress", common_.is_quiet);
  Choice<ColorWhen>(
      "--color", "WHEN", "use colour: auto (on a terminal), always or never",
      {{"auto", ColorWhen::kAuto}, {"always", ColorWhen::kAlways}, {"never", ColorWhen::kNever}},
      common_.color);
  Flag("-h,--help", "show this help and end", wants_help_);
  Flag("-V,--version", "show the version and end", wants_version_);
  own_options_ = 0;
}

CommandLine& CommandLine::Usage(std::string line) {
  help_.usage.push_back(std::move(line));
  return *this;
}

CommandLine& CommandLine::Summary(std::string summary) {
  help_.summary = std::move(summary);
  return *this;
}

// Those of the program come before those of all programs.
OptionInfo& CommandLine::Add(std::string_view names, std::string value_name, std::string help,
                             Take take) {
  OptionInfo option = Named(names);
  option.value_name = std::move(value_name);
  option.help = std::move(help);
  const auto place = static_cast<std::ptrdiff_t>(own_options_++);
  takes_.insert(takes_.begin() + place, std::move(take));
  return *help_.options.insert(help_.options.begin() + place, std::move(option));
}

CommandLine& CommandLine::Flag(std::string_view names, std::string help, bool& is_given) {
  Add(names, "", std::move(help), [&is_given](std::string_view /*none*/) { is_given = true; });
  return *this;
}

CommandLine& CommandLine::Value(std::string_view names, std::string value_name, std::string help,
                                std::function<void(std::string_view value)> take) {
  Add(names, std::move(value_name), std::move(help), std::move(take));
  return *this;
}

CommandLine& CommandLine::Text(std::string_view names, std::string value_name, std::string help,
                               std::optional<std::string>& value) {
  return Value(names, std::move(value_name), std::move(help),
               [&value](std::string_view given) { value = given; });
}

CommandLine& CommandLine::Texts(std::string_view names, std::string value_name, std::string help,
                                std::vector<std::string>& values) {
  return Value(names, std::move(value_name), std::move(help),
               [&values](std::string_view given) { values.emplace_back(given); });
}

CommandLine& CommandLine::WholeNumber(std::string_view names, std::string value_name,
                                      std::string help, Bounds bounds, std::uint64_t& value) {
  return Value(
      names, std::move(value_name), std::move(help),
      [bounds, &value](std::string_view given) { value = ParseWholeNumber(given, bounds); });
}

CommandLine& CommandLine::ChoiceOf(std::string_view names, const std::string& value_name,
                                   const std::string& help, std::vector<std::string> words,
                                   const std::function<void(std::size_t index)>& take) {
  const auto take_word = [words, take](std::string_view given) {
    const auto found = std::find(words.begin(), words.end(), given);
    if (found == words.end()) {
      throw UsageError(Alternatives(words));
    }
    take(static_cast<std::size_t>(found - words.begin()));
  };
  Add(names, value_name, help, take_word).choices = std::move(words);
  return *this;
}

CommandLine& CommandLine::Separator(std::string_view name, std::string help,
                                    std::optional<std::size_t>& position) {
  const auto take = [this, &position, option = std::string(name)](std::string_view /*none*/) {
    if (position) {
      throw UsageError("option " + Quoted(option) + " is given twice");
    }
    position = operands_->size();
  };
  Add(name, "", std::move(help), take).divides_operands = true;
  return *this;
}

CommandLine& CommandLine::Operands(std::vector<std::string>& operands, std::size_t least,
                                   std::size_t most) {
  operands_ = &operands;
  least_operands_ = least;
  most_operands_ = most;
  return *this;
}

CommandLine& CommandLine::Check(std::function<void()> check) {
  checks_.push_back(std::move(check));
  return *this;
}

CommandLine& CommandLine::Note(std::string paragraph) {
  help_.notes.push_back(std::move(paragraph));
  return *this;
}

CommandLine::Wish CommandLine::Parse(const std::vector<std::string>& arguments) {
  const Arguments parsed = ParseArguments(help_.options, arguments);
  for (const GivenOption& given : parsed.options) {
    TakeOption(given.option, given.value);
  }
  if (wants_help_ || wants_version_) {
    return wants_help_ ? Wish::kHelp : Wish::kVersion;
  }
  TakeOperands(parsed.rest);
  CheckOperands();
  for (const std::function<void()>& check : checks_) {
    check();
  }
  return Wish::kRun;
}

void CommandLine::TakeOption(std::size_t option, const std::string& value) const {
  try {
    takes_[option](value);
  } catch (const UsageError& error) {
    throw UsageError("option " + Quoted(OptionName(help_.options[option])) + ": " + Quoted(value) +
                     " is not " + error.what());
  }
}

void CommandLine::TakeOperands(const std::vector<std::string>& rest) {
  bool are_options_ended = false;
  for (const std::string& argument : rest) {
    if (are_options_ended || !argument.starts_with('-') || argument == "-") {
      operands_->push_back(argument);
    } else if (argument == "--") {
      are_options_ended = true;
    } else if (!TakeSeparator(argument)) {
      RefuseUnknown(argument);
    }
  }
}

bool CommandLine::TakeSeparator(const std::string& argument) const {
  const std::string name = argument.substr(0, argument.find('='));
  for (std::size_t i = 0; i < help_.options.size(); ++i) {
    if (help_.options[i].divides_operands && OptionName(help_.options[i]) == name) {
      if (name != argument) {
        throw UsageError("option " + Quoted(name) + " takes no value");
      }
      takes_[i]("");
      return true;
    }
  }
  return false;
}

void CommandLine::CheckOperands() const {
  if (operands_->size() < least_operands_) {
    throw UsageError(operands_->empty() ? "missing operand"
                                        : "missing operand after " + Quoted(operands_->back()));
  }
  if (operands_->size() > most_operands_) {
    throw UsageError("extra operand " + Quoted((*operands_)[most_operands_]));
  }
}

void CommandLine::RefuseUnknown(const std::string& argument) const {
  const std::string name = argument.substr(0, argument.find('='));
  const bool is_long = name.size() > 2 && name.starts_with("--");
  std::vector<std::string> meant;
  for (const OptionInfo& option : help_.options) {
    const std::string whole = "--" + option.long_name;
    if (is_long && !option.long_name.empty() && whole.starts_with(name)) {
      meant.push_back(Quoted(whole));
    }
  }
  throw UsageError("unknown option " + Quoted(is_long ? name : argument) +
                   (meant.empty() ? "" : " (did you mean " + Alternatives(meant) + "?)"));
}

}  // namespace ptick::companion
