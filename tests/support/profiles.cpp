#include "support/profiles.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "profile/parse/record_parser.h"
#include "reports/input_lines.h"
#include "support/text_record.h"

namespace ptick::testing {

std::string Tabs(std::string_view text) {
  std::string tabbed(text);
  std::ranges::replace(tabbed, '|', '\t');
  return tabbed;
}

std::string Records(std::initializer_list<std::string_view> records) {
  std::string lines;
  for (const std::string_view record : records) {
    lines += "PROFILE:" + Tabs(record) + "\n";
  }
  return lines;
}

std::string LinesOf(LineBlocks& blocks) {
  std::string text;
  for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
    text += block;
    text += block.ends_with('\n') ? "" : "\n(a line without an end)\n";
  }
  return text;
}

std::string LinesOf(ProfileMerge& merge) {
  MergedLines lines = merge.TakeLines();
  return LinesOf(lines);
}

void AddLines(ProfileMerge& merge, std::string_view lines) {
  std::string padded(lines);
  padded.append(kBlockPadding, '\t');
  padded.shrink_to_fit();
  merge.AddLines(std::string_view(padded).substr(0, lines.size()));
}

Parsed Parse(std::string_view text, const ReadOptions& options) {
  Parsed parsed;
  RecordBlocks lines(std::make_unique<TextRecord>(std::string(text)));
  parsed.problem = ParseProfileLines(lines, options, *parsed.tables);
  return parsed;
}

std::string RowText(const OrderedTicks& ticks, std::size_t row) {
  std::string text;
  ticks.ForEach(row, [&](const TickEntry& entry) {
    text += text.empty() ? "" : " ";
    text += ticks.Programs()[entry.program];
    text += '|';
    text += entry.HasExactText() ? ticks.ExactLine(entry) : std::to_string(entry.line);
    text += '|';
    text += entry.HasExactText() ? ticks.ExactTicks(entry) : std::to_string(entry.ticks);
  });
  return text;
}

std::string RowTexts(const OrderedTicks& ticks) {
  std::string text;
  for (std::size_t row = 0; row < ticks.RowCount(); ++row) {
    text += (row == 0 ? "" : " / ") + RowText(ticks, row);
  }
  return text;
}

std::string RowTexts(TickTable&& ticks, SortOrder order, bool per_program) {
  return RowTexts(OrderedTicks(std::move(ticks), order, per_program));
}

std::vector<std::string> Texts(const PerformTable& performs) {
  std::vector<std::string> texts;
  for (std::size_t n = 0; n < performs.RecordCount(); ++n) {
    std::string& text = texts.emplace_back();
    for (std::size_t number = 0; number < kPerformNumbers; ++number) {
      text += performs[n].Text(static_cast<PerformNumber>(number)) + "]";
    }
    text.append(performs[n].Type()).append("]").append(performs[n].Command());
  }
  return texts;
}

std::vector<std::string> ScriptLines(const KeyboardInputs& inputs, bool typing_rate) {
  std::string script;
  InputLines(typing_rate).AppendAll(inputs, script);
  std::vector<std::string> lines;
  std::istringstream text(script);
  for (std::string line; std::getline(text, line);) {
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> Texts(const NameList& list) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < list.size(); ++i) {
    texts.emplace_back(list[i]);
  }
  return texts;
}

}  // namespace ptick::testing
