#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "companion/command_line.h"

namespace ptick::companion::testing {

enum class By { kLine, kProgram };

/// The options of a program that has one of each kind.
struct Parsed {
  bool all = false;
  std::optional<std::string> title;
  std::vector<std::string> folders;
  std::uint64_t context = 3;
  By by = By::kLine;
  std::optional<double> percent;
  std::optional<std::size_t> position;
  std::vector<std::string> operands;
};

void Describe(CommandLine& line, Parsed& parsed);

/// What arguments come to, in words: "all title=T | <operand>", "wrong: unknown option '-x'".
std::string Outcome(const std::vector<std::string>& arguments);

struct Typed {
  std::vector<std::string> arguments;
  std::string want;
};

/// Expects each outcome.
void Check(const std::vector<Typed>& rows);

}  // namespace ptick::companion::testing
