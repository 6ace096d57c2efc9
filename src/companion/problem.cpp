#include "companion/problem.h"

#include <system_error>

namespace ptick::companion {

Trouble::Trouble(std::string_view file, int error)
    : problem_{.file = std::string(file),
               .line = std::nullopt,
               .reason = std::generic_category().message(error)} {}

std::string InputName(std::string_view operand) {
  return std::string(operand == "-" ? "standard input" : operand);
}

std::string MessageLine(std::string_view program, const Problem& problem) {
  std::string text(program);
  if (problem.file) {
    // An empty name would leave nothing to see between the colons.
    text += ": " + (problem.file->empty() ? "''" : *problem.file);
  }
  if (problem.line) {
    text += ": line " + std::to_string(*problem.line);
  }
  text += ": " + problem.reason + "\n";
  return text;
}

}  // namespace ptick::companion
