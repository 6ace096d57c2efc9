// The folders of the sources are floors: a file includes its own folder or a lower one.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {
namespace {

namespace fs = std::filesystem;

enum class Floor { kPlatform, kValue, kOutput, kProfile, kReports, kPortControl, kDriver };

/// What the linux folder and main.cpp are is no floor: they are told apart by name.
bool IsLinux(std::string_view path) { return path.starts_with("platform/linux/"); }
bool IsMain(std::string_view path) { return path == "main.cpp"; }

std::optional<Floor> FloorOf(std::string_view path) {
  if (path == "platform/platform.h") {
    return Floor::kPlatform;
  }
  if (path == "value/output.h" || path == "value/output.cpp") {
    return Floor::kOutput;
  }
  struct Folder {
    std::string_view Name;
    Floor Its;
  };
  const std::vector<Folder> folders = {
      {"value/", Floor::kValue},     {"profile/", Floor::kProfile},
      {"reports/", Floor::kReports}, {"portctl/", Floor::kPortControl},
      {"driver/", Floor::kDriver},
  };
  for (const Folder& folder : folders) {
    if (path.starts_with(folder.Name)) {
      return folder.Its;
    }
  }
  return std::nullopt;
}

/// Whether a file on one floor may include one of another.
bool MayInclude(Floor file, Floor included) {
  switch (file) {
    case Floor::kValue:
      return included == Floor::kValue;  // its core knows nothing of the platform
    case Floor::kPortControl:
      return included != Floor::kReports && included <= file;
    default:
      return included <= file;
  }
}

/// Whether `file` may include `included`, which is written as between its quotes or brackets.
bool MayInclude(std::string_view file, std::string_view included, bool in_brackets) {
  if (in_brackets) {
    // Headers of the standard library have no ending; intrinsics belong to the compiler.
    return IsLinux(file) || included == "emmintrin.h" || included.find('.') == std::string::npos;
  }
  if (IsLinux(included)) {
    return IsLinux(file) || IsMain(file);
  }
  const std::optional<Floor> target = FloorOf(included);
  if (IsMain(file)) {
    return target == Floor::kDriver;
  }
  if (IsLinux(file)) {
    return target && *target <= Floor::kValue;
  }
  const std::optional<Floor> own = FloorOf(file);
  return own && target && MayInclude(*own, *target);
}

TEST(IncludeDirection, IsDownwards) {
  struct Row {
    std::string_view File;
    std::string_view Included;
    bool Want;
  };
  const std::vector<Row> rows = {
      {"value/text.cpp", "value/value.h", true},
      {"value/text.cpp", "platform/platform.h", false},
      {"value/text.cpp", "value/output.h", false},
      {"value/text.cpp", "profile/name_table.h", false},
      {"value/output.cpp", "platform/platform.h", true},
      {"value/output.h", "value/text.h", true},
      {"value/output.h", "profile/name_table.h", false},
      {"value/output_lines.h", "platform/platform.h", false},
      {"profile/record_parser.cpp", "profile/record_types.h", true},
      {"profile/record_parser.cpp", "platform/platform.h", true},
      {"profile/record_parser.cpp", "value/output.h", true},
      {"profile/record_parser.cpp", "reports/line_report.h", false},
      {"profile/record_parser.cpp", "portctl/control_message.h", false},
      {"profile/record_parser.cpp", "driver/driver.h", false},
      {"reports/line_report.cpp", "profile/profile_tables.h", true},
      {"reports/line_report.cpp", "value/value.h", true},
      {"reports/line_report.cpp", "portctl/control_message.h", false},
      {"reports/line_report.cpp", "driver/driver.h", false},
      {"portctl/control_message.cpp", "value/text.h", true},
      {"portctl/control_message.cpp", "profile/profile_tables.h", true},
      {"portctl/control_message.cpp", "reports/line_report.h", false},
      {"portctl/control_message.cpp", "driver/driver.h", false},
      {"driver/driver.cpp", "driver/usage.h", true},
      {"driver/driver.cpp", "reports/line_report.h", true},
      {"driver/driver.cpp", "portctl/control_message.h", true},
      {"driver/driver.cpp", "platform/linux/linux_platform.h", false},
      {"value/output.cpp", "platform/linux/terminal.h", false},
      {"platform/platform.h", "platform/linux/terminal.h", false},
      {"platform/platform.h", "value/value.h", false},
      {"platform/linux/terminal.cpp", "platform/linux/terminal.h", true},
      {"platform/linux/terminal.cpp", "platform/platform.h", true},
      {"platform/linux/terminal.cpp", "value/value.h", true},
      {"platform/linux/terminal.cpp", "value/output.h", false},
      {"platform/linux/terminal.cpp", "driver/driver.h", false},
      {"main.cpp", "driver/driver.h", true},
      {"main.cpp", "platform/linux/linux_platform.h", true},
      {"main.cpp", "reports/line_report.h", false},
      {"driver/driver.cpp", "usage.h", false},
      {"elsewhere/new.cpp", "value/value.h", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MayInclude(row.File, row.Included, false), row.Want)
        << row.File << " includes " << row.Included;
  }
}

TEST(IncludeDirection, KeepsSystemHeadersInOneFolder) {
  struct Row {
    std::string_view File;
    std::string_view Included;
    bool Want;
  };
  const std::vector<Row> rows = {
      {"value/text.cpp", "string", true},
      {"value/text.cpp", "unistd.h", false},
      {"value/output.cpp", "sys/ioctl.h", false},
      {"driver/driver.cpp", "fcntl.h", false},
      {"reports/line_report.cpp", "poll.h", false},
      {"main.cpp", "signal.h", false},
      {"platform/platform.h", "sys/types.h", false},
      {"platform/linux/terminal.cpp", "termios.h", true},
      {"platform/linux/terminal.cpp", "string", true},
      {"profile/control_bytes.h", "emmintrin.h", true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MayInclude(row.File, row.Included, true), row.Want)
        << row.File << " includes " << row.Included;
  }
}

/// A source file, named from src/ on.
struct Source {
  std::string Path;
  std::vector<std::string> Lines;
};

std::vector<Source> Sources() {
  const fs::path root = fs::path(PTICK_SOURCE_DIR) / "src";
  std::vector<Source> sources;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.is_regular_file()) {
      Source& source = sources.emplace_back();
      source.Path = fs::relative(entry.path(), root).generic_string();
      std::ifstream text(entry.path());
      for (std::string line; std::getline(text, line);) {
        source.Lines.push_back(line);
      }
    }
  }
  return sources;
}

