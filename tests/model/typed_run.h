#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/random_source.h"
#include "output/output.h"
#include "platform/platform.h"
#include "profile/profile_loader.h"
#include "profile/tables/profile_tables.h"
#include "ptick/run_options.h"

namespace ptick::model {

/// A record that hands out a text in pieces of odd sizes, which a seed determines.
class PiecewiseRecord final : public RecordReader {
 public:
  PiecewiseRecord(std::string text, std::size_t longest_piece, std::uint64_t seed)
      : text_(std::move(text)), longest_piece_(longest_piece), random_(seed) {}

  std::optional<std::size_t> Read(std::span<char> block) override;

 private:
  std::string text_;
  std::size_t longest_piece_;
  RandomSource random_;
  std::size_t at_ = 0;
};

/// How a text reaches the parser.
struct Delivery {
  std::size_t block_size = std::size_t{256} * 1024;
  std::size_t longest_piece = std::size_t{256} * 1024;
  std::uint64_t seed = 0;
};

/// Sizes small enough that lines are torn anywhere.
Delivery RandomDelivery(RandomSource& random);

/// The results of a run of the program's own code.
struct Ran {
  std::string output;
  std::string terminal;
  std::optional<int> stopped;  ///< the status, when it was stopped early
};

/// Runs a piece of the program with output into memory, up to its end or stop.
Ran RunTyped(const std::function<void(Output&)>& piece);

/// Lines, merged keys or a text, parsed into the tables, everything kept. An invalid line is said
/// and stops the run as in the program.
Ran ParseTyped(LineBlocks& lines, const RunOptions& options, ProfileTables& tables);
Ran ParseTyped(const MergedKeys& keys, const RunOptions& options, ProfileTables& tables);
Ran ParseTyped(const std::string& text, const Delivery& delivery, const RunOptions& options,
               ProfileTables& tables);

/// Profiles of these texts, named run1, run2 and so on, merged by the loader's rules.
MergedProfile MergeTyped(const std::vector<std::string>& texts);

/// All lines that are left in `blocks`.
std::vector<std::string> ReadLines(LineBlocks& blocks);

}  // namespace ptick::model
