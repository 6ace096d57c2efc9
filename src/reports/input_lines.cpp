#include "reports/input_lines.h"

#include <cstddef>

#include "figures/clock_time.h"
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

void AppendInputLine(std::string_view text, const LineEnding& ending, std::string& lines) {
  lines += "INPUT \"";
  for (const char c : text) {
    AppendEscaped(c, lines);
  }
  for (const char c : ending.typed) {
    AppendEscaped(c, lines);
  }
  lines += '"';
  lines += ending.suffix;
  lines += '\n';
}

}  // namespace

void InputLines::AppendAll(const KeyboardInputs& inputs, std::string& lines) {
  auto setting = inputs.ClockSettings().begin();
  for (std::size_t n = 0; n < inputs.Count(); ++n) {
    for (; setting != inputs.ClockSettings().end() && setting->inputs_before == n; ++setting) {
      Set(*setting);
    }
    Append(inputs[n], lines);
  }
}

void InputLines::Set(const ClockSetting& setting) {
  if (setting.kind == ClockSetting::Kind::kStartClock) {
    last_clock_ = setting.value;
  } else if (setting.value.empty()) {
    hertz_.reset();
  } else {
    hertz_ = Value(setting.value).AsNumber();
  }
}

void InputLines::Append(const KeyboardInput& input, std::string& lines) {
  const Value code = input.code;
  if (hertz_) {
    const Value pause = ElapsedSeconds(last_clock_, input.start_clock, *hertz_);
    if (last_clock_ != 0 && pause > 0) {
      lines += "SLEEP " + pause.Text() + '\n';
    }
    last_clock_ = input.end_clock;
    const Value keys = code != 0 ? Increment(input.characters) : Value(input.characters);
    if (typing_rate_ && keys > 0) {
      const Value seconds = ElapsedSeconds(input.start_clock, input.end_clock, *hertz_);
      lines += "TYPEDELAY " + Divide(seconds, keys).Text() + '\n';
    }
  }
  AppendInputLine(input.text, EndingOf(code), lines);
}

}  // namespace ptick
