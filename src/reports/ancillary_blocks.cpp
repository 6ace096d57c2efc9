#include "reports/ancillary_blocks.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "figures/resource_figures.h"
#include "value/arithmetic.h"
#include "value/mask.h"
#include "value/text.h"

namespace ptick {

namespace {

constexpr std::array<std::string_view, kResourceFigures> kResourceLabels{
    "Maximum resident set size          : ",  //
    "Integral resident set size         : ",  //
    "Page faults with no I/O            : ",  //
    "Page faults requiring physical I/O : ",  //
    "Swaps                              : ",  //
    "Block input operations             : ",  //
    "Block output operations            : ",  //
    "Messages sent                      : ",  //
    "Messages received                  : ",  //
    "Signals received                   : ",  //
    "Voluntary context switches         : ",  //
    "Involuntary context switches       : ",
};

// The lines of one block.
class Block {
 public:
  Block(std::string_view label, Output& output) : prefix_(label), output_(output) {}

  void PrintLine(std::string_view label, std::string_view figure) {
    std::string line = prefix_;
    line += label;
    line += figure;
    output_.PrintLine(line);
    prefix_ = Space(Len(prefix_));
  }

 private:
  std::string prefix_;
  Output& output_;
};

}  // namespace

void PrintResources(const ProfileTables& tables, Output& output) {
  if (tables.Resource.empty()) {
    return;
  }
  Block block("Resource info : ", output);
  const auto figures = ResourceFigures(tables.Resource);
  for (std::size_t n = 0; n < figures.size(); ++n) {
    std::string figure(figures[n]);
    if (n < kPageFigures && tables.PageSize.IsTrue()) {
      figure += "  (" + Fmt(Multiply(figure, tables.PageSize), "ML,") + " bytes)";
    }
    block.PrintLine(kResourceLabels[n], figure);
  }
}

void PrintFileStatements(const ProfileTables& tables, Output& output) {
  Block block("File I/O      : ", output);
  block.PrintLine("READ      statement count          : ", tables.ReadCount.Text());
  block.PrintLine("WRITE     statement count          : ", tables.WriteCount.Text());
  block.PrintLine("DELETE    statement count          : ", tables.DeleteCount.Text());
  block.PrintLine("CLEARFILE statement count          : ", tables.ClearFileCount.Text());
  block.PrintLine("OPEN      statement count          : ", tables.OpenCount.Text());
  block.PrintLine("PERFORM   statement count          : ", std::to_string(tables.Performs.Count()));
}

}  // namespace ptick
