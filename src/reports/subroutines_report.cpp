#include "reports/subroutines_report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "figures/subroutine_order.h"
#include "reports/columns.h"
#include "reports/report_heading.h"

namespace ptick {

namespace {

// The page heading goes without "called".
ColumnTitles SubroutineColumns() {
  return {.heading = "Times       Subroutine",
          .title = "Times       Subroutine called",
          .rule = "-----       ---------- ------"};
}

constexpr std::size_t kTimesWidth = 10;
constexpr std::size_t kNamePlace = kTimesWidth + 2;

/// The column of times with the blanks after it. Calls come in the order of their times, so it
/// often is that of the call before.
class TimesColumn {
 public:
  explicit TimesColumn(const SubroutineTable& subroutines) : subroutines_(subroutines) {
    column_.fill(' ');
  }

  void Put(std::size_t call, char* at) {
    const std::optional<std::uint32_t> times = subroutines_.WholeTimes(call);
    if (!times || times != times_ || !subroutines_.HasTimes(call)) {
      text_.clear();
      subroutines_.AppendTimes(call, text_);
      PutLeft(text_, kTimesWidth, column_.data());
      times_ = subroutines_.HasTimes(call) ? times : std::nullopt;
    }
    std::memcpy(at, column_.data(), column_.size());
  }

 private:
  const SubroutineTable& subroutines_;
  std::array<char, kNamePlace> column_;
  std::optional<std::uint32_t> times_;  ///< those in the column, where they are an ordinary number
  std::string text_;
};

}  // namespace

void ReportSubroutines(const ReportJob& job) {
  constexpr std::size_t kAhead = 16;
  const SubroutineTable& subroutines = job.tables.Subroutines;
  BeginReport(ReportTitle("Subroutines called by program ", job.tables), SubroutineColumns(), job);
  TimesColumn times(subroutines);
  const std::vector<std::uint32_t> order = SubroutineOrder(subroutines);
  for (std::size_t n = 0; n < order.size(); ++n) {
    subroutines.Prefetch(order[std::min(n + kAhead, order.size() - 1)]);
    const std::string_view called = subroutines.Called(order[n]);
    char* const row = job.output.LineRoom(kNamePlace + called.size());
    times.Put(order[n], row);
    job.output.EndLineAt(std::ranges::copy(called, row + kNamePlace).out);
  }
}

}  // namespace ptick
