#include "reports/line_report.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "figures/program_order.h"
#include "reports/program_batches.h"
#include "reports/report_heading.h"
#include "reports/row_batches.h"
#include "reports/row_layout.h"
#include "reports/row_printer.h"
#include "reports/source_texts.h"

namespace ptick {

namespace {

class LineReport {
 public:
  explicit LineReport(const ReportJob& job);

  void Print();

 private:
  const ReportJob& job_;
  const ReportOptions& options_;
  OrderedTicks ticks_;
  std::string column_heads_;
  std::unique_ptr<SourceTexts> sources_;  ///< null without source files
};

LineReport::LineReport(const ReportJob& job)
    : job_(job),
      options_(job.options),
      ticks_(std::move(job.tables.Details), options_.TickOrder, options_.PerProgram, job.threads),
      column_heads_(LayOutColumns("Source name", "Line#", "Ticks", "%") + " ") {
  if (!options_.SourceFiles.empty()) {
    const auto width = options_.ReportWidth - static_cast<std::int64_t>(column_heads_.size());
    sources_ = std::make_unique<SourceTexts>(ticks_, options_.SourceFiles, width);
  }
}

void LineReport::Print() {
  job_.output.SetHeading(ReportHeading(ReportTitle("Profile of program ", job_.tables),
                                       column_heads_ + (sources_ ? "Source" : ""),
                                       options_.ReportWidth));
  RowPrinter printer(RowLayout(ticks_, job_.tables.TotalTicks), sources_.get());
  if (options_.PerProgram) {
    const ProgramsBy by = options_.CpuOption ? ProgramsBy::kTicks : ProgramsBy::kName;
    const std::vector<std::size_t> programs = ProgramOrder(ticks_, by);
    ProgramBatches(ticks_, programs, printer, job_.output, job_.threads).Print();
  } else {
    RowBatches(ticks_, printer, job_.output, job_.threads).Print();
  }
}

}  // namespace

void PrintLineReport(const ReportJob& job) { LineReport(job).Print(); }

}  // namespace ptick
