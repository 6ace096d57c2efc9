#pragma once

#include <cstddef>
#include <limits>
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

/// How much of a record is read.
struct TextLimits {
  std::size_t fields = std::numeric_limits<std::size_t>::max();
  std::size_t bytes = std::numeric_limits<std::size_t>::max();
};

/// Reads a record to its end, or until it is seen to have more fields than `limits` allows: the
/// text then has more, too. std::nullopt when it cannot be read or has more bytes (EFBIG), with the
/// system's error number in `error` where that is asked for.
std::optional<RecordText> ReadRecordText(RecordReader& record, const TextLimits& limits = {},
                                         int* error = nullptr);

}  // namespace ptick
