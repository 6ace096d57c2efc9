#pragma once

#include <cstddef>
#include <functional>

namespace ptick {

/// Work that falls into pieces, one after the other, most of which can be done on any thread.
///
/// A piece lives in a slot, a number below SlotsFor(threads), from its Begin to its Finish; few are
/// on their way at a time.
class PieceWork {
 public:
  PieceWork() = default;
  PieceWork(const PieceWork&) = delete;
  PieceWork& operator=(const PieceWork&) = delete;
  virtual ~PieceWork() = default;

  /// Begins the next piece; false when there is none. Pieces begin in order, one at a time, each on
  /// any thread.
  virtual bool Begin(std::size_t slot) = 0;

  /// Does a piece that has begun; several at a time. `thread` is the number of the thread that does
  /// it, the caller's being 0.
  virtual void Do(std::size_t slot, unsigned thread) = 0;

  /// Takes what has become of a piece; in order, one at a time, on the caller's thread. False when
  /// no further piece is to finish.
  virtual bool Finish(std::size_t slot) = 0;
};

/// The number of slots that DoInOrder uses.
constexpr std::size_t SlotsFor(unsigned threads) { return 2 * std::size_t{threads} + 1; }

/// Does all pieces on as many threads, the caller's included, at least 1. Where the system refuses
/// a thread, it does with those that there are. What a piece throws on any thread is thrown here,
/// once no other thread works any more; of several exceptions, one of them.
void DoInOrder(PieceWork& work, unsigned threads);

/// The same with as many slots as it says: with more of them, other threads go on for longer while
/// one is at a long piece.
void DoInOrder(PieceWork& work, unsigned threads, std::size_t slots);

/// Calls `work` with each number below `count`, on any thread, several at a time; the rest as
/// above.
void DoEach(std::size_t count, unsigned threads, const std::function<void(std::size_t)>& work);

}  // namespace ptick
