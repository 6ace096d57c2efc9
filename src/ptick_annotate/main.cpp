// ptick-annotate: the source with its ticks beside it.
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "companion/inputs/profile_inputs.h"
#include "companion/inputs/source_folders.h"
#include "companion/linux/inputs.h"
#include "companion/linux/program.h"
#include "companion/usage_error.h"
#include "platform/linux/large_pages.h"
#include "platform/linux/record_files.h"
#include "ptick_annotate/annotation.h"

namespace ptick::companion {

namespace {

struct Options {
  std::vector<std::string> folders;
  std::uint64_t context = ExcerptOptions().context;
  AnnotationOptions annotation;
  std::vector<std::string> profiles;
};

void Describe(CommandLine& line, Options& options) {
  line.Usage("[OPTION]... -f DIR... PROFILE...")
      .Summary(
          "Shows the source of each program that took ticks, the hungriest first, with ticks, "
          "share and line number beside it. Several profiles are merged into one first; where "
          "PROFILE is "
          "-, reads standard input.");
  AddSourceOption(line, options.folders);
  line.WholeNumber("-c,--context", "N", "show N lines around each line with ticks; 3 is usual",
                   {.most = std::numeric_limits<std::uint32_t>::max()}, options.context)
      .Flag("-a,--all", "show all lines of each source", options.annotation.excerpt.is_whole)
      .Texts("-p,--program", "NAME", "show the program NAME only; may be repeated for several",
             options.annotation.programs)
      .Operands(options.profiles, 1)
      .Check([&options] {
        if (options.folders.empty()) {
          throw UsageError("where are the sources? Name a folder of them with '-f DIR'");
        }
      });
}

ReadOptions WhatIsRead(LargePages& memory) {
  return {
      .keep_performs = false, .keep_callers = false, .keep_inputs = false, .table_memory = &memory};
}

ExitStatus Annotate(Options& options, Session& session) {
  LinuxRecordFiles files;
  const SourceFolders folders(options.folders, files);
  ResultFile& result = session.OpenResult(ResultKind::kText);
  LargePages memory;
  ProfileTables tables;
  {
    Progress progress(session.GetStatusLine(), [&] { return BytesOfAll(options.profiles); });
    ProfileInputs(OpenInput, progress).Read(options.profiles, WhatIsRead(memory), tables);
  }
  options.annotation.excerpt.context = static_cast<std::uint32_t>(options.context);
  TextWriter writer(result, session.Form());
  Annotation annotation(tables, folders, options.annotation, writer);
  annotation.Print();
  const std::vector<std::string> not_there = annotation.ProgramsNotThere();
  for (const std::string& program : not_there) {
    session.GetMessages().Tell({.file = std::nullopt,
                                .line = std::nullopt,
                                .reason = "the profile has no ticks of program '" + program + "'"});
  }
  return not_there.empty() ? ExitStatus::kDone : ExitStatus::kTold;
}

}  // namespace

}  // namespace ptick::companion

int main(int argc, char** argv) {
  using namespace ptick::companion;
  Options options;
  return RunProgram({.name = "ptick-annotate",
                     .describe = [&](CommandLine& line) { Describe(line, options); },
                     .run = [&](Session& session) { return Annotate(options, session); }},
                    argc, argv);
}
