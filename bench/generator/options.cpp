#include "generator/options.h"

#include <charconv>
#include <concepts>
#include <stdexcept>
#include <string>

namespace ptick::bench {

namespace {

/// The arguments from front to back.
class Arguments {
 public:
  explicit Arguments(std::span<const char* const> all) : rest_(all) {}

  bool AtEnd() const { return rest_.empty(); }

  std::string_view Next() {
    if (rest_.empty()) {
      throw std::invalid_argument("an argument is missing at the end");
    }
    const std::string_view argument = rest_.front();
    rest_ = rest_.subspan(1);
    return argument;
  }

  template <std::unsigned_integral Number>
  Number NextNumber() {
    const std::string_view text = Next();
    const char* const end = text.data() + text.size();
    Number number = 0;
    const auto [parsed_to, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || parsed_to != end || number == 0) {
      throw std::invalid_argument("not a number above 0: " + std::string(text));
    }
    return number;
  }

 private:
  std::span<const char* const> rest_;
};

Records ParseRecords(std::string_view name) {
  struct Named {
    std::string_view name;
    Records kind;
  };
  for (const Named& known :
       {Named{"trace", Records::kTrace}, Named{"perform", Records::kPerform},
        Named{"subroutine_call", Records::kSubroutineCall},
        Named{"shared_object", Records::kSharedObject}, Named{"input", Records::kInput}}) {
    if (known.name == name) {
      return known.kind;
    }
  }
  throw std::invalid_argument("unknown kind of records: " + std::string(name));
}

void ParseArgument(std::string_view argument, Arguments& rest, GenerateOptions& options) {
  if (argument == "--lines") {
    options.lines = rest.NextNumber<std::uint32_t>();
  } else if (argument == "--programs") {
    options.programs = rest.NextNumber<std::uint32_t>();
  } else if (argument == "--last-line") {
    options.last_line = rest.NextNumber<std::uint32_t>();
  } else if (argument == "--files") {
    options.files = rest.NextNumber<std::uint32_t>();
  } else if (argument == "--seed") {
    options.seed = rest.NextNumber<std::uint64_t>();
  } else if (argument == "--records") {
    options.kind = ParseRecords(rest.Next());
  } else if (argument == "--sources") {
    options.sources = rest.Next();
  } else if (argument == "--distinct-keys") {
    options.keys = TraceKeys::kDistinct;
  } else if (argument == "--common") {
    options.keys = TraceKeys::kCommon;
  } else if (argument.starts_with("-") || !options.file.empty()) {
    throw std::invalid_argument("unexpected argument: " + std::string(argument));
  } else {
    options.file = argument;
  }
}

}  // namespace

GenerateOptions ParseGenerateOptions(std::span<const char* const> arguments) {
  GenerateOptions options;
  for (Arguments rest(arguments); !rest.AtEnd();) {
    const std::string_view argument = rest.Next();
    ParseArgument(argument, rest, options);
  }
  if (options.file.empty()) {
    throw std::invalid_argument("no file named");
  }
  return options;
}

}  // namespace ptick::bench
