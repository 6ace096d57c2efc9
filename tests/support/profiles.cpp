#include "support/profiles.h"

#include <algorithm>
#include <utility>

#include "output/output.h"
#include "output/stop.h"
#include "profile/parse/record_parser.h"
#include "support/memory_platform.h"
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

void AddLines(ProfileMerge& merge, std::string_view lines) {
  std::string padded(lines);
  padded.append(kBlockPadding, '\t');
  padded.shrink_to_fit();
  merge.AddLines(std::string_view(padded).substr(0, lines.size()));
}

Parsed Parse(std::string_view text, const RunOptions& options) {
  MemoryPlatform platform;
  Output output(platform);
  Parsed parsed;
  RecordBlocks lines(std::make_unique<TextRecord>(std::string(text)));
  try {
    ParseProfileLines(lines, options, output, *parsed.tables);
  } catch (const Stop& stop) {
    parsed.stopped = stop.status;
  }
  parsed.terminal = std::move(platform.on_terminal);
  return parsed;
}

std::string RowText(const TickTable& details, std::size_t row) {
  std::string text;
  details.ForEach(row, [&](const TickEntry& entry) {
    text += text.empty() ? "" : " ";
    text += details.Programs()[entry.program];
    text += '|';
    text += entry.HasExactText() ? details.ExactLine(entry) : std::to_string(entry.line);
    text += '|';
    text += entry.HasExactText() ? details.ExactTicks(entry) : std::to_string(entry.ticks);
  });
  return text;
}

std::string RowTexts(const TickTable& details) {
  std::string text;
  for (std::size_t row = 0; row < details.RowCount(); ++row) {
    text += (row == 0 ? "" : " / ") + RowText(details, row);
  }
  return text;
}

std::vector<std::string> Texts(const FieldList& list) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < list.size(); ++i) {
    texts.emplace_back(list[i]);
  }
  return texts;
}

}  // namespace ptick::testing
