#include "ptick_diff/diff_options.h"

#include <algorithm>
#include <string_view>

#include "companion/usage_error.h"
#include "value/number_text.h"

namespace ptick::compare {

namespace {

using companion::UsageError;

std::uint64_t ParseTop(std::string_view text) {
  if (text == "all") {
    return kAllRows;
  }
  try {
    return companion::ParseWholeNumber(text, {.least = 1, .most = kAllRows - 1});
  } catch (const UsageError&) {
    throw UsageError("a number of rows from 1 on, or all");
  }
}

// A percentage is digits, and digits after a point if need be.
Value ParsePercent(std::string_view text) {
  const std::optional<DecimalDigits> digits = SplitDecimal(text);
  if (!digits || text.front() < '0' || text.front() > '9') {
    throw UsageError("a percentage such as 5 or 2.5");
  }
  return {*ParseNumber(text)};
}

void CheckOperands(const DiffOptions& options) {
  const std::size_t count = options.profiles.size();
  if (!options.vs) {
    if (count != 2) {
      throw UsageError(count < 2 ? "two profiles are needed, OLD and NEW"
                                 : "'--vs' is needed between the old and the new profiles");
    }
  } else if (*options.vs == 0 || *options.vs == count) {
    throw UsageError("profiles are needed on both sides of '--vs'");
  }
  if (std::ranges::count(options.profiles, "-") > 1) {
    throw UsageError("standard input, '-', can be read only once");
  }
}

void CheckSources(const DiffOptions& options) {
  if (options.old_sources.empty() != options.new_sources.empty()) {
    throw UsageError("'--old-source' and '--new-source' need each other");
  }
  if (!options.old_sources.empty() && options.by != Kind::kLine) {
    throw UsageError("sources are for '--by=line'");
  }
}

void CheckDiff(const DiffOptions& options) {
  CheckOperands(options);
  CheckSources(options);
  if (options.is_json && options.is_csv) {
    throw UsageError("there can be only one of '--json' and '--csv'");
  }
  if (options.fail_slower && options.normalize) {
    throw UsageError(
        "'--fail-slower' would never fail with '--normalize', which makes totals equal");
  }
  if (options.fail_slower_row && !IsSampled(options.by)) {
    throw UsageError("'--fail-slower-row' is for '--by=line' and '--by=program'");
  }
}

void DescribeRows(companion::CommandLine& line, DiffOptions& options) {
  line.Choice<Kind>("--by", "KIND",
                    "what the rows are of: line (ticks by program and line, the default), program "
                    "(ticks), command, subroutine, counter",
                    {{"line", Kind::kLine},
                     {"program", Kind::kProgram},
                     {"command", Kind::kCommand},
                     {"subroutine", Kind::kSubroutine},
                     {"counter", Kind::kCounter}},
                    options.by)
      .Choice<SortBy>("--sort", "ORDER",
                      "the order of the rows: change (the largest first, the default), relative "
                      "(to the old value), old, new, name",
                      {{"change", SortBy::kChange},
                       {"relative", SortBy::kRelative},
                       {"old", SortBy::kOld},
                       {"new", SortBy::kNew},
                       {"name", SortBy::kName}},
                      options.sort)
      .Value("--top", "N", "show the first N rows, or all; by itself 30 on a terminal, else all",
             [&options](std::string_view text) { options.top = ParseTop(text); })
      .Flag("--all", "show the rows within noise, too, each marked ~", options.shows_noise)
      .Flag("--normalize", "take the new side times what makes the totals equal", options.normalize)
      .Texts("--old-source", "DIR",
             "look for the old sources in DIR, so that lines that moved are followed; several "
             "are asked in their order",
             options.old_sources)
      .Texts("--new-source", "DIR", "look for the new sources in DIR", options.new_sources);
}

}  // namespace

std::span<const std::string> DiffOptions::OldProfiles() const {
  return std::span(profiles).first(vs.value_or(1));
}

std::span<const std::string> DiffOptions::NewProfiles() const {
  return std::span(profiles).subspan(vs.value_or(1));
}

void DescribeDiff(companion::CommandLine& line, DiffOptions& options) {
  line.Usage("[OPTION]... OLD NEW")
      .Usage("[OPTION]... OLD... --vs NEW...")
      .Summary(
          "Shows what became slower or faster from the OLD profiles to the NEW ones, and leaves "
          "out what chance explains. Several profiles of a side are runs of the same program: "
          "their means are compared. A profile of - is standard input.");
  DescribeRows(line, options);
  line.Value("--fail-slower", "PERCENT",
             "exit with status 1 when the total grew by more than PERCENT, and not by noise",
             [&options](std::string_view text) { options.fail_slower = ParsePercent(text); })
      .Value("--fail-slower-row", "PERCENT",
             "the same when any row grew by more than PERCENT of the old total",
             [&options](std::string_view text) { options.fail_slower_row = ParsePercent(text); })
      .Flag("--json", "write JSON with all rows, or as many as --top says", options.is_json)
      .Flag("--csv", "write the same as CSV", options.is_csv)
      .Separator("--vs", "parts the OLD profiles from the NEW ones", options.vs)
      .Operands(options.profiles)
      .Check([&options] { CheckDiff(options); });
}

}  // namespace ptick::compare
