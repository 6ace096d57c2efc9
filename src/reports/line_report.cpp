#include "reports/line_report.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "figures/program_order.h"
#include "reports/report_heading.h"
#include "reports/row_layout.h"
#include "reports/source_texts.h"

namespace ptick {

namespace {

class LineReport {
 public:
  explicit LineReport(const ReportJob& job);

  void Print();

 private:
  void PrintProgramRows(std::size_t row);
  void PrintSourceRow(const TickEntry& entry);
  void PrintSubtotal();

  const ProfileTables& tables_;
  const ReportOptions& options_;
  OrderedTicks ticks_;
  Output& output_;
  std::string column_heads_;
  RowLayout layout_;
  std::unique_ptr<SourceTexts> sources_;  ///< null without source files
};

LineReport::LineReport(const ReportJob& job)
    : tables_(job.tables),
      options_(job.options),
      ticks_(std::move(job.tables.Details), options_.TickOrder, options_.PerProgram),
      output_(job.output),
      column_heads_(LayOutColumns("Source name", "Line#", "Ticks", "%") + " "),
      layout_(ticks_, tables_.TotalTicks) {
  if (!options_.SourceFiles.empty()) {
    const auto width = options_.ReportWidth - static_cast<std::int64_t>(column_heads_.size());
    sources_ = std::make_unique<SourceTexts>(ticks_, options_.SourceFiles, width);
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
  const ProgramsBy by = options_.CpuOption ? ProgramsBy::kTicks : ProgramsBy::kName;
  for (const std::size_t row : ProgramOrder(ticks_, by)) {
    PrintProgramRows(row);
    PrintSubtotal();
  }
}

void LineReport::PrintProgramRows(std::size_t row) {
  layout_.StartList();
  if (sources_) {
    ticks_.ForEach(row, [this](const TickEntry& entry) { PrintSourceRow(entry); });
    return;
  }
  ticks_.ForEach(row, [this](const TickEntry& entry) {
    char* line = output_.LineRoom(kRowWidth);
    layout_.LayOut(entry, line);
    output_.EndLineAt(line + kRowWidth);
  });
}

void LineReport::PrintSourceRow(const TickEntry& entry) {
  const std::string_view text = sources_->TextOf(entry);
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

void PrintLineReport(const ReportJob& job) { LineReport(job).Print(); }

}  // namespace ptick
