#include "reports/keyboard_lines.h"

#include <string>

#include "profile/scan/tab_fields.h"
#include "value/arithmetic.h"
#include "value/mask.h"
#include "value/text.h"

namespace ptick {

namespace {

/// How an input ended: what the ending character adds to the text and to the replay line.
struct LineEnding {
  std::string typed;
  std::string_view suffix;
};

LineEnding EndingOf(const Value& code) {
  if (code == 0 || code.Empty()) {
    return {"", " NOCR"};
  }
  if (code == '\n' || code == '\r') {
    return {"", ""};
  }
  return {Char(code), " NOCR"};
}

void AppendEscaped(char c, std::string& out) {
  const auto code = static_cast<unsigned char>(c);
  if (c == '"' || c == '~') {
    out += '~';
    out += c;
  } else if (code >= 32 && code <= 126) {
    out += c;
  } else {
    static const Mask code_mask = Mask::Parse("R%3");
    out += '~';
    code_mask.Append(std::to_string(code), out);
  }
}

std::string InputLine(std::string_view text, const LineEnding& ending) {
  std::string line = "INPUT \"";
  for (const char c : text) {
    AppendEscaped(c, line);
  }
  for (const char c : ending.typed) {
    AppendEscaped(c, line);
  }
  line += '"';
  line += ending.suffix;
  return line;
}

}  // namespace

void AppendKeyboardLines(std::string_view profile_line, bool typing_rate, ProfileTables& tables) {
  TabFields fields(profile_line);
  fields.Next();  // the record type
  const Value code = fields.Next();
  const Value typed = fields.Next();
  const Value start = fields.Next();
  const Value end = fields.Next();

  if (!tables.Hertz.Empty()) {
    const Value pause = Divide(Subtract(start, tables.LastClock), tables.Hertz);
    if (tables.LastClock != 0 && pause > 0) {
      tables.KeyScript.Append("SLEEP " + pause.Text());
    }
    tables.LastClock = end;
    const Value keys = code != 0 ? Increment(typed) : typed;
    if (typing_rate && keys > 0) {
      const Value seconds = Divide(Subtract(end, start), tables.Hertz);
      tables.KeyScript.Append("TYPEDELAY " + Divide(seconds, keys).Text());
    }
  }
  tables.KeyScript.Append(InputLine(fields.Rest(), EndingOf(code)));
}

}  // namespace ptick
