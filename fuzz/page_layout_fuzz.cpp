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
#include "support/memory_console.h"

namespace {

using ptick::MemoryConsole;
using ptick::PageHeading;
using ptick::TerminalSize;
using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

/// What is printed, and where.
struct Job {
  bool is_terminal = false;
  bool has_keyboard = false;
  bool lays_out_in_place = false;
  int error = 0;                         ///< of writing to standard output
  std::vector<TerminalSize> sizes = {};  ///< of the pages; the last stays
  std::string keys;
  std::optional<PageHeading> heading;
  std::vector<std::string> lines;
};

/// What came of it.
struct Outcome {
  std::string text;
  std::vector<std::size_t> prompts;  ///< how much had been printed when they were shown
  std::optional<int> stopped;
};

std::string Shown(std::string text) {
  ptick::MakeHarmless(text);
  return text;
}

// Elsewhere than on a terminal: one page without end.
Outcome LayOutPlainly(const Job& job) {
  Outcome outcome;
  if (job.heading) {
    outcome.text = job.heading->title + " Page 1\n" + job.heading->columns + "\n";
  }
  for (const std::string& line : job.lines) {
    outcome.text += line + "\n";
  }
  return outcome;
}

// The pages laid out one by one, as long as keys ask for more.
class Layout {
 public:
  explicit Layout(const Job& job) : job_(job), pauses_(job.has_keyboard) {}

  Outcome Make() {
    if (job_.heading) {
      Turn();
    }
    for (const std::string& line : job_.lines) {
      const std::string shown = Shown(line);
      if (has_line_ && RowsOf(shown) > Room() && !TurnFromFullPage()) {
        return outcome_;
      }
      Add(shown);
      has_line_ = true;
    }
    return outcome_;
  }

 private:
  TerminalSize Size() const { return job_.sizes[std::min(size_, job_.sizes.size() - 1)]; }
  std::int64_t RowsOf(const std::string& line) const {
    return ptick::CountRows(line, page_size_.columns);
  }
  std::int64_t Room() const { return page_size_.rows - (pauses_ ? 1 : 0) - rows_; }

  void Add(const std::string& line) {
    outcome_.text += line + "\n";
    rows_ += RowsOf(line);
  }

  bool TurnFromFullPage() {
    if (pauses_) {
      for (; rows_ < page_size_.rows - 1; ++rows_) {
        outcome_.text += "\n";
      }
      outcome_.prompts.push_back(outcome_.text.size());
      ++size_;
      if (!WantsMore()) {
        outcome_.stopped = 0;
        return false;
      }
    }
    Turn();
    return true;
  }

  void Turn() {
    page_size_ = Size();
    rows_ = 0;
    has_line_ = false;
    if (job_.heading) {
      Add(Shown(job_.heading->title + " Page " + std::to_string(++page_)));
      Add(Shown(job_.heading->columns));
    }
  }

  bool WantsMore() {
    for (; next_key_ < job_.keys.size(); ++next_key_) {
      const char key = job_.keys[next_key_];
      if (key == 'q') {
        return false;
      }
      pauses_ = key != 'c';
      if (key == 'c' || key == ' ' || key == '\r' || key == '\n') {
        ++next_key_;
        return true;
      }
    }
    return false;
  }

  const Job& job_;
  bool pauses_;
  Outcome outcome_;
  std::size_t size_ = 0;
  TerminalSize page_size_ = Size();
  int page_ = 0;
  std::int64_t rows_ = 0;
  bool has_line_ = false;
  std::size_t next_key_ = 0;
};

Outcome LayOut(const Job& job) { return job.is_terminal ? Layout(job).Make() : LayOutPlainly(job); }

void PrintInPlace(const std::string& line, ptick::Output& output) {
  char* const room = output.LineRoom(line.size() + 9);
  output.EndLineAt(std::ranges::copy(line, room).out);
}

Outcome Print(const Job& job, MemoryConsole& console) {
  console.output_is_terminal = job.is_terminal;
  console.keyboard = job.has_keyboard;
  console.size = job.sizes.front();
  console.later_sizes.assign(job.sizes.begin() + 1, job.sizes.end());
  console.keys.assign(job.keys.begin(), job.keys.end());
  console.output_error = job.error;
  ptick::Output output(console, "ptick");
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
  outcome.text = console.printed;
  for (const auto& [prompt, at] : console.prompts) {
    outcome.prompts.push_back(at);
  }
  return outcome;
}

void CheckLayout(const Job& job) {
  MemoryConsole console;
  const Outcome want = LayOut(job);
  const Outcome got = Print(job, console);
  RequireEqual(want.text, got.text, "pages hold the lines below headings");
  Require(want.prompts == got.prompts, "each full page ends with a prompt");
  Require(want.stopped == got.stopped, "q and the end of keys end the run");
  Require(console.on_terminal.empty(), "diagnostics are for failures");
}

void CheckFailure(const Job& job) {
  MemoryConsole console;
  const Outcome got = Print(job, console);
  Require(got.text.empty(), "what cannot be written is not written");
  if (LayOut(job).text.empty()) {
    Require(!got.stopped && console.on_terminal.empty(), "nothing to write is no failure");
    return;
  }
  const bool closed = job.error == EPIPE;
  Require(closed ? got.stopped.value_or(0) == 0 : got.stopped == 1, "a failed write ends the run");
  Require(console.on_terminal.starts_with("ptick: cannot write: ") != closed, "and says why");
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

// Sizes of a terminal that somebody plays with.
std::vector<TerminalSize> Sizes(TerminalSize size, int count) {
  std::vector<TerminalSize> sizes;
  for (int n = 0; n < count; ++n) {
    sizes.push_back(size);
    size = {size.rows * 7 % 50 + 1, size.columns * 13 % 200 + 1};
  }
  return sizes;
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
  const bool is_resized = (flags & 64U) != 0;
  const std::int64_t rows = input.TakeByte();
  const std::int64_t width = input.TakeByte();
  job.sizes = Sizes({std::max<std::int64_t>(rows, 1), std::max<std::int64_t>(width, 1)},
                    is_resized ? 20 : 1);
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
