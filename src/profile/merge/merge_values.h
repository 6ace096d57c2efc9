#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/merge/merge_keys.h"
#include "value/value.h"

namespace ptick {

/// Merge keys with their values, `MergeValues`. Most values are ordinary numbers: those are in the
/// cells beside the keys. Any other text is held aside as it was read, and with it the number that
/// it spells: however long it is, it is taken apart once.
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
    if (!IsAside(sum) && sum <= std::numeric_limits<std::int64_t>::max() - number) {
      sum += number;
    } else {
      AddTo(key, std::to_string(number));
    }
  }

  /// -1, 0 or 1 as a value is less than, equal to or greater than a text, as the value layer
  /// compares them.
  int Compare(Id key, std::string_view text) const;

  std::string Text(Id key) const;
  void AppendText(Id key, std::string& out) const;

 private:
  struct Aside {
    std::string text;
    std::optional<Number> number;  ///< nothing when the text is not numeric
  };

  /// A cell below this holds the place of a value aside, counted from the smallest number.
  static constexpr std::int64_t kWholeCells =
      std::numeric_limits<std::int64_t>::min() + (std::int64_t{1} << 32U);

  static bool IsAside(std::int64_t cell) { return cell < kWholeCells; }
  static std::size_t PlaceOf(std::int64_t cell) {
    return static_cast<std::size_t>(cell - std::numeric_limits<std::int64_t>::min());
  }
  const Aside* AsideOf(Id key) const {
    const std::int64_t cell = keys_.CellOf(key);
    return IsAside(cell) ? &aside_[PlaceOf(cell)] : nullptr;
  }
  Aside& PutAside(Id key);

  MergeKeys keys_;
  std::vector<Aside> aside_;  ///< a value that has got here stays here, whatever it becomes
};

}  // namespace ptick
