// The command line of ptick-diff.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "companion/command_line.h"
#include "compare/kind.h"
#include "compare/row_order.h"
#include "value/value.h"

namespace ptick::compare {

enum class Form { kText, kJson, kCsv };

struct DiffOptions {
  Kind by = Kind::kLine;
  SortBy sort = SortBy::kChange;
  /// How many rows are shown; all with kAllRows, the form's own number when absent.
  std::optional<std::uint64_t> top;
  bool shows_noise = false;
  bool normalize = false;
  bool is_json = false;
  bool is_csv = false;
  std::vector<std::string> old_sources;
  std::vector<std::string> new_sources;
  /// In per cent, written in digits.
  std::optional<Value> fail_slower;
  std::optional<Value> fail_slower_row;
  std::vector<std::string> profiles;
  /// Where --vs is among the profiles.
  std::optional<std::size_t> vs;

  Form GetForm() const { return is_json ? Form::kJson : is_csv ? Form::kCsv : Form::kText; }
  /// The profiles of each side, when the command line was parsed.
  std::span<const std::string> OldProfiles() const;
  std::span<const std::string> NewProfiles() const;
};

constexpr std::uint64_t kAllRows = ~std::uint64_t{0};

/// Adds what ptick-diff takes to a command line, which keeps references to the options.
void DescribeDiff(companion::CommandLine& line, DiffOptions& options);

}  // namespace ptick::compare
