#include "ptick_merge/merge_inputs.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>

#include "companion/inputs/input_lines.h"
#include "companion/number_text.h"
#include "companion/problem.h"
#include "ptick_merge/careful_merge.h"

namespace ptick::companion {

namespace {

std::optional<Problem> TakeInput(const std::string& name, const MergeTools& tools,
                                 CarefulMerge& merge) {
  std::unique_ptr<RecordReader> reader;
  try {
    reader = tools.open(name);
  } catch (const Trouble& trouble) {
    return trouble.What();
  }
  InputLines lines(std::move(reader), InputName(name), tools.progress);
  return merge.Take(lines);
}

}  // namespace

ProfileMerge MergeAll(const NameList& names, const MergeTools& tools) {
  const ProfileInputs inputs(tools.open, tools.progress);
  ProfileMerge merge(tools.memory);
  NameList::Walk walk(names);
  inputs.Merge([&walk] { return walk.Next(); }, tools.threads, merge);
  return merge;
}

GoodMerge MergeGood(const NameList& names, const MergeTools& tools, Messages& messages) {
  CarefulMerge merge(tools.memory);
  std::size_t left_out = 0;
  NameList::Walk walk(names);
  while (const std::optional<std::string> name = walk.Next()) {
    if (const std::optional<Problem> problem = TakeInput(*name, tools, merge)) {
      messages.Tell(*problem);
      ++left_out;
    }
  }
  if (left_out == names.size()) {
    throw Trouble("no profile is left");
  }
  if (left_out > 0) {
    messages.Tell({.file = std::nullopt,
                   .line = std::nullopt,
                   .reason = fmt::format("{} of {} profiles left out", GroupedCount(left_out),
                                         GroupedCount(names.size()))});
  }
  return {.merge = merge.TakeMerge(), .left_out = left_out};
}

}  // namespace ptick::companion
