#include "companion/linux/standard_error.h"

#include <unistd.h>

#include <cstdlib>
#include <string>

#include "companion/display_width.h"
#include "companion/linux/signal_cleanup.h"
#include "companion/linux/terminal.h"
#include "companion/terminal_text.h"
#include "companion/text_form.h"
#include "platform/linux/write_all.h"

namespace ptick::companion {

StandardError::StandardError(std::string_view program)
    : program_(program), is_terminal_(IsTerminal(STDERR_FILENO)) {}

void StandardError::Tell(const Problem& problem) { Write(MessageLine(program_, problem)); }

void StandardError::TellHelp() {
  Write("Try '" + std::string(program_) + " --help' for more information.\n");
}

void StandardError::TellOutOfMemory() noexcept {
  Erase();
  // Piece by piece: there is no room to put them together.
  for (const std::string_view piece : {program_, std::string_view(": out of memory\n")}) {
    WriteAll(STDERR_FILENO, piece);
  }
}

void StandardError::Write(std::string line) {
  if (is_terminal_) {
    // A message stays on its line, whatever names hold.
    line.pop_back();
    line = TerminalText(line, TextPlace::kLine) + "\n";
  }
  const std::lock_guard<std::mutex> lock(writing_);
  EraseHeld();
  // Nobody is left to be told when this fails.
  WriteAll(STDERR_FILENO, line);
}

bool StandardError::IsSeen() const {
  return is_terminal_ && !is_quiet_ && ObeysSequences(std::getenv("TERM"));
}

void StandardError::Show(std::string_view text) {
  if (!IsSeen() || !IsInForeground(STDERR_FILENO)) {
    return;
  }
  const std::string whole = std::string(program_) + ": " + TerminalText(text, TextPlace::kCell);
  // The last column stays free: a terminal may go to the next line when it is used.
  const std::size_t columns = ColumnsOf(STDERR_FILENO) - 1;
  const std::string line = std::string(kEraseLine) + CutToWidth(whole, columns);
  const std::lock_guard<std::mutex> lock(writing_);
  is_status_shown_ = true;
  SetStatusLineShown(true);
  WriteAll(STDERR_FILENO, line);
}

void StandardError::Erase() {
  const std::lock_guard<std::mutex> lock(writing_);
  EraseHeld();
}

void StandardError::EraseHeld() {
  if (is_status_shown_) {
    WriteAll(STDERR_FILENO, kEraseLine);
    is_status_shown_ = false;
    SetStatusLineShown(false);
  }
}

}  // namespace ptick::companion
