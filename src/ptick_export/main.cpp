// ptick-export: a profile in the formats that other tools read.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/inputs/profile_inputs.h"
#include "companion/inputs/source_folders.h"
#include "companion/linux/inputs.h"
#include "companion/linux/program.h"
#include "companion/usage_error.h"
#include "platform/linux/large_pages.h"
#include "platform/linux/record_files.h"
#include "profile/tables/profile_tables.h"
#include "ptick_export/formats/csv_tables.h"
#include "ptick_export/formats/export_job.h"
#include "ptick_export/formats/format_table.h"

namespace ptick::exports {

namespace {

using companion::CommandLine;
using companion::ExitStatus;
using companion::ResultKind;
using companion::Session;
using companion::UsageError;

struct ExportOptions {
  /// Places in Formats() and CsvTables().
  std::optional<std::size_t> format;
  std::optional<std::size_t> table;
  std::vector<std::string> source_folders;
  std::vector<std::string> profiles;
};

// The names and what the list says of each: "json: everything; csv: one table".
template <typename Rows, typename Describe>
std::string Listed(const Rows& rows, const Describe& describe) {
  std::string text;
  for (const auto& row : rows) {
    text += (text.empty() ? "" : "; ") + std::string(row.name) + ": " + describe(row);
  }
  return text;
}

template <typename Rows>
std::vector<std::string> NamesOf(const Rows& rows) {
  std::vector<std::string> names;
  for (const auto& row : rows) {
    names.emplace_back(row.name);
  }
  return names;
}

void Check(const ExportOptions& options) {
  if (!options.format) {
    throw UsageError("which format? --to=FORMAT is missing");
  }
  if (options.table && Formats()[*options.format].write != nullptr) {
    throw UsageError("--table goes with --to=csv only");
  }
}

void Describe(CommandLine& line, ExportOptions& options) {
  line.Usage("--to=FORMAT [OPTION]... PROFILE...")
      .Summary(
          "Writes a profile, or several merged into one, in a format that other tools read. "
          "PROFILE is a file or a pipe; - is standard input.")
      .ChoiceOf("-t,--to", "FORMAT", "the format, one of those below", NamesOf(Formats()),
                [&options](std::size_t place) { options.format = place; })
      .ChoiceOf("--table", "NAME", "the table that csv holds; lines if not given",
                NamesOf(CsvTables()), [&options](std::size_t place) { options.table = place; });
  companion::AddSourceOption(line, options.source_folders);
  line.Operands(options.profiles, 1)
      .Check([&options] { Check(options); })
      .Note("Formats. " +
            Listed(Formats(), [](const Format& format) { return std::string(format.help); }) + ".")
      .Note("Tables and their columns. " +
            Listed(CsvTables(), [](const CsvTable& table) { return std::string(table.columns); }) +
            ".")
      .Note(
          "What a format cannot hold is named on standard error. Sources are named by callgrind, "
          "pprof and speedscope, not put in.");
}

std::uint32_t PartsOf(const ExportOptions& options, const Format& format) {
  return format.write == nullptr ? CsvTables()[options.table.value_or(0)].parts : format.parts;
}

ExitStatus Export(const ExportOptions& options, Session& session) {
  const Format& format = Formats()[options.format.value()];
  LinuxRecordFiles files;
  const companion::SourceFolders folders(options.source_folders, files);
  companion::ResultFile& result =
      session.OpenResult(format.is_binary ? ResultKind::kBytes : ResultKind::kText);
  LargePages memory;
  ReadOptions read_options = OptionsFor(PartsOf(options, format));
  read_options.table_memory = &memory;
  ProfileTables tables;
  {
    companion::Progress progress(session.GetStatusLine(),
                                 [&] { return companion::BytesOfAll(options.profiles); });
    companion::ProfileInputs(companion::OpenInput, progress)
        .Read(options.profiles, read_options, tables);
  }
  const ExportJob job = {
      .tables = tables,
      .source_path = [&folders](std::string_view program) { return folders.PathOf(program); },
      .sink = result,
      .messages = session.GetMessages()};
  if (format.write == nullptr) {
    CsvTables()[options.table.value_or(0)].write(job);
  } else {
    TellPartsLeftOut(job, format);
    format.write(job);
  }
  return ExitStatus::kDone;
}

}  // namespace

}  // namespace ptick::exports

int main(int argc, char** argv) {
  using namespace ptick;
  exports::ExportOptions options;
  return companion::RunProgram(
      {.name = "ptick-export",
       .describe = [&](companion::CommandLine& line) { exports::Describe(line, options); },
       .run = [&](companion::Session& session) { return exports::Export(options, session); }},
      argc, argv);
}
