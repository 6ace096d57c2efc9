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
#include "profile/merge/merge_line.h"
#include "value/field_list.h"
#include "value/value.h"

namespace ptick {

/// Merge keys with their values, `MergeValues`. Most values are ordinary numbers: those are in the
/// cells beside the keys. Any other text is held aside as it was read, and with it the number that
/// it spells: however long it is, it is taken apart once. Texts that have not been added to
/// anything yet, as the commands of PERFORMs, are only kept.
class MergeValues {
 public:
  using Id = MergeKeys::Id;

  /// The tables take their memory from `memory`, which must outlive this.
  explicit MergeValues(std::pmr::memory_resource* memory = std::pmr::get_default_resource())
      : keys_(memory) {}

  MergeKeys& Keys() { return keys_; }
  const MergeKeys& Keys() const { return keys_; }

  void Set(Id key, std::string_view text);

  /// Sets the value of a new key, whose further values will be added to it.
  void SetFirst(Id key, std::string_view text);

  /// Sets the value of a new key to that of its first line.
  void SetFirstOf(Id key, const MergeLine& line) {
    if (line.kind == MergeKind::kAdded) {
      SetFirst(key, line.value);
    } else {
      Set(key, line.value);
    }
  }

  /// Combines a value with that of a further line of its key.
  void Combine(Id key, const MergeLine& line);

  /// Sets the value of the new key `to` to that which `from` has for `key`.
  void Copy(const MergeValues& from, Id key, Id to);

  /// Adds to a value, as the value layer adds texts. That of a new key is 0.
  void AddTo(Id key, std::string_view text);
  void AddTo(Id key, std::uint32_t number) {
    std::int64_t& sum = keys_.CellOf(key);
    if (IsWhole(sum) && sum <= std::numeric_limits<std::int64_t>::max() - number) {
      sum += number;
    } else {
      AddTo(key, std::to_string(number));
    }
  }

  /// -1, 0 or 1 as a value is less than, equal to or greater than a text, as the value layer
  /// compares them.
  int Compare(Id key, std::string_view text) const;

  /// The value where its text is an ordinary number.
  std::optional<std::uint32_t> OrdinaryOf(Id key) const {
    const std::int64_t cell = keys_.CellOf(key);
    return cell >= 0 && cell <= std::numeric_limits<std::uint32_t>::max()
               ? std::optional(static_cast<std::uint32_t>(cell))
               : std::nullopt;
  }

  std::string Text(Id key) const;
  void AppendText(Id key, std::string& out) const;

 private:
  struct Aside {
    std::string text;
    std::optional<Number> number;  ///< nothing when the text is not numeric
  };

  /// Cells below these hold the place of a value aside, and of a first text.
  static constexpr std::int64_t kFirstTextCells =
      std::numeric_limits<std::int64_t>::min() + (std::int64_t{1} << 32U);
  static constexpr std::int64_t kWholeCells = kFirstTextCells + (std::int64_t{1} << 32U);

  static bool IsWhole(std::int64_t cell) { return cell >= kWholeCells; }
  static bool IsAside(std::int64_t cell) { return cell < kFirstTextCells; }
  static std::size_t PlaceOf(std::int64_t cell) { return static_cast<std::uint32_t>(cell); }
  const Aside* AsideOf(Id key) const {
    const std::int64_t cell = keys_.CellOf(key);
    return IsAside(cell) ? &aside_[PlaceOf(cell)] : nullptr;
  }
  std::string_view FirstText(std::int64_t cell) const { return first_texts_[PlaceOf(cell)]; }
  std::optional<Number> NumberOf(Id key) const;
  Aside& PutAside(Id key);

  MergeKeys keys_;
  std::vector<Aside> aside_;  ///< a value that has got here stays here, whatever it becomes
  FieldList first_texts_;
};

}  // namespace ptick
