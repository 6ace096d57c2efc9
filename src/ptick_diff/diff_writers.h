// The forms of a comparison: a table for people, JSON and CSV for programs.
#pragma once

#include <cstdint>
#include <span>

#include "companion/byte_sink.h"
#include "companion/text_form.h"
#include "ptick_diff/diff.h"

namespace ptick::compare {

/// All rows, or the first `top` of them; how many are left out is said.
void WriteDiffJson(const Diff& diff, std::uint64_t top, companion::ByteSink& sink);

/// The same, where nothing is said of rows that are left out: the form has no place for it.
void WriteDiffCsv(const Diff& diff, std::uint64_t top, companion::ByteSink& sink);

struct TableOptions {
  /// How many rows are shown at most.
  std::uint64_t top = 0;
  /// Whether rows within noise are shown, too.
  bool shows_noise = false;
};

/// A head with both sides, the rows, and what is to be known of them.
void WriteDiffTable(const Diff& diff, const TableOptions& options, companion::ByteSink& sink,
                    const companion::TextForm& form);

}  // namespace ptick::compare
