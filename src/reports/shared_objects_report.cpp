#include "reports/shared_objects_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "reports/report_heading.h"
#include "value/mask.h"
#include "value/text.h"

namespace ptick {

namespace {

constexpr std::int64_t kNameWidth = 60;
// Sizes are asked for so many names at a time: enough to keep every core busy, few enough to show
// the first lines soon and to hold little.
constexpr std::size_t kBatchSize = 256;

ColumnTitles ObjectColumns(bool with_sizes) {
  const std::string title = "Shared object name";
  const std::string rule = "------ ------ ----";
  if (!with_sizes) {
    return {.heading = title, .title = title, .rule = rule};
  }
  const Mask name_mask = Mask::Left(kNameWidth);
  const std::string sizes_title = name_mask.Format(title) + " Sizes";
  return {.heading = sizes_title, .title = sizes_title, .rule = name_mask.Format(rule) + " -----"};
}

std::vector<std::string_view> SortedNames(const FieldList& objects) {
  std::vector<std::string_view> names;
  names.reserve(objects.size());
  for (std::size_t n = 0; n < objects.size(); ++n) {
    names.push_back(objects[n]);
  }
  std::sort(names.begin(), names.end());
  return names;
}

void PrintObject(std::string_view name, std::string_view size, Output& output) {
  std::string line = Mask::Left(kNameWidth).Format(name);
  line += ' ';
  line += size;
  output.PrintLine(TrimTrailing(line));
}

// A name that holds blanks becomes several words; none of them reaches a shell.
std::vector<std::string> SizeCommand(std::string_view name) {
  std::vector<std::string> words{"size"};
  while (!name.empty()) {
    const std::size_t blank = std::min(name.find(' '), name.size());
    if (blank > 0) {
      words.emplace_back(name.substr(0, blank));
    }
    name.remove_prefix(std::min(blank + 1, name.size()));
  }
  return words;
}

// Prints sorted names with their sizes. Equal names are next to each other and share one run.
void PrintWithSizes(std::span<const std::string_view> names, Platform& platform, Output& output) {
  std::vector<std::vector<std::string>> commands;
  for (std::size_t n = 0; n < names.size(); ++n) {
    if (n == 0 || names[n] != names[n - 1]) {
      commands.push_back(SizeCommand(names[n]));
    }
  }
  std::vector<std::string> sizes;
  sizes.reserve(commands.size());
  platform.CaptureFirstLines(commands,
                             [&sizes](std::string_view line) { sizes.emplace_back(line); });
  std::size_t run = 0;
  for (std::size_t n = 0; n < names.size(); ++n) {
    if (n > 0 && names[n] != names[n - 1]) {
      ++run;
    }
    PrintObject(names[n], sizes[run], output);
  }
}

}  // namespace

void ReportSharedObjects(const ReportJob& job) {
  // "objecs" is the text that users' scripts look for.
  BeginReport(ReportTitle("Shared objecs used by program ", job.tables),
              ObjectColumns(job.options.Verbose), job);
  const std::vector<std::string_view> names = SortedNames(job.tables.SharedObjects);
  if (!job.options.Verbose) {
    for (const std::string_view name : names) {
      PrintObject(name, "", job.output);
    }
    return;
  }
  const std::span<const std::string_view> all(names);
  for (std::size_t start = 0; start < all.size(); start += kBatchSize) {
    PrintWithSizes(all.subspan(start, std::min(kBatchSize, all.size() - start)), job.platform,
                   job.output);
  }
}

}  // namespace ptick
