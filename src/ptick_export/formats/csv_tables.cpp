#include "ptick_export/formats/csv_tables.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "companion/csv_writer.h"
#include "figures/program_order.h"
#include "figures/running_sum.h"
#include "figures/subroutine_order.h"
#include "profile/ticks/ordered_ticks.h"
#include "ptick_export/facts/counters.h"
#include "ptick_export/facts/perform_fields.h"
#include "ptick_export/facts/reported_line.h"
#include "ptick_export/facts/reported_names.h"
#include "ptick_export/formats/profile_names.h"
#include "ptick_export/formats/profile_parts.h"

namespace ptick::exports {

namespace {

using companion::CsvWriter;

void Put(CsvWriter& csv, const Number& number) {
  std::visit([&csv](auto form) { csv.Number(form); }, number);
}

void Put(CsvWriter& csv, const std::optional<Number>& number) {
  if (number) {
    Put(csv, *number);
  } else {
    csv.Absent();
  }
}

void Put(CsvWriter& csv, const Value& value) {
  Put(csv, value.Empty() ? std::nullopt : std::optional(value.AsNumber()));
}

void WriteHead(CsvWriter& csv, std::string_view columns) {
  while (!columns.empty()) {
    const std::string_view column = columns.substr(0, columns.find(','));
    csv.Text(column);
    columns.remove_prefix(std::min(columns.size(), column.size() + 1));
  }
  csv.EndRow();
}

constexpr std::string_view kLineColumns = "program,line,ticks";

// Takes the entries out of the tables, as the next one does: their order needs room.
void WriteLines(const ExportJob& job) {
  CsvWriter csv(job.sink);
  WriteHead(csv, kLineColumns);
  ProfileNames names(job.tables);
  const OrderedTicks ticks(std::move(job.tables.Details), SortOrder::kDescending, false);
  ticks.ForEach(0, [&](const TickEntry& entry) {
    const ReportedLine line = ReportedLineOf(ticks, entry);
    csv.Text(names.Program(ticks.Programs()[entry.program]));
    if (line.number) {
      csv.Number(*line.number);
    } else {
      csv.Text(line.text);
    }
    Put(csv, line.ticks);
    csv.EndRow();
  });
}

constexpr std::string_view kProgramColumns = "program,ticks";

void WritePrograms(const ExportJob& job) {
  CsvWriter csv(job.sink);
  WriteHead(csv, kProgramColumns);
  ProfileNames names(job.tables);
  const OrderedTicks ticks(std::move(job.tables.Details), SortOrder::kDescending, true);
  for (const std::size_t row : ProgramOrder(ticks, ProgramsBy::kTicks)) {
    RunningSum sum;
    ticks.ForEach(
        row, [&](const TickEntry& entry) { sum.Add(Value(ReportedLineOf(ticks, entry).ticks)); });
    csv.Text(names.Program(ticks.Programs()[static_cast<NameTable::Id>(row)]));
    Put(csv, sum.Total());
    csv.EndRow();
  }
}

constexpr std::string_view kCommandColumns =
    "command,type,startclock,endclock,starttime,endtime,ticks,usrcpu,syscpu";

void WriteCommands(const ExportJob& job) {
  CsvWriter csv(job.sink);
  WriteHead(csv, kCommandColumns);
  ProfileNames names(job.tables);
  for (std::size_t n = 0; n < job.tables.Performs.RecordCount(); ++n) {
    const PerformTable::Record perform = job.tables.Performs[n];
    csv.Text(names.Command(perform.Command()));
    if (perform.Type().empty()) {
      csv.Absent();
    } else {
      csv.Text(perform.Type());
    }
    for (const PerformField& field : kPerformFields) {
      Put(csv, FieldOf(perform, field.number));
    }
    csv.EndRow();
  }
}

constexpr std::string_view kSubroutineColumns = "caller,subroutine,times";

void WriteSubroutines(const ExportJob& job) {
  CsvWriter csv(job.sink);
  WriteHead(csv, kSubroutineColumns);
  ProfileNames names(job.tables);
  const SubroutineTable& subroutines = job.tables.Subroutines;
  for (const std::size_t n : SubroutineOrder(subroutines)) {
    csv.Text(names.Program(subroutines.Caller(n))).Text(names.Program(subroutines.Called(n)));
    Put(csv, subroutines.Times(n));
    csv.EndRow();
  }
}

constexpr std::string_view kObjectColumns = "name";

void WriteObjects(const ExportJob& job) {
  CsvWriter csv(job.sink);
  WriteHead(csv, kObjectColumns);
  ProfileNames names(job.tables);
  for (const std::string_view name : SortedObjects(job.tables)) {
    csv.Text(names.Object(name)).EndRow();
  }
}

constexpr std::string_view kInputColumns = "code,characters,startclock,endclock,text";

void WriteInputs(const ExportJob& job) {
  CsvWriter csv(job.sink);
  WriteHead(csv, kInputColumns);
  for (std::size_t n = 0; n < job.tables.Inputs.Count(); ++n) {
    const KeyboardInput input = job.tables.Inputs[n];
    for (const std::string* number :
         {&input.code, &input.characters, &input.start_clock, &input.end_clock}) {
      Put(csv, Value(*number));
    }
    csv.Text(input.text).EndRow();
  }
}

constexpr std::string_view kCounterColumns = "name,value";

void WriteCounters(const ExportJob& job) {
  CsvWriter csv(job.sink);
  WriteHead(csv, kCounterColumns);
  for (const Counter& counter : CountersOf(job.tables)) {
    csv.Text(counter.name);
    Put(csv, *counter.value);
    csv.EndRow();
  }
}

constexpr std::array kTables = {
    CsvTable{"lines", kLineColumns, kLines, WriteLines},
    CsvTable{"programs", kProgramColumns, kLines, WritePrograms},
    CsvTable{"commands", kCommandColumns, kCommands, WriteCommands},
    CsvTable{"subroutines", kSubroutineColumns, kSubroutines, WriteSubroutines},
    CsvTable{"objects", kObjectColumns, kObjects, WriteObjects},
    CsvTable{"inputs", kInputColumns, kInputs, WriteInputs},
    CsvTable{"counters", kCounterColumns, kCounters, WriteCounters},
};

}  // namespace

std::span<const CsvTable> CsvTables() { return kTables; }

}  // namespace ptick::exports
