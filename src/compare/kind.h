// What a comparison of profiles has rows of.
#pragma once

namespace ptick::compare {

enum class Kind {
  kLine,        ///< ticks by program and line
  kProgram,     ///< ticks by program
  kCommand,     ///< performed commands by their text: times, elapsed and CPU seconds, ticks
  kSubroutine,  ///< times by caller and subroutine
  kCounter,     ///< header values that count, and elapsed time
};

/// Whether rows of that kind are ticks, samples of what runs, so that chance can be told from
/// change.
constexpr bool IsSampled(Kind kind) { return kind == Kind::kLine || kind == Kind::kProgram; }

}  // namespace ptick::compare
