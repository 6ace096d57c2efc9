#pragma once

#include <cstdint>
#include <limits>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>

#include "profile/merge/merge_keys.h"

namespace ptick {

/// Merge keys with their values, `MergeValues`. Most values are ordinary numbers: those are in the
/// cells beside the keys. Any other text is held as it was read.
class MergeValues {
 public:
  using Id = MergeKeys::Id;

  /// The tables take their memory from `memory`, which must outlive this.
  explicit MergeValues(std::pmr::memory_resource* memory = std::pmr::get_default_resource())
      : keys_(memory) {}

  MergeKeys& Keys() { return keys_; }
  const MergeKeys& Keys() const { return keys_; }

  void Set(Id key, std::string_view text);

  /// Adds to a value, as the value layer adds texts. That of a new key is 0.
  void AddTo(Id key, std::string_view text);
  void AddTo(Id key, std::uint32_t number) {
    std::int64_t& sum = keys_.CellOf(key);
    if (sum != kTextAside && sum <= std::numeric_limits<std::int64_t>::max() - number) {
      sum += number;
    } else {
      AddTo(key, std::to_string(number));
    }
  }

  std::string Text(Id key) const;
  void AppendText(Id key, std::string& out) const;

 private:
  /// In a cell: the text is held aside.
  static constexpr std::int64_t kTextAside = std::numeric_limits<std::int64_t>::min();

  MergeKeys keys_;
  std::unordered_map<Id, std::string> texts_;
};

}  // namespace ptick
