#include "companion/linux/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>

namespace ptick::companion {

bool IsTerminal(int fd) { return ::isatty(fd) == 1; }

std::size_t ColumnsOf(int fd) {
  winsize size = {};
  std::optional<std::size_t> columns;
  if (::ioctl(fd, TIOCGWINSZ, &size) == 0) {
    columns = size.ws_col;
  }
  return TerminalColumns(std::getenv("COLUMNS"), columns);
}

bool IsInForeground(int fd) {
  const pid_t foreground = ::tcgetpgrp(fd);
  // A terminal that does not control this process has no foreground for it.
  return foreground < 0 || foreground == ::getpgrp();
}

TextForm FormFor(int fd, ColorWhen color) {
  TextForm form;
  form.to_terminal = IsTerminal(fd);
  form.has_color = UsesColor(color, {.to_terminal = form.to_terminal,
                                     .no_color = std::getenv("NO_COLOR"),
                                     .term = std::getenv("TERM")});
  if (form.to_terminal) {
    form.columns = ColumnsOf(fd);
  }
  return form;
}

}  // namespace ptick::companion
