// What the system knows of the terminal on a descriptor.
#pragma once

#include <cstddef>

#include "companion/text_form.h"

namespace ptick::companion {

bool IsTerminal(int fd);

/// How many columns the terminal has, by COLUMNS or by itself; 80 when nobody says.
std::size_t ColumnsOf(int fd);

/// Whether this process is in the terminal's foreground, where it may write to it unasked.
bool IsInForeground(int fd);

/// The form of a result that goes to a descriptor, for the values of NO_COLOR, TERM and COLUMNS.
TextForm FormFor(int fd, ColorWhen color);

}  // namespace ptick::companion
