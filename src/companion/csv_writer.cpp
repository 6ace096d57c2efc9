#include "companion/csv_writer.h"

#include "companion/utf8.h"

namespace ptick::companion {

void CsvWriter::BeginField() {
  if (!is_first_) {
    row_ += ',';
  }
  is_first_ = false;
}

CsvWriter& CsvWriter::Absent() {
  BeginField();
  return *this;
}

CsvWriter& CsvWriter::Text(std::string_view text) {
  BeginField();
  if (!text.empty() && text.find_first_of("\",\r\n") == std::string_view::npos) {
    AppendUtf8(row_, text);
    return *this;
  }
  row_ += '"';
  for (const char byte : ToUtf8(text)) {
    row_ += byte;
    if (byte == '"') {
      row_ += '"';
    }
  }
  row_ += '"';
  return *this;
}

void CsvWriter::EndRow() {
  sink_.Write(row_);
  // A terminal may have this CR, which no name brought in.
  sink_.WriteControl("\r\n");
  row_.clear();
  is_first_ = true;
}

}  // namespace ptick::companion
