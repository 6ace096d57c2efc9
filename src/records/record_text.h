#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/record_file.h"

namespace ptick {

/// The whole text of a record with its fields indexed; the default has no fields.
class RecordText {
 public:
  RecordText() = default;
  explicit RecordText(std::string text);

  /// Field `n`, counted from 1; nothing when the record has no such field.
  std::optional<std::string_view> ReadField(std::size_t n) const;

  std::size_t FieldCount() const { return ends_.size(); }

 private:
  std::string text_;
  std::vector<std::size_t> ends_;  ///< of the fields
};

/// Reads a record whole. std::nullopt when it cannot be read to its end, with the system's error
/// number in `error` where that is asked for.
std::optional<RecordText> ReadRecordText(RecordReader& record, int* error = nullptr);

}  // namespace ptick
