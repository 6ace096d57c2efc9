#include "reports/line_report.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <utility>

#include "reports/program_order.h"
#include "reports/report_heading.h"
#include "reports/row_layout.h"
#include "reports/source_lookup.h"
#include "value/mask.h"

namespace ptick {

namespace {

class LineReport {
 public:
  LineReport(const ProfileTables& tables, const RunOptions& options, Output& output);

  void Print();

 private:
  void PrintProgramRows(std::size_t row);
  void PrintSourceRow(const TickEntry& entry);
  void PrintSubtotal();

  const ProfileTables& tables_;
  const RunOptions& options_;
  Output& output_;
  std::string column_heads_;
  RowLayout layout_;
  std::optional<SourceLookup> sources_;
};

LineReport::LineReport(const ProfileTables& tables, const RunOptions& options, Output& output)
    : tables_(tables),
      options_(options),
      output_(output),
      column_heads_(LayOutColumns("Source name", "Line#", "Ticks", "%") + " "),
      layout_(tables.Details, tables.TotalTicks) {
  if (!options.SourceFiles.empty()) {
    const auto width = options.ReportWidth - static_cast<std::int64_t>(column_heads_.size());
    sources_.emplace(options.SourceFiles, Mask::Left(width));
  }
}

void LineReport::Print() {
  output_.SetHeading(ReportHeading(ReportTitle("Profile of program ", tables_),
                                   column_heads_ + (sources_ ? "Source" : ""),
                                   options_.ReportWidth));
  if (!options_.PerProgram) {
    PrintProgramRows(0);
    return;
  }
  for (const std::size_t row : ProgramOrder(tables_.Details, options_)) {
    PrintProgramRows(row);
    PrintSubtotal();
  }
}

void LineReport::PrintProgramRows(std::size_t row) {
  layout_.StartList();
  if (sources_) {
    tables_.Details.ForEach(row, [this](const TickEntry& entry) { PrintSourceRow(entry); });
    return;
  }
  tables_.Details.ForEach(row, [this](const TickEntry& entry) {
    char* line = output_.LineRoom(kRowWidth);
    layout_.LayOut(entry, line);
    output_.EndLineAt(line + kRowWidth);
  });
}

void LineReport::PrintSourceRow(const TickEntry& entry) {
  const TickTable& details = tables_.Details;
  const std::string text =
      entry.HasExactText()
          ? sources_->FetchSourceLine(details.Programs()[entry.program], details.ExactLine(entry))
          : sources_->FetchSourceLine(details.Programs()[entry.program], entry.line);
  char* line = output_.LineRoom(kRowWidth + 1 + text.size());
  layout_.LayOut(entry, line);
  line[kRowWidth] = ' ';
  output_.EndLineAt(std::copy(text.begin(), text.end(), line + kRowWidth + 1));
}

void LineReport::PrintSubtotal() {
  constexpr std::string_view kDashes = "--------";
  output_.PrintLine(LayOutColumns("", "", kDashes, kDashes));
  output_.PrintLine(
      LayOutColumns("", "", layout_.SubtotalTicks().Text(), layout_.SubtotalPercent().Text()));
  output_.PrintLine("");
}

}  // namespace

void PrintLineReport(const ProfileTables& tables, const RunOptions& options, Output& output) {
  LineReport(tables, options, output).Print();
}

}  // namespace ptick
