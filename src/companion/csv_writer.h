// Writes CSV as in RFC 4180, row by row: commas, quotes where needed, CR LF.
#pragma once

#include <string>
#include <string_view>

#include "companion/byte_sink.h"
#include "companion/number_text.h"

namespace ptick::companion {

/// Texts are bytes of any kind and become UTF-8. An empty text is written `""`, an absent value as
/// nothing, so that readers that care can tell them apart.
class CsvWriter {
 public:
  explicit CsvWriter(ByteSink& sink) : sink_(sink) {}

  CsvWriter& Text(std::string_view text);
  /// A floating number that is not finite is an absent value.
  template <PlainNumber T>
  CsvWriter& Number(T number) {
    BeginField();
    AppendNumber(row_, number);
    return *this;
  }
  CsvWriter& Absent();
  void EndRow();

 private:
  void BeginField();

  ByteSink& sink_;
  std::string row_;
  bool is_first_ = true;
};

}  // namespace ptick::companion
