#include "ptick_view/baseline_part.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "compare/comparison.h"
#include "compare/row_order.h"
#include "ptick_view/line_table.h"
#include "ptick_view/profile_part.h"

namespace ptick::view {

namespace {

using compare::Comparison;
using compare::Kind;
using compare::Row;

constexpr auto kRows = companion::JsonWriter::Elements::kOnLinesOfTheirOwn;

/// The rows of one kind, the largest change first.
class Changes {
 public:
  Changes(const ComparedKinds& kinds, Kind kind)
      : comparison_(kinds[kind].old_side, kinds[kind].new_side),
        order_(OrderRows(comparison_, compare::SortBy::kChange)) {}

  const Comparison& All() const { return comparison_; }
  std::size_t size() const { return order_.size(); }
  const Row& operator[](std::size_t n) const { return comparison_.Rows()[order_[n]]; }

  std::string_view Name(const Row& row) const { return comparison_.Names().Names()[row.name]; }
  std::string_view Detail(const Row& row) const {
    return comparison_.Names().Details()[row.new_detail];
  }

 private:
  Comparison comparison_;
  std::vector<std::uint32_t> order_;
};

void WriteOldNewChange(const Changes& changes, const Row& row, DocumentWriter& writer) {
  writer.json.Key("old");
  writer.Count(changes.All().Old(row));
  writer.json.Key("new");
  writer.Count(changes.All().New(row));
  writer.json.Key("change");
  writer.Count(changes.All().Change(row));
}

void WriteLines(const Changes& changes, DocumentWriter& writer) {
  const Comparison& all = changes.All();
  const std::size_t kept = std::min(changes.size(), writer.limits.changed_lines);
  companion::JsonWriter& json = writer.json;
  json.Key("lines").BeginObject();
  writer.Column("program", kept, [&](std::size_t n) {
    json.Number(writer.programs.NumberOf(changes.Name(changes[n])));
  });
  writer.Column("line", kept,
                [&](std::size_t n) { writer.Line(all.Names(), changes[n].new_detail); });
  writer.Column("old", kept, [&](std::size_t n) { writer.Count(all.Old(changes[n])); });
  writer.Column("new", kept, [&](std::size_t n) { writer.Count(all.New(changes[n])); });
  writer.Column("change", kept, [&](std::size_t n) { writer.Count(all.Change(changes[n])); });
  writer.Column("p", kept, [&](std::size_t n) { writer.Short(changes[n].p_value); });
  writer.Column("q", kept, [&](std::size_t n) { writer.Short(changes[n].rate); });
  writer.Column("significant", kept,
                [&](std::size_t n) { json.Number(changes[n].is_significant ? 1 : 0); });
  json.EndObject();
  writer.LeaveOut("changed lines", kept, changes.size());
}

// As many as the limit lets in; of the rest a note is made, by the name `what`.
template <typename WriteRow>
void WriteRows(std::string_view key, std::string_view what, const Changes& changes,
               DocumentWriter& writer, WriteRow write_row) {
  const std::size_t kept = std::min(changes.size(), writer.limits.changed_rows);
  writer.json.Key(key).BeginArray(kRows);
  for (std::size_t n = 0; n < kept; ++n) {
    writer.json.BeginObject();
    write_row(changes[n]);
    writer.json.EndObject();
  }
  writer.json.EndArray();
  writer.LeaveOut(what, kept, changes.size());
}

void WritePrograms(const Changes& changes, DocumentWriter& writer) {
  WriteRows("programs", "changed programs", changes, writer, [&](const Row& row) {
    writer.json.Key("program").Number(writer.programs.NumberOf(changes.Name(row)));
    WriteOldNewChange(changes, row, writer);
    writer.json.Key("p");
    writer.Short(row.p_value);
    writer.json.Key("q");
    writer.Short(row.rate);
    writer.json.Key("significant").Bool(row.is_significant);
  });
}

void WriteCommands(const Changes& changes, DocumentWriter& writer) {
  using compare::CommandFigure;
  struct Figure {
    std::string_view old_key;
    std::string_view new_key;
    CommandFigure figure;
  };
  constexpr std::array kFigures = {Figure{"old_times", "new_times", CommandFigure::kTimes},
                                   Figure{"old_elapsed", "new_elapsed", CommandFigure::kElapsed},
                                   Figure{"old_cpu", "new_cpu", CommandFigure::kCpu}};
  WriteRows("commands", "changed commands", changes, writer, [&](const Row& row) {
    writer.json.Key("command").Text(writer.names.Command(changes.Name(row)));
    for (const Figure& figure : kFigures) {
      writer.json.Key(figure.old_key);
      writer.Count(changes.All().OldFigure(row, figure.figure));
      writer.json.Key(figure.new_key);
      writer.Count(changes.All().NewFigure(row, figure.figure));
    }
    WriteOldNewChange(changes, row, writer);
  });
}

void WriteSubroutines(const Changes& changes, DocumentWriter& writer) {
  WriteRows("subroutines", "changed calls", changes, writer, [&](const Row& row) {
    writer.json.Key("caller").Text(writer.names.Program(changes.Name(row)));
    writer.json.Key("subroutine").Text(writer.names.Program(changes.Detail(row)));
    WriteOldNewChange(changes, row, writer);
  });
}

void WriteCounters(const Changes& changes, DocumentWriter& writer) {
  WriteRows("counters", "changed counters", changes, writer, [&](const Row& row) {
    writer.json.Key("counter").Text(changes.Name(row));
    WriteOldNewChange(changes, row, writer);
  });
}

}  // namespace

void WriteBaseline(const BaselineSide& baseline, DocumentWriter& writer) {
  writer.json.BeginObject().Key("profile");
  WriteProfile(baseline.profile.tables, LineTable(baseline.profile.tables), Lines::kWithoutLines,
               writer);
  writer.json.Key("runs").Number(baseline.profile.runs);
  const Changes lines(baseline.kinds, Kind::kLine);
  writer.json.Key("test").Text(lines.All().IsWelch() ? "welch" : "binomial");
  writer.json.Key("changes").BeginObject();
  WriteLines(lines, writer);
  WritePrograms(Changes(baseline.kinds, Kind::kProgram), writer);
  WriteCommands(Changes(baseline.kinds, Kind::kCommand), writer);
  WriteSubroutines(Changes(baseline.kinds, Kind::kSubroutine), writer);
  WriteCounters(Changes(baseline.kinds, Kind::kCounter), writer);
  writer.json.EndObject().EndObject();
}

}  // namespace ptick::view
