// A real profile, damaged in every place in every way that matters to its format: no damage breaks
// a run. PTICK_SWEEP=all (tools/sweep) tries every place, the tests a sample of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "output/terminal_text.h"
#include "ptick/driver.h"
#include "support/memory_platform.h"

namespace ptick {

namespace {

constexpr std::size_t kStride = 331;  // no multiple of the number of reports

struct Way {
  std::vector<std::string> arguments;
  bool on_terminal = false;
};

const std::vector<Way>& Ways() {
  static const std::vector<Way> ways = {
      {{"profile"}},
      {{"-n", "-fsrc", "profile"}},
      {{"-nui", "profile"}},
      {{"-a", "profile"}},
      {{"-ov", "profile"}},
      {{"-pv", "profile"}},
      {{"-s", "profile"}},
      {{"-Av", "profile"}},
      {{"-kkeys", "profile"}},
      {{"-tkkeys", "profile"}},
      {{"-Av", "whole", "profile"}},
      {{"-n", "profile", "whole"}},
      {{"-Fprofile", "whole"}},
      {{"-n", "-fsrc", "profile"}, true},
      {{"-Av", "profile"}, true},
  };
  return ways;
}

std::string ReadProfile() {
  std::ifstream file(PTICK_SOURCE_DIR "/examples/orders/run1", std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::size_t Stride() {
  const char* sweep = std::getenv("PTICK_SWEEP");
  return sweep != nullptr && std::string_view(sweep) == "all" ? 1 : kStride;
}

bool EndsWithLine(std::string_view text) { return text.empty() || text.ends_with('\n'); }

bool IsHarmless(const std::string& text) {
  std::string harmless = text;
  MakeHarmless(harmless);
  return harmless == text;
}

/// What is wrong with a run of a profile that may have any bytes; empty when nothing is.
std::string Complaint(const Way& way, int status, const MemoryPlatform& left) {
  const std::string_view terminal = left.on_terminal;
  if (status != 0 && status != 2 && !terminal.starts_with("Too many files")) {
    return "status " + std::to_string(status);
  }
  const bool no_clock_rate = terminal == "Error! No 'hertz' is available in the profile output\n";
  if (status == 2 && !no_clock_rate &&
      !terminal.starts_with("Invalid format in profile file at line ")) {
    return "another refusal than that of a line or of a missing clock rate";
  }
  if (status != 0 && !no_clock_rate && !left.printed.empty()) {
    return "a refusal after a report";
  }
  if (status == 0 && left.printed.empty()) {
    return "no output";
  }
  if (!EndsWithLine(left.printed) || !EndsWithLine(terminal)) {
    return "a line without its end";
  }
  for (const MemoryPlatform::ShellRun& run : left.shell_runs) {
    if (!run.input.starts_with("*\n") || !EndsWithLine(run.input)) {
      return "a script that is none";
    }
  }
  return way.on_terminal && !IsHarmless(left.printed) ? "harm to a terminal" : "";
}

class Sweep : public ::testing::Test {
 protected:
  Sweep() : whole_(ReadProfile()), stride_(Stride()) {}

  /// Runs a damaged profile one way; each damage takes the way after the one before.
  void Try(const std::string& damaged, std::size_t position, int damage) {
    const Way& way = Ways()[(position + ++tried_) % Ways().size()];
    MemoryPlatform platform;
    platform.arguments = {"ptick"};
    platform.arguments.insert(platform.arguments.end(), way.arguments.begin(), way.arguments.end());
    platform.output_is_terminal = way.on_terminal;
    platform.block_size = 1 + position % 4096;
    platform.files["."] = {{"profile", {damaged}}, {"whole", {whole_}}};
    platform.files["src"]["ORDER.ENTRY"] = {damaged};
    const int status = RunPtick(platform);
    const std::string complaint = Complaint(way, status, platform);
    ASSERT_EQ(complaint, "") << way.arguments.front() << " at byte " << position << ", damage "
                             << damage << "\n"
                             << platform.on_terminal;
  }

  std::string whole_;
  std::size_t stride_;
  std::size_t tried_ = 0;
};

TEST_F(Sweep, NoPlaceOfACutBreaksARun) {
  ASSERT_GT(whole_.size(), 20000U);
  for (std::size_t size = 0; size <= whole_.size() && !HasFatalFailure(); size += stride_) {
    Try(whole_.substr(0, size), size, -1);
  }
}

TEST_F(Sweep, NoByteInAnyPlaceBreaksARun) {
  constexpr std::array<unsigned char, 12> kBytes = {0,   9,   10,  13,  252, 253,
                                                    254, 255, '"', '~', '9', '-'};
  std::string damaged = whole_;
  for (std::size_t place = 0; place < whole_.size() && !HasFatalFailure(); place += stride_) {
    for (const unsigned char byte : kBytes) {
      damaged[place] = static_cast<char>(byte);
      Try(damaged, place, byte);
    }
    damaged[place] = whole_[place];
  }
}

}  // namespace

}  // namespace ptick
