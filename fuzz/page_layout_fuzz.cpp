// Lines printed below a heading, on a terminal of any length with any keys or elsewhere: what comes
// out is what laying them out page by page gives.

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "output/output.h"
#include "output/stop.h"
#include "output/terminal_text.h"
#include "reports/report_heading.h"
#include "support/memory_platform.h"

namespace {

using ptick::MemoryPlatform;
using ptick::PageHeading;
using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

/// What is printed, and where.
struct Job {
  bool is_terminal = false;
  bool has_keyboard = false;
  bool lays_out_in_place = false;
  int error = 0;  ///< of writing to standard output
  std::int64_t length = 24;
  std::string keys;
  std::optional<PageHeading> heading;
  std::vector<std::string> lines;
};

/// What came of it.
struct Outcome {
  std::string text;
  int keys_asked_for = 0;
  std::optional<int> stopped;
};

std::string Shown(std::string text) {
  ptick::MakeHarmless(text);
  return text;
}

// The pages laid out one by one, as long as keys ask for more.
class Layout {
 public:
  explicit Layout(const Job& job) : job_(job), waits_(job.has_keyboard) {}

  Outcome Make() {
    for (const std::string& line : job_.lines) {
      if (job_.heading && MustTurn() && !Turn()) {
        return outcome_;
      }
      AddLine(line);
    }
    if (job_.heading && page_ == 0) {
      Turn();
    }
    return outcome_;
  }

 private:
  bool MustTurn() const { return page_ == 0 || (job_.is_terminal && left_ == 0); }

  void AddLine(const std::string& line) {
    outcome_.text += (job_.is_terminal ? Shown(line) : line) + "\n";
    --left_;
  }

  bool Turn() {
    if (page_ > 0 && waits_ && !WantsMore()) {
      outcome_.stopped = 0;
      return false;
    }
    ++page_;
    AddLine(job_.heading->title + " Page " + std::to_string(page_));
    AddLine(job_.heading->columns);
    left_ = std::max<std::int64_t>(job_.length - 2, 1);
    return true;
  }

  bool WantsMore() {
    while (true) {
      ++outcome_.keys_asked_for;
      if (next_key_ == job_.keys.size()) {
        return false;
      }
      const char key = job_.keys[next_key_++];
      if (key == 'q') {
        return false;
      }
      if (key == 'c') {
        waits_ = false;
      }
      if (key == 'c' || key == ' ' || key == '\r' || key == '\n') {
        return true;
      }
    }
  }

  const Job& job_;
  bool waits_;
  Outcome outcome_;
  std::int64_t page_ = 0;
  std::int64_t left_ = 0;  ///< lines that the page still has room for
  std::size_t next_key_ = 0;
};

void PrintInPlace(const std::string& line, ptick::Output& output) {
  char* const room = output.LineRoom(line.size() + 9);
  output.EndLineAt(std::ranges::copy(line, room).out);
}

Outcome Print(const Job& job, MemoryPlatform& platform) {
  platform.output_is_terminal = job.is_terminal;
  platform.keyboard = job.has_keyboard;
  platform.length = job.length;
  platform.keys.assign(job.keys.begin(), job.keys.end());
  platform.output_error = job.error;
  ptick::Output output(platform, "ptick");
  Outcome outcome;
  try {
    if (job.heading) {
      output.SetHeading(*job.heading);
    }
    for (const std::string& line : job.lines) {
      job.lays_out_in_place ? PrintInPlace(line, output) : output.PrintLine(line);
    }
    output.Finish();
  } catch (const ptick::Stop& stop) {
    outcome.stopped = stop.status;
    output.Close();
  }
  outcome.text = platform.printed;
  outcome.keys_asked_for = platform.keys_asked_for;
  return outcome;
}

void CheckLayout(const Job& job) {
  MemoryPlatform platform;
  const Outcome want = Layout(job).Make();
  const Outcome got = Print(job, platform);
  RequireEqual(want.text, got.text, "pages hold the lines below headings");
  Require(want.keys_asked_for == got.keys_asked_for, "each full page waits for a key");
  Require(want.stopped == got.stopped, "q and the end of keys end the run");
  Require(platform.on_terminal.empty(), "diagnostics are for failures");
}

void CheckFailure(const Job& job) {
  MemoryPlatform platform;
  const Outcome got = Print(job, platform);
  Require(got.text.empty(), "what cannot be written is not written");
  if (Layout(job).Make().text.empty()) {
    Require(!got.stopped && platform.on_terminal.empty(), "nothing to write is no failure");
    return;
  }
  const bool closed = job.error == EPIPE;
  Require(closed ? got.stopped.value_or(0) == 0 : got.stopped == 1, "a failed write ends the run");
  Require(platform.on_terminal.starts_with("ptick: cannot write: ") != closed, "and says why");
}

void CheckTitle(const std::string& title, std::int64_t width) {
  const PageHeading heading = ptick::ReportHeading(title, "columns", width);
  const auto size = static_cast<std::int64_t>(title.size());
  Require(heading.title.starts_with(title), "a title is kept");
  Require(static_cast<std::int64_t>(heading.title.size()) == std::max(size, width - 15),
          "blanks fill a title");
  Require(heading.title.find_first_not_of(' ', title.size()) == std::string::npos,
          "nothing but blanks is added");
}

std::vector<std::string> TakeLines(ptick::fuzz::FuzzInput& input, int times, std::size_t stretch) {
  std::vector<std::string> lines;
  while (!input.Empty()) {
    std::string line = input.TakeUpTo('\n');
    const std::string once = line;
    for (std::size_t i = 1; i < stretch; ++i) {
      line += once;
    }
    lines.insert(lines.end(), static_cast<std::size_t>(times), line);
  }
  return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  Job job;
  const unsigned int flags = input.TakeByte();
  job.is_terminal = (flags & 1U) != 0;
  job.has_keyboard = (flags & 2U) != 0 && job.is_terminal;
  job.lays_out_in_place = (flags & 4U) != 0;
  const bool has_heading = (flags & 8U) != 0;
  const bool fails = (flags & 16U) != 0 && !job.has_keyboard;
  const bool is_long = (flags & 32U) != 0;
  job.length = input.TakeByte();
  const std::int64_t width = input.TakeByte();
  const int times = input.TakeBetween(1, 3);
  job.keys = input.TakeUpTo('\0');
  const std::string title = input.TakeUpTo('\n');
  const std::string columns = input.TakeUpTo('\n');
  if (has_heading) {
    job.heading = ptick::ReportHeading(title, columns, width);
  }
  // Long enough for lines to leave the buffer in several pieces.
  job.lines = TakeLines(input, times, is_long ? 1000 : 1);

  CheckTitle(title, width);
  CheckLayout(job);
  if (fails) {
    job.error = width % 2 == 0 ? EPIPE : ENOSPC;
    CheckFailure(job);
  }
  return 0;
}
