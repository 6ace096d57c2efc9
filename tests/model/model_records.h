#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/model_tables.h"
#include "value/dynamic_array.h"
#include "value/list_operations.h"
#include "value/text.h"

namespace ptick::model {

/// A profile line without its prefix: TAB-separated fields, the record type first.
class Record {
 public:
  explicit Record(std::string_view text) : text_(text) {}

  const std::string& Text() const { return text_; }
  std::string Type() const { return LowerCase(Field(1)); }
  std::string Field(std::int64_t n) const { return ptick::Field(text_, '\t', n).text; }

  /// Everything after the TAB that ends field n.
  std::string After(std::int64_t n) const {
    const auto column = static_cast<std::int64_t>(ptick::Field(text_, '\t', n).col2);
    return std::string(Substring(text_, column + 1, Len(text_)));
  }

 private:
  std::string text_;
};

/// An "input" record: counts it, and with -k turns it into lines of the keyboard script.
void ParseInput(const Record& record, const RunOptions& options, ModelTables& tables);

/// A "perform" record: builds its entry pair by pair and keeps it when it has a command.
void ParsePerform(const Record& record, ModelTables& tables);

}  // namespace ptick::model
