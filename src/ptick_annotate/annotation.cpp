#include "ptick_annotate/annotation.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

#include "companion/number_text.h"
#include "companion/table.h"
#include "figures/program_order.h"
#include "ptick_annotate/excerpt_table.h"

namespace ptick::companion {

namespace {

RunningSum SumOf(const TickTable& entries) {
  RunningSum sum;
  entries.ForEach([&](const TickEntry& entry) {
    if (entry.HasExactText()) {
      sum.Add(Value(entries.ExactTicks(entry)));
    } else {
      sum.Add(std::int64_t{entry.ticks});
    }
  });
  return sum;
}

std::string Counted(std::size_t count, std::string_view noun) {
  return fmt::format("{} {}{}", GroupedCount(count), noun, count == 1 ? "" : "s");
}

}  // namespace

Annotation::Annotation(ProfileTables& tables, const SourceFolders& folders,
                       const AnnotationOptions& options, TextWriter& writer)
    : tables_(tables),
      all_(SumOf(tables.Details)),
      ticks_(std::move(tables.Details), SortOrder::kDescending, /*per_program=*/true),
      folders_(folders),
      options_(options),
      writer_(writer),
      has_total_(!tables.TotalTicks.Empty()),
      shares_(has_total_ ? tables.TotalTicks : all_.Total()) {}

void Annotation::Print() {
  PrintHead();
  for (const std::size_t row : ProgramOrder(ticks_, ProgramsBy::kTicks)) {
    PrintProgram(row);
  }
  PrintEnd();
}

std::vector<std::string> Annotation::ProgramsNotThere() const {
  std::vector<std::string> names;
  for (const std::string& name : options_.programs) {
    bool is_there = false;
    for (std::size_t row = 0; row < ticks_.RowCount() && !is_there; ++row) {
      is_there = ticks_.Programs()[static_cast<NameTable::Id>(row)] == name;
    }
    if (!is_there) {
      names.push_back(name);
    }
  }
  return names;
}

bool Annotation::IsAskedFor(std::string_view program) const {
  const std::vector<std::string>& programs = options_.programs;
  return programs.empty() || std::ranges::find(programs, program) != programs.end();
}

std::string Annotation::Amount(const Value& ticks) const {
  const std::string text = ticks.Text();
  return fmt::format("{} {}, {} %", text, text == "1" ? "tick" : "ticks", shares_.Of(ticks));
}

void Annotation::PrintHead() {
  writer_.Line("Ticks by source line of program " + tables_.ProgramName + " from profile " +
                   tables_.ProfileName,
               Style::kHeading);
  if (has_total_) {
    writer_.Line("Shares are of the profile's " + tables_.TotalTicks.Text() +
                 " ticks, in per cent, cut to one decimal.");
  } else {
    writer_.Line("Shares are of the " + all_.Total().Text() +
                 " ticks of all lines, as the profile has no total, in per cent, cut to one "
                 "decimal.");
  }
}

void Annotation::PrintProgram(std::size_t row) {
  const std::string_view program = ticks_.Programs()[static_cast<NameTable::Id>(row)];
  const ProgramTicks ticks = TicksOfProgram(ticks_, row);
  if (ticks.lines.empty() && ticks.odd.empty()) {
    return;
  }
  if (!IsAskedFor(program)) {
    not_asked_for_.Add(ticks.total);
    ++programs_not_asked_for_;
    return;
  }
  const std::optional<SourceExcerpt> excerpt =
      SourceExcerpt::Find(program, ticks.lines, folders_, options_.excerpt);
  if (!excerpt) {
    without_source_.Add(ticks.total);
    programs_without_source_.push_back({.program = program, .line = "", .ticks = ticks.total});
    return;
  }
  PrintListed(program, ticks, *excerpt);
}

void Annotation::PrintListed(std::string_view program, const ProgramTicks& ticks,
                             const SourceExcerpt& excerpt) {
  writer_.EndLine();
  writer_.Add("Program ", Style::kHeading).Add(names_.Of(program), Style::kHeading);
  writer_.Line(": " + Amount(ticks.total), Style::kHeading);
  writer_.Line("Source " + excerpt.Path());
  if (!excerpt.Lines().empty()) {
    writer_.EndLine();
    PrintExcerpt(excerpt, ticks.lines, shares_, writer_);
  }
  const auto leave = [&](std::string line, const Value& own) {
    not_in_source_.Add(own);
    lines_not_in_source_.push_back({.program = program, .line = std::move(line), .ticks = own});
  };
  for (const LineTicks& own : ticks.lines) {
    if (own.line <= excerpt.SourceLines()) {
      annotated_.Add(own.ticks);
    } else {
      leave(std::to_string(own.line), own.ticks);
    }
  }
  for (const OddLineTicks& own : ticks.odd) {
    leave(std::string(own.line), own.ticks);
  }
}

void Annotation::PrintEnd() {
  writer_.EndLine();
  const std::string all = all_.Total().Text();
  writer_.Line(fmt::format("Annotated: {} of {} ticks, {} %", annotated_.Total().Text(), all,
                           shares_.Of(annotated_.Total())),
               Style::kHeading);
  if (programs_not_asked_for_ > 0) {
    writer_.Line(fmt::format("Not asked for: {}, in {}", Amount(not_asked_for_.Total()),
                             Counted(programs_not_asked_for_, "program")));
  }
  PrintWithoutSource();
  PrintNotInSource();
}

void Annotation::PrintWithoutSource() {
  const std::vector<Rest>& programs = programs_without_source_;
  if (programs.empty()) {
    return;
  }
  std::string folders;
  for (const SourceFile& folder : folders_.Files()) {
    folders += (folders.empty() ? "" : ", ") + folder.name;
  }
  writer_.EndLine();
  writer_.Line(fmt::format("Without source: {}, in {}, looked for in {}",
                           Amount(without_source_.Total()), Counted(programs.size(), "program"),
                           folders));
  const std::array<Column, 3> columns = {{{.heading = "Ticks", .align = Align::kRight},
                                          {.heading = "%", .align = Align::kRight},
                                          {.heading = "Program", .gives_way = true}}};
  PrintTable(writer_, columns, programs.size(), [&](std::size_t row, std::span<Cell> cells) {
    cells[0].text = programs[row].ticks.Text();
    cells[1].text = shares_.Of(programs[row].ticks);
    cells[2].text = names_.Of(programs[row].program);
  });
}

void Annotation::PrintNotInSource() {
  const std::vector<Rest>& lines = lines_not_in_source_;
  if (lines.empty()) {
    return;
  }
  writer_.EndLine();
  writer_.Line(fmt::format("On lines that their source does not have: {}, on {}",
                           Amount(not_in_source_.Total()), Counted(lines.size(), "line")));
  const std::array<Column, 4> columns = {{{.heading = "Ticks", .align = Align::kRight},
                                          {.heading = "%", .align = Align::kRight},
                                          {.heading = "Line", .align = Align::kRight},
                                          {.heading = "Program", .gives_way = true}}};
  PrintTable(writer_, columns, lines.size(), [&](std::size_t row, std::span<Cell> cells) {
    cells[0].text = lines[row].ticks.Text();
    cells[1].text = shares_.Of(lines[row].ticks);
    cells[2].text = lines[row].line;
    cells[3].text = names_.Of(lines[row].program);
  });
}

}  // namespace ptick::companion
