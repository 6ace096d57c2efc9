#include "ptick_export/formats/folded.h"

#include <cstddef>
#include <string>
#include <variant>

#include "companion/number_text.h"
#include "ptick_export/facts/line_sums.h"
#include "ptick_export/formats/losses.h"
#include "ptick_export/formats/plain_names.h"
#include "ptick_export/formats/profile_names.h"

namespace ptick::exports {

namespace {

constexpr PlainNameRules kFrameRules = {.semicolons = true};

// A line of text for each line of a program; what is the same in all of them is made once.
class FoldedLines {
 public:
  explicit FoldedLines(const ExportJob& job) : sink_(job.sink), names_(job.tables) {}

  void BeginProgram(std::string_view name) {
    line_.clear();
    AppendPlainName(line_, names_.Program(name), kFrameRules);
    line_ += ';';
    prefix_ = line_.size();
  }

  void Add(const LineSums::Line& line) {
    line_.resize(prefix_);
    if (line.number) {
      companion::AppendNumber(line_, *line.number);
    } else {
      AppendPlainName(line_, names_.Line(line.text), kFrameRules);
    }
    line_ += ' ';
    companion::AppendNumber(line_, std::get<std::int64_t>(line.ticks));
    line_ += '\n';
    sink_.Write(line_);
  }

 private:
  companion::ByteSink& sink_;
  ProfileNames names_;
  std::string line_;
  std::size_t prefix_ = 0;
};

}  // namespace

void WriteFolded(const ExportJob& job) {
  const LineSums sums(job.tables.Details, {.whole_ticks = true, .numbered_lines = false});
  TellLosses(job, sums.Losses());
  FoldedLines lines(job);
  for (const LineSums::Program& program : sums.Programs()) {
    lines.BeginProgram(job.tables.Details.Programs()[program.id]);
    sums.ForEachLine(program, [&lines](const LineSums::Line& line) { lines.Add(line); });
  }
}

}  // namespace ptick::exports
