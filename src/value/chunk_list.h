#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace ptick {

/// A list of small plain things that grows without moving them: append, read, nothing else. Memory
/// that is not yet in use has never been touched.
template <typename Item>
class ChunkList {
 public:
  ChunkList() = default;
  ChunkList(const ChunkList& other) {
    for (std::size_t index = 0; index < other.size(); ++index) {
      Append(other[index]);
    }
  }
  ChunkList(ChunkList&& other) noexcept { Swap(other); }
  ChunkList& operator=(ChunkList other) noexcept {
    Swap(other);
    return *this;
  }
  ~ChunkList() = default;

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

  void Swap(ChunkList& other) noexcept {
    chunks_.swap(other.chunks_);
    std::swap(next_, other.next_);
    std::swap(end_, other.end_);
  }

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
