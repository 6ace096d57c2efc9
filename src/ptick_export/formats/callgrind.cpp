#include "ptick_export/formats/callgrind.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "companion/number_text.h"
#include "companion/utf8.h"
#include "profile/ticks/name_table.h"
#include "ptick_export/facts/line_sums.h"
#include "ptick_export/facts/whole_calls.h"
#include "ptick_export/formats/losses.h"
#include "ptick_export/formats/plain_names.h"
#include "ptick_export/formats/profile_names.h"
#include "value/number_text.h"

namespace ptick::exports {

namespace {

constexpr PlainNameRules kNameRules = {
    .semicolons = false, .hash_signs = false, .outer_blanks = true};
// Readers take a "#" in the head for the beginning of a remark.
constexpr PlainNameRules kHeadRules = {
    .semicolons = false, .hash_signs = true, .outer_blanks = true};

// Functions and their files. A name is written out where it is first used; after that its number is
// enough. A function and its file have one number: each has a file of its own.
class CallgrindNames {
 public:
  explicit CallgrindNames(const ExportJob& job)
      : source_path_(job.source_path), names_(job.tables) {}

  // Adds "fl=(7) FILE" and "fn=(7) NAME", by other keys for a function that is called.
  void AppendFunction(std::string& text, std::string_view name, std::string_view file_key,
                      std::string_view function_key) {
    const NameTable::Id id = ids_.Intern(name);
    const bool is_new = id == names_written_;
    Append(text, file_key, id);
    if (is_new) {
      const std::optional<std::string> path = source_path_(name);
      AppendName(text, path ? names_.SourcePath(*path) : names_.Program(name));
    }
    text += '\n';
    Append(text, function_key, id);
    if (is_new) {
      AppendName(text, names_.Program(name));
      ++names_written_;
    }
    text += '\n';
  }

 private:
  static void Append(std::string& text, std::string_view key, NameTable::Id id) {
    text += key;
    text += "=(";
    companion::AppendNumber(text, std::uint64_t{id} + 1);
    text += ')';
  }

  static void AppendName(std::string& text, std::string_view name) {
    text += ' ';
    AppendPlainName(text, name, kNameRules);
  }

  const SourcePathOf& source_path_;
  NameTable ids_;
  NameTable::Id names_written_ = 0;
  ProfileNames names_;
};

class CallgrindWriter {
 public:
  explicit CallgrindWriter(const ExportJob& job)
      : job_(job),
        names_(job),
        sums_(job.tables.Details, {.whole_ticks = true, .numbered_lines = true}) {}

  void Write() {
    WriteHead(TellLosses(job_, sums_.Losses()));
    for (const LineSums::Program& program : sums_.Programs()) {
      WriteProgram(program);
    }
    WriteCalls();
    text_ += "\ntotals: " + TotalText() + '\n';
    Flush();
  }

 private:
  void WriteHead(const std::string& cut) {
    text_ += "# callgrind format\nversion: 1\ncreator: ptick-export " PTICK_VERSION "\ncmd: ";
    if (!job_.tables.ProgramCommand.empty()) {
      AppendPlainName(text_, companion::ToUtf8(job_.tables.ProgramCommand), kHeadRules);
    }
    text_ += "\ndesc: Ticks: profiling samples, by line of source\n";
    if (job_.tables.Subroutines.Count() > 0) {
      text_ +=
          "desc: Calls: from line 0, with inclusive cost 0: a profile counts calls, not what "
          "they cost\n";
    }
    if (!cut.empty()) {
      text_ += "desc: Cut: " + cut + '\n';
    }
    // Readers take the line "events" for the end of the head.
    text_ +=
        "positions: line\nevent: Ticks : Profiling ticks\nevents: Ticks\nsummary: " + TotalText() +
        '\n';
  }

  std::string TotalText() const { return NumberText(sums_.Total()); }

  void WriteProgram(const LineSums::Program& program) {
    text_ += '\n';
    names_.AppendFunction(text_, job_.tables.Details.Programs()[program.id], "fl", "fn");
    sums_.ForEachLine(program, [this](const LineSums::Line& line) {
      companion::AppendNumber(text_, line.number.value_or(0));
      text_ += ' ';
      companion::AppendNumber(text_, std::get<std::int64_t>(line.ticks));
      text_ += '\n';
      FlushWhenFull();
    });
  }

  // In recorded order; the caller is named where it is another than before.
  void WriteCalls() {
    const SubroutineTable& subroutines = job_.tables.Subroutines;
    CallLosses losses;
    std::optional<std::string_view> caller;
    for (std::size_t n = 0; n < subroutines.Count(); ++n) {
      const std::optional<std::int64_t> times = WholeTimes(subroutines.Times(n), losses);
      if (!times) {
        continue;
      }
      if (caller != subroutines.Caller(n)) {
        caller = subroutines.Caller(n);
        text_ += '\n';
        names_.AppendFunction(text_, *caller, "fl", "fn");
      }
      names_.AppendFunction(text_, subroutines.Called(n), "cfi", "cfn");
      text_ += "calls=";
      companion::AppendNumber(text_, *times);
      text_ += " 0\n0 0\n";
      FlushWhenFull();
    }
    TellLosses(job_, losses);
  }

  void FlushWhenFull() {
    constexpr std::size_t kFull = std::size_t{1} << 15U;
    if (text_.size() >= kFull) {
      Flush();
    }
  }

  void Flush() {
    job_.sink.Write(text_);
    text_.clear();
  }

  const ExportJob& job_;
  CallgrindNames names_;
  LineSums sums_;
  std::string text_;
};

}  // namespace

void WriteCallgrind(const ExportJob& job) { CallgrindWriter(job).Write(); }

}  // namespace ptick::exports
