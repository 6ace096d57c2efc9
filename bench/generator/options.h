#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>

namespace ptick::bench {

/// What the lines of a profile are.
enum class Records {
  kTrace,  ///< trace lines, with records of the other types sprinkled in
  kPerform,
  kSubroutineCall,
  kSharedObject,
  kInput,
};

/// Which (program, line) pairs the trace lines name.
enum class TraceKeys {
  kRandom,    ///< any, also the same again
  kDistinct,  ///< no pair twice, in any file
  kCommon,  ///< no pair twice in a file; nearly the same pairs in all files, each in its own order
};

/// What to generate.
struct GenerateOptions {
  std::filesystem::path file;
  std::optional<std::filesystem::path>
      sources;  ///< directory to put a source record per program in
  Records kind = Records::kTrace;
  TraceKeys keys = TraceKeys::kRandom;
  std::uint32_t lines = 1'000'000;
  std::uint32_t programs = 2'000;
  std::uint32_t last_line = 5'000;  ///< programs have the source lines 1 to LastLine
  std::uint32_t files = 1;          ///< more than one: FILE.1, FILE.2, ...
  std::uint64_t seed = 1;
};

inline constexpr std::string_view kGenerateUsage =
    R"(usage: generate_profile [OPTION...] FILE
Writes a big profile, or several; the same options give the same bytes.

  --lines N         lines of the kind asked for, per file (1000000)
  --records KIND    what they are: trace (with other records sprinkled in), perform,
                    subroutine_call, shared_object or input (trace)
  --programs N      number of programs (2000)
  --last-line N     source lines of a program: 1 to N (5000)
  --distinct-keys   no (program, line) pair twice, in any file
  --files K         writes FILE.1 to FILE.K (1)
  --common          with --files: nearly the same pairs in all files, each in its own order
  --sources DIR     also writes a source record of N lines for every program into DIR
  --seed N          (1)
)";

/// The options that the arguments (without the command's name) spell; throws std::invalid_argument.
GenerateOptions ParseGenerateOptions(std::span<const char* const> arguments);

}  // namespace ptick::bench
