#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ptick {

/// A list of values most of which are ordinary numbers: those are held as numbers, any other text
/// as it was read.
class MergeValues {
 public:
  void Append(std::string_view text);
  void Append(std::uint32_t number) { numbers_.push_back(number); }
  void Set(std::size_t index, std::string_view text);

  /// Adds a value to element `index`, as the value layer adds texts.
  void AddTo(std::size_t index, std::string_view text);
  void AddTo(std::size_t index, std::uint32_t number) {
    std::int64_t& sum = numbers_[index];
    if (sum != kTextAside && sum <= std::numeric_limits<std::int64_t>::max() - number) {
      sum += number;
    } else {
      AddTo(index, std::to_string(number));
    }
  }

  /// Brings an element near; a hint, for any index.
  void Prefetch(std::size_t index) const { __builtin_prefetch(numbers_.data() + index); }

  std::string Text(std::size_t index) const;
  void AppendText(std::size_t index, std::string& out) const;

 private:
  /// Stands for "the text is kept aside".
  static constexpr std::int64_t kTextAside = std::numeric_limits<std::int64_t>::min();

  std::vector<std::int64_t> numbers_;
  std::unordered_map<std::size_t, std::string> texts_;
};

}  // namespace ptick
