#include <algorithm>
#include <string>
#include <variant>

#include "companion/csv_writer.h"
#include "ptick_diff/diff_writers.h"
#include "ptick_diff/fields.h"

namespace ptick::compare {

namespace {

using companion::CsvWriter;

struct WriteField {
  CsvWriter& csv;

  void operator()(std::monostate /*nothing*/) const { csv.Absent(); }
  void operator()(const Number& number) const {
    std::visit([this](auto form) { csv.Number(form); }, number);
  }
  void operator()(const std::string& text) const { csv.Text(text); }
  void operator()(bool value) const { csv.Text(value ? "true" : "false"); }
};

}  // namespace

void WriteDiffCsv(const Diff& diff, std::uint64_t top, companion::ByteSink& sink) {
  CsvWriter csv(sink);
  const std::vector<Field> fields = FieldsOf(diff);
  for (const Field& field : fields) {
    csv.Text(field.name);
  }
  csv.EndRow();
  for (const std::uint32_t place :
       std::span(diff.order).first(std::min<std::uint64_t>(top, diff.order.size()))) {
    for (const Field& field : fields) {
      std::visit(WriteField{csv}, field.value(diff.comparison, diff.RowAt(place)));
    }
    csv.EndRow();
  }
}

}  // namespace ptick::compare
