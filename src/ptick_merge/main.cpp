// ptick-merge: many profiles as one.
#include <algorithm>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "companion/linux/inputs.h"
#include "companion/linux/program.h"
#include "companion/usage_error.h"
#include "parallel/thread_plan.h"
#include "platform/linux/large_pages.h"
#include "platform/linux/processors.h"
#include "profile/tables/record_types.h"
#include "ptick_merge/merge_inputs.h"
#include "ptick_merge/name_list.h"
#include "value/dynamic_array.h"

namespace ptick::companion {

namespace {

struct MergeOptions {
  /// All that were given: a second list is refused, never passed over.
  std::vector<std::string> line_lists;
  std::vector<std::string> zero_lists;
  bool keeps_going = false;
  std::optional<std::string> program;
  std::vector<std::string> profiles;
};

void Check(const MergeOptions& options) {
  const std::size_t lists = options.line_lists.size() + options.zero_lists.size();
  if (lists > 1) {
    throw UsageError("there can be only one list of profiles");
  }
  if (lists == 1 && !options.profiles.empty()) {
    throw UsageError("profiles are named by a list or as operands, not both");
  }
  if (options.program && options.program->find_first_of({'\n', kFieldMark}) != std::string::npos) {
    throw UsageError("the text of option '--program' has a line end or a byte 254 in it");
  }
}

void Describe(CommandLine& line, MergeOptions& options) {
  line.Usage("[OPTION]... [PROFILE]...")
      .Usage("[OPTION]... --files-from=LIST")
      .Usage("[OPTION]... --files0-from=LIST")
      .Summary(
          "Merges profiles, in their order, and writes one profile: the lines that ptick reads "
          "when it is given the same files. Without PROFILE, or where PROFILE is -, reads standard "
          "input.")
      .Texts("--files-from", "LIST", "merge the profiles that the file LIST names, one a line",
             options.line_lists)
      .Texts("--files0-from", "LIST",
             "merge the profiles that the file LIST names, each name ended by a zero byte",
             options.zero_lists)
      .Flag("-k,--keep-going",
            "leave out what cannot be read or has a record of an unknown type, each such profile "
            "whole; the exit status is 1 then",
            options.keeps_going)
      .Text("--program", "TEXT", "begin with a record that names TEXT as the program that ran",
            options.program)
      .Operands(options.profiles)
      .Check([&options] { Check(options); });
}

NameList NamesIn(const MergeOptions& options) {
  if (!options.line_lists.empty()) {
    return {options.line_lists.front(), NameEnd::kLineEnd, OpenInput};
  }
  if (!options.zero_lists.empty()) {
    return {options.zero_lists.front(), NameEnd::kZero, OpenInput};
  }
  NameList names;
  for (const std::string& profile : options.profiles) {
    names.Add(profile);
  }
  if (names.size() == 0) {
    names.Add("-");
  }
  return names;
}

std::optional<std::uint64_t> BytesOfNames(const NameList& names) {
  std::uint64_t bytes = 0;
  NameList::Walk walk(names);
  while (const std::optional<std::string> name = walk.Next()) {
    const std::optional<std::uint64_t> own = BytesOfAll(std::vector<std::string>{*name});
    if (!own) {
      return std::nullopt;
    }
    bytes += *own;
  }
  return bytes;
}

void Write(ProfileMerge merge, const std::optional<std::string>& program, ResultFile& result) {
  if (program) {
    result.Write(std::string(kProfilePrefix) + "program\t" + *program + "\n");
  }
  MergedLines lines = merge.TakeLines();
  for (std::string_view block = lines.Next(); !block.empty() && !result.IsClosed();
       block = lines.Next()) {
    result.Write(block);
  }
}

GoodMerge MergeNames(const NameList& names, bool keeps_going, std::pmr::memory_resource* memory,
                     Session& session) {
  Progress progress(session.GetStatusLine(), [&names] { return BytesOfNames(names); });
  const MergeTools tools{.open = OpenInput,
                         .progress = progress,
                         .memory = memory,
                         .threads = {.threads = std::min(CountProcessors(), kMaxThreads)}};
  return keeps_going ? MergeGood(names, tools, session.GetMessages())
                     : GoodMerge{.merge = MergeAll(names, tools)};
}

ExitStatus Merge(const MergeOptions& options, Session& session) {
  ResultFile& result = session.OpenResult(ResultKind::kText);
  const NameList names = NamesIn(options);
  LargePages memory;
  GoodMerge merged = MergeNames(names, options.keeps_going, &memory, session);
  Write(std::move(merged.merge), options.program, result);
  return merged.left_out > 0 ? ExitStatus::kTold : ExitStatus::kDone;
}

}  // namespace

}  // namespace ptick::companion

int main(int argc, char** argv) {
  using namespace ptick::companion;
  MergeOptions options;
  return RunProgram({.name = "ptick-merge",
                     .describe = [&](CommandLine& line) { Describe(line, options); },
                     .run = [&](Session& session) { return Merge(options, session); }},
                    argc, argv);
}
