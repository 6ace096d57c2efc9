#include "ptick_diff/fields.h"

#include <cstdint>
#include <optional>

#include "value/number_text.h"

namespace ptick::compare {

namespace {

FieldValue Of(const std::optional<Number>& number) {
  return number ? FieldValue(*number) : FieldValue();
}

FieldValue Of(const std::optional<double>& number) {
  return number ? FieldValue(Number(*number)) : FieldValue();
}

FieldValue Name(const Comparison& comparison, const Row& row) {
  return std::string(comparison.Names().Names()[row.name]);
}

FieldValue Subroutine(const Comparison& comparison, const Row& row) {
  return std::string(comparison.Names().Details()[row.new_detail]);
}

// A number where it is written the ordinary way, else its text.
FieldValue Line(const Comparison& comparison, std::uint32_t line) {
  if (line == Row::kNone) {
    return {};
  }
  const std::string text = comparison.Names().LineText(line);
  return comparison.Names().IsOrdinaryLine(line) ? FieldValue(*ParseNumber(text))
                                                 : FieldValue(text);
}

void AddNames(Kind kind, std::vector<Field>& fields) {
  switch (kind) {
    case Kind::kLine:
      fields.push_back({"program", Name});
      fields.push_back({"line", [](const Comparison& comparison, const Row& row) {
                          return Line(comparison, row.new_detail);
                        }});
      fields.push_back({"old_line", [](const Comparison& comparison, const Row& row) {
                          return Line(comparison, row.old_detail);
                        }});
      break;
    case Kind::kProgram:
      fields.push_back({"program", Name});
      break;
    case Kind::kCommand:
      fields.push_back({"command", Name});
      break;
    case Kind::kSubroutine:
      fields.push_back({"caller", Name});
      fields.push_back({"subroutine", Subroutine});
      break;
    case Kind::kCounter:
      fields.push_back({"counter", Name});
      break;
  }
}

void AddFigure(CommandFigure figure, std::string_view old_name, std::string_view new_name,
               std::vector<Field>& fields) {
  fields.push_back({old_name, [figure](const Comparison& comparison, const Row& row) {
                      return Of(comparison.OldFigure(row, figure));
                    }});
  fields.push_back({new_name, [figure](const Comparison& comparison, const Row& row) {
                      return Of(comparison.NewFigure(row, figure));
                    }});
}

void AddValues(std::vector<Field>& fields) {
  fields.push_back({"old", [](const Comparison& comparison, const Row& row) {
                      return Of(comparison.Old(row));
                    }});
  fields.push_back({"new", [](const Comparison& comparison, const Row& row) {
                      return Of(comparison.New(row));
                    }});
  fields.push_back({"change", [](const Comparison& comparison, const Row& row) {
                      return FieldValue(comparison.Change(row));
                    }});
}

void AddDeviations(std::vector<Field>& fields) {
  fields.push_back({"old_sd", [](const Comparison& comparison, const Row& row) {
                      return Of(comparison.OldDeviation(row));
                    }});
  fields.push_back({"new_sd", [](const Comparison& comparison, const Row& row) {
                      return Of(comparison.NewDeviation(row));
                    }});
}

void AddTest(std::vector<Field>& fields) {
  const auto tested = [](const Row& row, double number) {
    return row.IsTested() ? FieldValue(Number(number)) : FieldValue();
  };
  fields.push_back({"p", [tested](const Comparison& /*comparison*/, const Row& row) {
                      return tested(row, row.p_value);
                    }});
  fields.push_back({"q", [tested](const Comparison& /*comparison*/, const Row& row) {
                      return tested(row, row.rate);
                    }});
  fields.push_back({"significant", [](const Comparison& /*comparison*/, const Row& row) {
                      return FieldValue(row.is_significant);
                    }});
}

}  // namespace

std::vector<Field> FieldsOf(const Diff& diff) {
  std::vector<Field> fields;
  AddNames(diff.By(), fields);
  if (diff.By() == Kind::kCommand) {
    AddFigure(CommandFigure::kTimes, "old_times", "new_times", fields);
    AddFigure(CommandFigure::kElapsed, "old_elapsed", "new_elapsed", fields);
    AddFigure(CommandFigure::kCpu, "old_cpu", "new_cpu", fields);
  }
  AddValues(fields);
  if (diff.HasDeviations()) {
    AddDeviations(fields);
  }
  if (IsSampled(diff.By())) {
    AddTest(fields);
  }
  return fields;
}

std::string_view KindName(Kind kind) {
  switch (kind) {
    case Kind::kLine:
      return "line";
    case Kind::kProgram:
      return "program";
    case Kind::kCommand:
      return "command";
    case Kind::kSubroutine:
      return "subroutine";
    case Kind::kCounter:
      return "counter";
  }
  return "";
}

}  // namespace ptick::compare
