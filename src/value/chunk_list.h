#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <vector>

namespace ptick {

/// A list of small plain things that grows without moving them: append, read, nothing else. Memory
/// that is not yet in use has never been touched.
template <typename Item>
class ChunkList {
 public:
  void Append(const Item& item) {
    if (next_ == end_) {
      AddChunk();
    }
    *next_++ = item;
  }

  std::size_t size() const {
    return chunks_.size() * kChunk - static_cast<std::size_t>(end_ - next_);
  }

  /// Item `index`, counted from 0.
  const Item& operator[](std::size_t index) const {
    return chunks_[index / kChunk][index % kChunk];
  }

 private:
  static_assert(std::is_trivially_copyable_v<Item>);
  static constexpr std::size_t kChunk = std::size_t{1} << 14U;

  void AddChunk() {
    chunks_.push_back(std::make_unique_for_overwrite<Item[]>(kChunk));  // NOLINT(*-c-arrays)
    next_ = chunks_.back().get();
    end_ = next_ + kChunk;
  }

  std::vector<std::unique_ptr<Item[]>> chunks_;  // NOLINT(*-c-arrays): left uninitialised
  Item* next_ = nullptr;                         ///< the place after the last item
  Item* end_ = nullptr;                          ///< of the last chunk
};

}  // namespace ptick
