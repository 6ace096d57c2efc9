// Text that may be shown on a terminal: nothing in it drives the terminal, reorders or hides text.
#pragma once

#include <string>
#include <string_view>

namespace ptick::companion {

/// Whether a character is kept from terminals: control characters (C0, DEL, C1), LF and TAB
/// included, and those that reorder or hide text (U+200B-200F, U+2028-202E, U+2060-2069, U+FEFF,
/// U+E0000-E007F).
bool DrivesTerminal(char32_t code);

/// What of line ends and TABs stays: in lines both, in one line TABs, in a cell of a table neither.
enum class TextPlace { kLines, kLine, kCell };

/// Adds the text with a '?' for each character that drives a terminal and each byte from 0x80 to
/// 0x9F that is no part of a UTF-8 character, but for the LF and TAB that stay.
void AppendTerminalText(std::string& safe, std::string_view text, TextPlace place);

std::string TerminalText(std::string_view text, TextPlace place);

}  // namespace ptick::companion
