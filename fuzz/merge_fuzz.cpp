// Several profiles of any bytes, divided by zero bytes, merged: the lines and the tables parsed
// from them are those of the model, whatever the sizes in which the texts arrive.

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "model/comparison.h"
#include "model/line_difference.h"
#include "profile/profile_loader.h"
#include "support/memory_platform.h"

namespace {

using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

constexpr std::size_t kMaxProfiles = 6;

std::string MergedText(const std::vector<std::string>& texts, std::size_t block_size) {
  ptick::MemoryPlatform platform;
  platform.block_size = block_size;
  std::vector<std::string> names;
  for (const std::string& text : texts) {
    names.push_back("run" + std::to_string(names.size()));
    platform.files["."][names.back()] = {text};
  }
  ptick::MergedProfile merged = ptick::MergeProfileFiles(
      names, platform, std::pmr::get_default_resource(),
      [](const ptick::ReadProblem&) { Require(false, "every profile can be read"); });
  const bool is_empty = merged.merge.Empty();
  ptick::MergedLines lines = merged.merge.TakeLines();
  std::string text = ptick::model::JoinLines(ptick::model::ReadLines(lines));
  Require(text.empty() == is_empty, "an empty merge has no lines");
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  ptick::RunOptions options;
  options.PerProgram = input.TakeFlag();
  const std::size_t block_size = std::size_t{1} + input.TakeByte();
  std::vector<std::string> texts;
  while (texts.size() < kMaxProfiles && (texts.size() < 2 || !input.Empty())) {
    texts.push_back(input.TakeUpTo('\0'));
  }

  RequireEqual("", ptick::model::MergeDifference(texts), "the merged lines are the model's");
  RequireEqual("", ptick::model::MergedParseDifference(texts, options),
               "the tables of the merged lines are the model's");
  const std::string merged = MergedText(texts, size + 1);
  RequireEqual(merged, MergedText(texts, block_size), "block sizes do not change the merged lines");
  return 0;
}
