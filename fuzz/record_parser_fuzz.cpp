// A profile of any bytes, parsed: the tables are those of the model, whatever the sizes in which
// its text arrives; so are the reports printed from them.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "model/comparison.h"
#include "profile/ticks/sort_order.h"
#include "ptick/run_options.h"

namespace {

ptick::RunOptions OptionsOf(unsigned int bits) {
  ptick::RunOptions options;
  options.PerProgram = (bits & 1U) != 0;
  options.CpuOption = (bits & 2U) != 0;
  options.TickOrder =
      (bits & 4U) != 0 ? ptick::SortOrder::kAscending : ptick::SortOrder::kDescending;
  options.KeyScriptFile = (bits & 8U) != 0 ? "keys" : "";
  options.TypeRateOption = (bits & 16U) != 0;
  return options;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using ptick::fuzz::RequireEqual;
  using namespace ptick::model;
  ptick::fuzz::FuzzInput input(data, size);
  const unsigned int choice = input.TakeByte();
  const ptick::RunOptions options = OptionsOf(choice);
  Delivery delivery;
  delivery.block_size = std::size_t{1} + input.TakeByte();
  delivery.longest_piece = std::size_t{1} + input.TakeByte();
  delivery.seed = input.TakeByte();
  const std::string profile = input.TakeRest();
  const Delivery whole = {.block_size = profile.size() + 1, .longest_piece = profile.size() + 1};

  RequireEqual("", ParseDifference(profile, options, whole), "the tables are the model's");
  RequireEqual("", ParseDifference(profile, options, delivery), "torn lines change nothing");
  if ((choice & 32U) == 0) {
    return 0;
  }
  RequireEqual("", LineReportDifference(profile, options), "the rows are the model's");
  RequireEqual("", ProgramOrderDifference(profile, options), "programs are in the model's order");
  RequireEqual("", PerformSummaryDifference(profile), "the summary is the model's");
  RequireEqual("", OtherReportsDifference(profile), "the other reports are the model's");
  return 0;
}