/// What is wrong with the includes of a file.
std::vector<std::string> Faults(const Source& source) {
  constexpr std::string_view kInclude = "#include ";
  std::vector<std::string> faults;
  for (const std::string& line : source.Lines) {
    if (!line.starts_with(kInclude) || line.size() < kInclude.size() + 2) {
      continue;
    }
    const bool in_brackets = line[kInclude.size()] == '<';
    const std::size_t begin = kInclude.size() + 1;
    const std::size_t end = line.find(in_brackets ? '>' : '"', begin);
    if (!MayInclude(source.Path, line.substr(begin, end - begin), in_brackets)) {
      faults.push_back(source.Path + ": " + line);
    }
  }
  return faults;
}

TEST(IncludeDirection, IsFoundInSources) {
  const Source source{"value/text.cpp",
                      {"#include \"value/text.h\"", "", "#include <unistd.h>", "#include <string>",
                       "#include \"platform/platform.h\"  // why", "// #include <poll.h>"}};
  EXPECT_EQ(Faults(source),
            (std::vector<std::string>{"value/text.cpp: #include <unistd.h>",
                                      "value/text.cpp: #include \"platform/platform.h\"  // why"}));
}

TEST(IncludeDirection, IsKeptByAllSources) {
  const std::vector<Source> sources = Sources();
  EXPECT_GT(sources.size(), 50U);
  for (const Source& source : sources) {
    EXPECT_EQ(Faults(source), std::vector<std::string>());
    EXPECT_TRUE(IsMain(source.Path) || IsLinux(source.Path) || FloorOf(source.Path)) << source.Path;
  }
}

TEST(Sources, HaveAtMost300Lines) {
  for (const Source& source : Sources()) {
    EXPECT_LE(source.Lines.size(), 300U) << source.Path;
    EXPECT_GE(source.Lines.size(), 3U) << source.Path;
  }
}

}  // namespace
}  // namespace ptick
