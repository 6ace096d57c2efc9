#include "parallel/piece_work.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

namespace ptick {

namespace {

using Lock = std::unique_lock<std::mutex>;

// What a thread waits for is nearly always near, and going to sleep takes longer: so often it looks
// for it first, for some fifty microseconds.
constexpr int kLooks = 1000;

void PauseBetweenLooks() {
#if defined(__x86_64__)
  __builtin_ia32_pause();
#endif
}

/// Pieces on their way, and the threads that move them on.
class PieceRun {
 public:
  PieceRun(PieceWork& work, unsigned threads, std::size_t slots);
  PieceRun(const PieceRun&) = delete;
  PieceRun& operator=(const PieceRun&) = delete;
  ~PieceRun();

  void RunAsCaller();

 private:
  struct Piece {
    std::size_t slot = 0;
    bool is_done = false;
  };

  void StartThreads(unsigned count);
  void RunAsHelper(unsigned thread);
  void DoNext(Lock& lock, unsigned thread);
  bool BeginNext(Lock& lock, std::size_t slot);
  void FinishNext(Lock& lock);
  void KeepFailure(Lock& lock);
  void Tell();
  void Wait(Lock& lock);

  Piece& PieceAt(std::size_t number) { return pieces_[number % pieces_.size()]; }
  bool CanBegin() const { return !ended_ && !beginning_ && !free_slots_.empty(); }
  bool CanFinish() { return finished_ < begun_ && PieceAt(finished_).is_done; }

  PieceWork& work_;
  std::mutex mutex_;  ///< guards what follows, except the threads
  std::condition_variable changed_;
  std::atomic<std::uint32_t> changes_ = 0;  ///< written with the lock, looked at without it
  unsigned sleeping_ = 0;                   ///< threads that wait for a change
  std::vector<Piece> pieces_;               ///< those on their way, by their numbers
  std::vector<std::size_t> free_slots_;     ///< the one used last first: its memory is in the cache
  std::size_t begun_ = 0;
  std::size_t finished_ = 0;
  bool beginning_ = false;  ///< a thread is in Begin
  bool ended_ = false;      ///< no further piece begins
  std::exception_ptr failure_;

  std::vector<std::thread> threads_;
};

PieceRun::PieceRun(PieceWork& work, unsigned threads, std::size_t slots)
    : work_(work), pieces_(slots) {
  free_slots_.reserve(pieces_.size());
  for (std::size_t slot = pieces_.size(); slot-- > 0;) {
    free_slots_.push_back(slot);
  }
  StartThreads(threads - 1);
}

// Threads are a help and no need: with fewer of them the work takes longer.
void PieceRun::StartThreads(unsigned count) {
  try {
    threads_.reserve(count);
    for (unsigned thread = 1; thread <= count; ++thread) {
      threads_.emplace_back([this, thread] { RunAsHelper(thread); });
    }
  } catch (const std::system_error&) {  // NOLINT(bugprone-empty-catch)
  } catch (const std::bad_alloc&) {     // NOLINT(bugprone-empty-catch)
  }
}

PieceRun::~PieceRun() {
  {
    const Lock lock(mutex_);
    ended_ = true;
    Tell();
  }
  for (std::thread& thread : threads_) {
    thread.join();
  }
}

void PieceRun::RunAsHelper(unsigned thread) {
  Lock lock(mutex_);
  while (!ended_) {
    if (CanBegin()) {
      DoNext(lock, thread);
    } else {
      Wait(lock);
    }
  }
}

// What is ready is finished before a further piece is begun.
void PieceRun::RunAsCaller() {
  Lock lock(mutex_);
  while (!failure_ && (!ended_ || finished_ < begun_)) {
    if (CanFinish()) {
      FinishNext(lock);
    } else if (CanBegin()) {
      DoNext(lock, 0);
    } else {
      Wait(lock);
    }
  }
  if (failure_) {
    std::rethrow_exception(failure_);
  }
}

// Begins a piece and does it, without the lock while the work is at work.
void PieceRun::DoNext(Lock& lock, unsigned thread) {
  const std::size_t slot = free_slots_.back();
  free_slots_.pop_back();
  try {
    if (!BeginNext(lock, slot) || ended_) {
      return;
    }
    Piece& piece = PieceAt(begun_++);
    piece = {.slot = slot, .is_done = false};
    Tell();  // the next piece can begin
    lock.unlock();
    work_.Do(slot, thread);
    lock.lock();
    piece.is_done = true;
  } catch (...) {
    KeepFailure(lock);
  }
  Tell();
}

bool PieceRun::BeginNext(Lock& lock, std::size_t slot) {
  beginning_ = true;
  lock.unlock();
  const bool has_begun = work_.Begin(slot);
  lock.lock();
  beginning_ = false;
  if (!has_begun) {
    free_slots_.push_back(slot);
    ended_ = true;
    Tell();
  }
  return has_begun;
}

void PieceRun::FinishNext(Lock& lock) {
  const std::size_t slot = PieceAt(finished_).slot;
  lock.unlock();
  const bool goes_on = work_.Finish(slot);
  lock.lock();
  ++finished_;
  free_slots_.push_back(slot);
  if (!goes_on) {
    ended_ = true;
    finished_ = begun_;
  }
  Tell();
}

// Called in a handler.
void PieceRun::KeepFailure(Lock& lock) {
  if (!lock.owns_lock()) {
    lock.lock();
  }
  failure_ = std::current_exception();
  ended_ = true;
}

// Tells all threads that something has changed. Called with the lock.
void PieceRun::Tell() {
  changes_.fetch_add(1, std::memory_order_relaxed);
  if (sleeping_ > 0) {
    changed_.notify_all();
  }
}

// Waits for a change.
void PieceRun::Wait(Lock& lock) {
  const std::uint32_t seen = changes_.load(std::memory_order_relaxed);
  lock.unlock();
  for (int looks = kLooks; looks > 0; --looks) {
    if (changes_.load(std::memory_order_relaxed) != seen) {
      lock.lock();
      return;
    }
    PauseBetweenLooks();
  }
  lock.lock();
  ++sleeping_;
  changed_.wait(lock, [this, seen] { return changes_.load(std::memory_order_relaxed) != seen; });
  --sleeping_;
}

/// Pieces that are nothing but numbers.
class Numbers final : public PieceWork {
 public:
  Numbers(std::size_t count, unsigned threads, const std::function<void(std::size_t)>& work)
      : count_(count), work_(work), numbers_(SlotsFor(threads)) {}

  bool Begin(std::size_t slot) override {
    numbers_[slot] = next_;
    return next_++ < count_;
  }
  void Do(std::size_t slot, unsigned /*thread*/) override { work_(numbers_[slot]); }
  bool Finish(std::size_t /*slot*/) override { return true; }

 private:
  std::size_t count_;
  const std::function<void(std::size_t)>& work_;
  std::size_t next_ = 0;
  std::vector<std::size_t> numbers_;  ///< by slot
};

}  // namespace

void DoEach(std::size_t count, unsigned threads, const std::function<void(std::size_t)>& work) {
  Numbers numbers(count, threads, work);
  DoInOrder(numbers, threads);
}

void DoInOrder(PieceWork& work, unsigned threads) { DoInOrder(work, threads, SlotsFor(threads)); }

void DoInOrder(PieceWork& work, unsigned threads, std::size_t slots) {
  PieceRun(work, threads, slots).RunAsCaller();
}

}  // namespace ptick
