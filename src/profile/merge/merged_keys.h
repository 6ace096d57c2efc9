#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "profile/merge/merge_part.h"
#include "profile/merge/merge_values.h"

namespace ptick {

/// A merged line, by its place in the tables.
struct MergedKey {
  const MergeValues* values = nullptr;
  std::size_t part = 0;
  MergeKeys::Id key = 0;

  /// Appends the line and its end.
  void AppendLine(std::string& out) const;
};

/// The keys of a merge with their values, in order of their first appearance. Lots of them follow
/// each other; any of those can be walked over, by several threads at once.
class MergedKeys {
 public:
  explicit MergedKeys(MergeValues&& values);
  /// REQUIRES: at least one part.
  explicit MergedKeys(std::vector<MergePart>&& parts);

  std::size_t PartCount() const { return parts_.size(); }
  std::size_t LotCount() const { return parts_.front().LotCount(); }
  /// The number of keys in the lots before `lot`.
  std::size_t CountBefore(std::size_t lot) const;

  class Walk;

 private:
  std::vector<MergePart> parts_;
};

/// Walks over the keys of some lots.
class MergedKeys::Walk {
 public:
  Walk(const MergedKeys& keys, std::size_t begin_lot, std::size_t end_lot);

  /// The next key; `values` is null at the end.
  MergedKey Next();

 private:
  /// What is left of a lot in a part.
  struct Rest {
    MergeKeys::Id next = 0;
    MergeKeys::Id end = 0;
    std::uint64_t place = 0;  ///< of the next key in the lot
  };
  static constexpr std::uint64_t kNowhere = ~std::uint64_t{0};

  void StartLot();
  void FindPlace(std::size_t part);

  const std::vector<MergePart>* parts_;
  std::size_t lot_;
  std::size_t end_lot_;
  std::vector<Rest> rests_;  ///< by part
};

}  // namespace ptick
