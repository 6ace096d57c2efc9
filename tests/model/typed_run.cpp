#include "model/typed_run.h"

#include <algorithm>
#include <memory_resource>
#include <stdexcept>
#include <utility>

#include "output/stop.h"
#include "profile/parse/record_parser.h"
#include "profile/parse_merged.h"
#include "ptick/read_messages.h"
#include "support/memory_platform.h"

namespace ptick::model {

std::optional<std::size_t> PiecewiseRecord::Read(std::span<char> block) {
  const std::size_t most = std::min({block.size(), text_.size() - at_, longest_piece_});
  const std::size_t size = most == 0 ? 0 : random_.Between(1, most);
  text_.copy(block.data(), size, at_);
  at_ += size;
  return size;
}

Delivery RandomDelivery(RandomSource& random) {
  return {.block_size = random.Between(1, 300),
          .longest_piece = random.Between(1, 200),
          .seed = random.Below(1000000)};
}

Ran RunTyped(const std::function<void(Output&)>& piece) {
  MemoryPlatform platform;
  Ran ran;
  Output output(platform, "ptick");
  try {
    piece(output);
    output.Finish();
  } catch (const Stop& stop) {
    output.Close();
    ran.stopped = stop.status;
  }
  ran.output = platform.printed;
  ran.terminal = platform.on_terminal;
  return ran;
}

namespace {

Ran ReadTyped(const RunOptions& options,
              const std::function<std::optional<ReadProblem>(const ReadOptions&)>& read) {
  ReadOptions read_options;
  read_options.keep_inputs = !options.KeyScriptFile.empty();
  return RunTyped([&](Output& output) {
    if (const auto problem = read(read_options)) {
      PrintProblem(*problem, output);
      throw Stop{2};
    }
  });
}

}  // namespace

Ran ParseTyped(LineBlocks& lines, const RunOptions& options, ProfileTables& tables) {
  return ReadTyped(options, [&](const ReadOptions& read_options) {
    return ParseProfileLines(lines, read_options, tables);
  });
}

Ran ParseTyped(const MergedKeys& keys, const RunOptions& options, ProfileTables& tables) {
  return ReadTyped(options, [&](const ReadOptions& read_options) {
    return ParseMerged(keys, read_options, tables);
  });
}

Ran ParseTyped(const std::string& text, const Delivery& delivery, const RunOptions& options,
               ProfileTables& tables) {
  RecordBlocks blocks(
      std::make_unique<PiecewiseRecord>(text, delivery.longest_piece, delivery.seed),
      delivery.block_size);
  return ParseTyped(blocks, options, tables);
}

MergedProfile MergeTyped(const std::vector<std::string>& texts) {
  MemoryPlatform platform;
  platform.block_size = 1 + texts.front().size() / 3;
  std::vector<std::string> names;
  for (const std::string& text : texts) {
    const std::string record = "run" + std::to_string(names.size() + 1);
    platform.files["."][record] = {text};
    names.push_back(record);
  }
  return MergeProfileFiles(
      names, platform, std::pmr::get_default_resource(),
      [](const ReadProblem& problem) { throw std::logic_error("cannot read " + problem.name); });
}

std::vector<std::string> ReadLines(LineBlocks& blocks) {
  std::vector<std::string> lines;
  for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
    while (!block.empty()) {
      const std::size_t end = block.find('\n');
      lines.emplace_back(block.substr(0, end));
      block.remove_prefix(std::min(end, block.size() - 1) + 1);
    }
  }
  return lines;
}

}  // namespace ptick::model
