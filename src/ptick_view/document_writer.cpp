#include "ptick_view/document_writer.h"

#include <fmt/format.h>

#include <cmath>
#include <string>

namespace ptick::view {

void DocumentWriter::Line(const compare::KeyNames& key_names, std::uint32_t line) {
  if (compare::KeyNames::IsLineNumber(line)) {
    json.Number(line);
  } else if (const std::string text = key_names.LineText(line); key_names.IsOrdinaryLine(line)) {
    json.NumberText(text);
  } else {
    json.Text(names.Line(text));
  }
}

void DocumentWriter::Short(double number) {
  if (std::isfinite(number)) {
    json.NumberText(fmt::format("{:.4g}", number));
  } else {
    json.Null();
  }
}

}  // namespace ptick::view
