// The progress of long work, told on a line of the terminal.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace ptick::companion {

/// The line of a terminal on which progress shows, if there is one.
class StatusLine {
 public:
  StatusLine() = default;
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;
  virtual ~StatusLine() = default;

  /// Whether anybody sees it.
  virtual bool IsSeen() const = 0;
  /// Shows a text in place of what it showed, cut to its width.
  virtual void Show(std::string_view text) = 0;
  /// Leaves nothing of it; harmless when nothing shows.
  virtual void Erase() = 0;
};

/// What the line says, elapsed being the time since the work began. Share and time left need a
/// total, and that no more than it has been read.
std::string ProgressText(std::uint64_t bytes_read, std::optional<std::uint64_t> bytes_of_all,
                         std::chrono::steady_clock::duration elapsed);

/// Counts what is read, and shows it when that takes longer than a second; erased with its end.
class Progress {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;
  /// How many bytes there are to be read, nothing when that is not known: asked for once, if at
  /// all.
  using Total = std::function<std::optional<std::uint64_t>()>;

  Progress(StatusLine& line, Total total, Clock clock = std::chrono::steady_clock::now);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  /// Tells that more has been read. To be called every few thousand bytes or more, by any thread.
  void Add(std::uint64_t bytes);

 private:
  void Show(std::chrono::steady_clock::time_point now);

  StatusLine& line_;
  Total total_;
  Clock clock_;
  bool is_seen_;
  std::chrono::steady_clock::time_point begin_;
  std::atomic<std::uint64_t> bytes_read_ = 0;

  std::mutex showing_;
  std::chrono::steady_clock::time_point next_;
  bool is_total_known_ = false;
  std::optional<std::uint64_t> bytes_of_all_;
};

}  // namespace ptick::companion
