// Standard error: messages, and the status line of a terminal.
#pragma once

#include <mutex>
#include <string>
#include <string_view>

#include "companion/messages.h"
#include "companion/progress.h"

namespace ptick::companion {

/// Each message is written at once and whole. On a terminal what would drive it is replaced in
/// names and reasons. The status line is seen on a terminal that obeys sequences, while this
/// process is in its foreground.
class StandardError final : public Messages, public StatusLine {
 public:
  /// `program` is its name, which lives as long as this.
  explicit StandardError(std::string_view program);

  /// Whether there is to be no status line.
  void SetQuiet(bool is_quiet) { is_quiet_ = is_quiet; }

  void Tell(const Problem& problem) override;
  /// How to go on when the program was used in a wrong way.
  void TellHelp();
  /// Without memory.
  void TellOutOfMemory() noexcept;

  bool IsSeen() const override;
  void Show(std::string_view text) override;
  void Erase() override;

 private:
  void Write(std::string line);
  void EraseHeld();

  std::string_view program_;
  bool is_terminal_;
  bool is_quiet_ = false;
  std::mutex writing_;
  bool is_status_shown_ = false;
};

}  // namespace ptick::companion
