// What a companion has to say about its inputs and its result.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ptick::companion {

/// One thing that is wrong, or worth knowing: where, and what. Texts are as the user typed them and
/// as they were read, bytes of any kind.
struct Problem {
  /// The file as it was named on the command line; absent when no file is concerned.
  std::optional<std::string> file;
  /// The line in it, counted from 1.
  std::optional<std::uint64_t> line;
  std::string reason;
};

/// Ends a companion: the problem is told, no result is left, the status is kTrouble.
class Trouble : public std::exception {
 public:
  explicit Trouble(Problem problem) : problem_(std::move(problem)) {}
  explicit Trouble(std::string reason)
      : problem_{.file = std::nullopt, .line = std::nullopt, .reason = std::move(reason)} {}
  /// Trouble with a file that a system call reports by an error number.
  Trouble(std::string_view file, int error);

  const Problem& What() const { return problem_; }
  const char* what() const noexcept override { return problem_.reason.c_str(); }

 private:
  Problem problem_;
};

/// How messages name an input or a result: "-" is "standard input", all else is its name.
std::string InputName(std::string_view operand);

/// The line that tells of a problem, with its line end: "ptick-diff: run1: line 12: REASON".
std::string MessageLine(std::string_view program, const Problem& problem);

}  // namespace ptick::companion
