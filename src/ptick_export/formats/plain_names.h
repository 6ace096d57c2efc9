// Names in formats of plain lines, where some characters mean something.
#pragma once

#include <string>
#include <string_view>

namespace ptick::exports {

/// Characters that are escaped besides backslashes, control characters and what ends lines.
struct PlainNameRules {
  bool semicolons = false;
  bool hash_signs = false;
  /// Blanks at the ends, which readers drop.
  bool outer_blanks = false;
};

/// Adds a name, which is UTF-8: `\\` for a backslash, `\xHH` or `\uHHHH` for other characters that
/// are escaped, `(empty)` for an empty name. Different names are different texts.
void AppendPlainName(std::string& line, std::string_view name, const PlainNameRules& rules);

}  // namespace ptick::exports
