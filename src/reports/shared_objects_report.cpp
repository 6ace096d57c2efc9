#include "reports/shared_objects_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "reports/report_heading.h"
#include "value/mask.h"
#include "value/text.h"

namespace ptick {

namespace {

constexpr std::int64_t kNameWidth = 60;
// Sizes are asked for so many names at a time: enough for many to be asked for at once, few enough
// to show the first lines soon and to hold little.
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

// A word of a name as an argument of "size", which takes what begins with "-" for options and what
// begins with "@" for a file of arguments, whose words it would show.
std::string FileArgument(std::string_view word) {
  const bool is_a_name = word.front() != '-' && word.front() != '@';
  return (is_a_name ? "" : "./") + std::string(word);
}

// A name that holds blanks becomes several words; none of them reaches a shell.
std::vector<std::string> SizeCommand(std::string_view name) {
  std::vector<std::string> words{"size"};
  while (!name.empty()) {
    const std::size_t blank = std::min(name.find(' '), name.size());
    if (blank > 0) {
      words.push_back(FileArgument(name.substr(0, blank)));
    }
    name.remove_prefix(std::min(blank + 1, name.size()));
  }
  return words;
}

using NameIterator = std::vector<std::string_view>::const_iterator;

// The end of the copies of a name in sorted names that end at `end`.
NameIterator AfterCopies(NameIterator name, NameIterator end) {
  return std::find_if(name, end, [name](std::string_view other) { return other != *name; });
}

// Prints sorted names with their sizes. Each name is asked for once, however often it comes.
void PrintWithSizes(const std::vector<std::string_view>& names, Platform& platform,
                    Output& output) {
  bool complained = false;
  for (auto name = names.begin(); name != names.end();) {
    std::vector<std::vector<std::string>> commands;
    for (auto next = name; next != names.end() && commands.size() < kBatchSize;
         next = AfterCopies(next, names.end())) {
      commands.push_back(SizeCommand(*next));
    }
    const FirstLines sizes = platform.CaptureFirstLines(commands);
    if (sizes.error != 0 && !complained) {
      output.PrintMessage("cannot run size: " + std::generic_category().message(sizes.error));
      output.FailAtEnd();
      complained = true;
    }
    for (const std::string& size : sizes.lines) {
      for (const auto end = AfterCopies(name, names.end()); name != end; ++name) {
        PrintObject(*name, size, output);
      }
    }
  }
}

}  // namespace

void ReportSharedObjects(const ReportJob& job) {
  // "objecs" is the text that users' scripts look for.
  BeginReport(ReportTitle("Shared objecs used by program ", job.tables),
              ObjectColumns(job.options.Verbose), job);
  const std::vector<std::string_view> names = SortedNames(job.tables.SharedObjects);
  if (job.options.Verbose) {
    PrintWithSizes(names, job.platform, job.output);
    return;
  }
  for (const std::string_view name : names) {
    PrintObject(name, "", job.output);
  }
}

}  // namespace ptick
