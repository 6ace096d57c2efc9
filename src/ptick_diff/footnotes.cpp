#include "ptick_diff/footnotes.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "companion/number_text.h"
#include "compare/as_double.h"
#include "ptick_diff/fields.h"
#include "ptick_diff/figure_text.h"
#include "value/number_text.h"

namespace ptick::compare {

namespace {

using companion::GroupedCount;

// "1 line", "1,204 lines".
std::string Count(std::size_t count, std::string_view what) {
  return fmt::format("{} {}{}", GroupedCount(count), what, count == 1 ? "" : "s");
}

double SizeOfChanges(const Diff& diff, std::span<const std::uint32_t> rows) {
  double size = 0;
  for (const std::uint32_t place : rows) {
    size += std::abs(AsDouble(diff.comparison.Change(diff.RowAt(place))));
  }
  return size;
}

void AddShown(const Diff& diff, std::span<const std::uint32_t> rows, std::size_t shown,
              std::vector<std::string>& notes) {
  const std::string_view kind = KindName(diff.By());
  const std::size_t noise = diff.order.size() - rows.size();
  if (diff.order.empty()) {
    notes.push_back(fmt::format("No {} changed.", kind));
  } else if (rows.empty()) {
    notes.push_back(fmt::format("No {} changed beyond noise.", kind));
  } else if (shown < rows.size()) {
    // Counters are of many units, which do not add up.
    const std::string share = diff.By() == Kind::kCounter
                                  ? ""
                                  : fmt::format(", {} % of all they changed",
                                                PercentText(SizeOfChanges(diff, rows.first(shown)),
                                                            SizeOfChanges(diff, rows)));
    notes.push_back(fmt::format("top {} of {} that changed{}", GroupedCount(shown),
                                Count(rows.size(), kind), share));
  }
  if (noise > 0) {
    notes.push_back(fmt::format("{}{} {}{} changed within noise (--all shows {})",
                                GroupedCount(noise), rows.empty() ? "" : " more", kind,
                                noise == 1 ? "" : "s", noise == 1 ? "it" : "them"));
  }
}

void AddTest(const Diff& diff, std::vector<std::string>& notes) {
  if (!IsSampled(diff.By()) || diff.order.empty()) {
    return;
  }
  const std::vector<Row>& rows = diff.comparison.Rows();
  const auto tested = static_cast<std::size_t>(std::ranges::count_if(rows, &Row::IsTested));
  if (tested > 0) {
    notes.push_back(fmt::format("Noise: {}, false discovery rate 5 % over {}",
                                diff.comparison.IsWelch() ? "Welch's t-test of the runs"
                                                          : "exact binomial test of the ticks",
                                Count(tested, KindName(diff.By()))));
  }
  if (tested < rows.size()) {
    notes.push_back(fmt::format("{} not tested: ticks that are negative or not whole",
                                Count(rows.size() - tested, KindName(diff.By()))));
  }
}

void AddScale(const Diff& diff, std::vector<std::string>& notes) {
  if (diff.is_normalized) {
    notes.push_back(
        fmt::format("New figures below the head are taken times {}: the totals are equal",
                    NumberText(diff.comparison.Scale())));
  }
}

void AddSources(const Diff& diff, std::vector<std::string>& notes) {
  const std::vector<std::string>& programs = diff.programs_without_source;
  if (!programs.empty()) {
    std::string names;
    for (const std::string& program : programs) {
      names += (names.empty() ? "" : ", ") + program;
    }
    notes.push_back(fmt::format("Lines compared by number, for a source was not found: {}", names));
  }
  if (const std::size_t rows = diff.comparison.RowsPastTheEnd(); rows > 0) {
    notes.push_back(fmt::format("{} past the end of {}: sources of other versions?",
                                Count(rows, "line"), rows == 1 ? "its source" : "their sources"));
  }
}

}  // namespace

std::vector<std::string> Footnotes(const Diff& diff, std::span<const std::uint32_t> rows,
                                   std::size_t shown) {
  std::vector<std::string> notes;
  AddShown(diff, rows, shown, notes);
  AddTest(diff, notes);
  AddScale(diff, notes);
  AddSources(diff, notes);
  return notes;
}

}  // namespace ptick::compare
