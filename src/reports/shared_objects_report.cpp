#include "reports/shared_objects_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
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

/// A distinct name and how often it comes.
struct Object {
  std::string_view name;
  std::size_t copies = 0;
};

// In the order of the names.
std::vector<Object> SortedObjects(const NameList& names) {
  std::vector<Object> objects(names.Names().size());
  for (NameTable::Id id = 0; id < objects.size(); ++id) {
    objects[id].name = names.Names()[id];
  }
  for (std::size_t n = 0; n < names.size(); ++n) {
    ++objects[names.IdOf(n)].copies;
  }
  std::ranges::sort(objects, {}, &Object::name);
  return objects;
}

// A row for each copy.
void PrintObject(const Object& object, std::string_view size, Output& output) {
  std::string line = Mask::Left(kNameWidth).Format(object.name);
  line += ' ';
  line += size;
  const std::string_view row = TrimTrailing(line);
  for (std::size_t copy = 0; copy < object.copies; ++copy) {
    output.PrintLine(row);
  }
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

// Prints objects with their sizes. Each is asked for once, however often it comes.
void PrintWithSizes(std::span<const Object> objects, Platform& platform, Output& output) {
  bool complained = false;
  while (!objects.empty()) {
    const std::span<const Object> batch = objects.first(std::min(kBatchSize, objects.size()));
    std::vector<std::vector<std::string>> commands;
    for (const Object& object : batch) {
      commands.push_back(SizeCommand(object.name));
    }
    const FirstLines sizes = platform.CaptureFirstLines(commands);
    if (sizes.error != 0 && !complained) {
      output.PrintMessage("cannot run size: " + std::generic_category().message(sizes.error));
      output.FailAtEnd();
      complained = true;
    }
    for (std::size_t n = 0; n < batch.size(); ++n) {
      PrintObject(batch[n], sizes.lines[n], output);
    }
    objects = objects.subspan(batch.size());
  }
}

}  // namespace

void ReportSharedObjects(const ReportJob& job) {
  // "objecs" is the text that users' scripts look for.
  BeginReport(ReportTitle("Shared objecs used by program ", job.tables),
              ObjectColumns(job.options.Verbose), job);
  const std::vector<Object> objects = SortedObjects(job.tables.SharedObjects);
  if (job.options.Verbose) {
    PrintWithSizes(objects, job.platform, job.output);
    return;
  }
  for (const Object& object : objects) {
    PrintObject(object, "", job.output);
  }
}

}  // namespace ptick
