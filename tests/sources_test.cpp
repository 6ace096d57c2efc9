// What holds for every source file: it includes what the table of folders in ARCHITECTURE.md
// allows, and it is not long.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

namespace fs = std::filesystem;

/// A file as lines, named from the root of the repository on.
struct Source {
  std::string path;
  std::vector<std::string> lines;
};

Source ReadSource(const fs::path& root, const fs::path& path) {
  Source source{fs::relative(path, root).generic_string(), {}};
  std::ifstream text(path);
  for (std::string line; std::getline(text, line);) {
    source.lines.push_back(line);
  }
  return source;
}

std::vector<Source> SourcesBelow(const std::string& folder) {
  const fs::path root = PTICK_SOURCE_DIR;
  std::vector<Source> sources;
  for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
    const std::string ending = entry.path().extension();
    if (entry.is_regular_file() && (ending == ".h" || ending == ".cpp")) {
      sources.push_back(ReadSource(root, entry.path()));
    }
  }
  return sources;
}

/// A row of the table of folders.
struct Floor {
  std::string folder;                ///< with its last slash, from src/ on: "profile/scan/"
  std::vector<std::string> allowed;  ///< folders that its files may include, in the same form
};

/// The texts between backticks.
std::vector<std::string> Quoted(std::string_view text) {
  std::vector<std::string> quoted;
  for (std::size_t begin = text.find('`'); begin != std::string_view::npos;) {
    const std::size_t end = text.find('`', begin + 1);
    quoted.emplace_back(text.substr(begin + 1, end - begin - 1));
    begin = end == std::string_view::npos ? end : text.find('`', end + 1);
  }
  return quoted;
}

/// The rows "| `src/FOLDER/` | what it is | `FOLDER`, `FOLDER` |" among the lines of a document.
std::vector<Floor> FloorsIn(const std::vector<std::string>& lines) {
  constexpr std::string_view kStart = "| `src/";
  std::vector<Floor> floors;
  for (const std::string& line : lines) {
    if (!line.starts_with(kStart)) {
      continue;
    }
    const std::size_t last_cell = line.rfind('|', line.size() - 2);
    Floor floor{Quoted(line).front().substr(std::string_view("src/").size()), {}};
    for (const std::string& folder : Quoted(std::string_view(line).substr(last_cell))) {
      floor.allowed.push_back(folder + "/");
    }
    floors.push_back(floor);
  }
  return floors;
}

/// The floor of a file, that of the nearest folder in the table; null when there is none.
const Floor* FloorOf(std::string_view path, const std::vector<Floor>& floors) {
  const Floor* nearest = nullptr;
  for (const Floor& floor : floors) {
    if (path.starts_with(floor.folder) &&
        (nearest == nullptr || floor.folder.size() > nearest->folder.size())) {
      nearest = &floor;
    }
  }
  return nearest;
}

bool IsLinux(std::string_view path) {
  return path.starts_with("platform/linux/") || path.starts_with("companion/linux/");
}
bool IsCompanion(std::string_view path) {
  return path.starts_with("companion/") || path.starts_with("ptick_");
}
// The frame of a companion's run is part of its main, by its own name so that tests can call it.
bool IsMain(std::string_view path) {
  return path.ends_with("/main.cpp") || path.starts_with("ptick_diff/diff_program.");
}

/// Whether `file` may include `included`, which is written as between its quotes.
bool MayInclude(std::string_view file, std::string_view included,
                const std::vector<Floor>& floors) {
  const Floor* own = FloorOf(file, floors);
  const Floor* target = FloorOf(included, floors);
  if (own == nullptr || target == nullptr) {
    return false;
  }
  if (own == target) {
    return true;
  }
  if (IsLinux(included) && !IsLinux(file)) {
    return IsMain(file);  // a program chooses its platform in one place
  }
  return std::any_of(own->allowed.begin(), own->allowed.end(),
                     [included](const auto& folder) { return included.starts_with(folder); });
}

/// Whether a file may include a header of the system or the compiler. Headers of the standard
/// library have no ending; intrinsics belong to the compiler; some libraries are for companions.
bool MayIncludeSystem(std::string_view file, std::string_view included) {
  if (included.starts_with("CLI/") || included.starts_with("fmt/")) {
    return IsCompanion(file);
  }
  if (included.starts_with("boost/math/") || included.starts_with("dtl/")) {
    return file.starts_with("compare/");
  }
  if (included == "zlib.h" || included.starts_with("protozero/")) {
    return file.starts_with("ptick_export/formats/");
  }
  return IsLinux(file) || included == "emmintrin.h" || included.find('.') == std::string::npos;
}

/// What is wrong with the includes of a file, whose path starts below src/.
std::vector<std::string> Faults(const Source& source, const std::vector<Floor>& floors) {
  constexpr std::string_view kInclude = "#include ";
  std::vector<std::string> faults;
  for (const std::string& line : source.lines) {
    if (!line.starts_with(kInclude) || line.size() < kInclude.size() + 2) {
      continue;
    }
    const bool in_brackets = line[kInclude.size()] == '<';
    const std::size_t begin = kInclude.size() + 1;
    const std::size_t end = line.find(in_brackets ? '>' : '"', begin);
    const std::string included = line.substr(begin, end - begin);
    if (!(in_brackets ? MayIncludeSystem(source.path, included)
                      : MayInclude(source.path, included, floors))) {
      faults.push_back(source.path + ": " + line);
    }
  }
  return faults;
}

const std::vector<Floor>& Floors() {
  static const std::vector<Floor> floors =
      FloorsIn(ReadSource(PTICK_SOURCE_DIR, fs::path(PTICK_SOURCE_DIR) / "ARCHITECTURE.md").lines);
  return floors;
}

TEST(Floors, AreReadFromTheirTable) {
  const std::vector<Floor> floors =
      FloorsIn({"# Floors", "| folder | what it is | may include |", "|---|---|---|",
                "| `src/value/` | `Value` and texts | nothing |",
                "| `src/profile/scan/` | lines | `value`, `profile/x` |"});
  ASSERT_EQ(floors.size(), 2U);
  EXPECT_EQ(floors[0].folder, "value/");
  EXPECT_EQ(floors[0].allowed, std::vector<std::string>());
  EXPECT_EQ(floors[1].folder, "profile/scan/");
  EXPECT_EQ(floors[1].allowed, (std::vector<std::string>{"value/", "profile/x/"}));
}

TEST(Floors, AreDownwards) {
  struct Row {
    std::string_view file;
    std::string_view included;
    bool want;
  };
  const std::vector<Row> rows = {
      {"value/text.cpp", "value/value.h", true},
      {"value/text.cpp", "platform/platform.h", false},
      {"output/output.cpp", "platform/platform.h", true},
      {"output/output.h", "profile/ticks/name_table.h", false},
      {"profile/ticks/tick_table.h", "profile/scan/ordinary_number.h", true},
      {"profile/ticks/tick_table.h", "profile/tables/profile_tables.h", false},
      {"profile/merge/merge_line.cpp", "profile/tables/record_types.h", true},
      {"profile/merge/merge_line.cpp", "profile/parse/record_parser.h", false},
      {"profile/parse/record_parser.cpp", "profile/merge/profile_merge.h", false},
      {"profile/parse/record_parser.cpp", "profile/profile_loader.h", false},
      {"profile/profile_loader.cpp", "profile/merge/profile_merge.h", true},
      {"profile/profile_loader.cpp", "reports/line_report.h", false},
      {"profile/profile_loader.cpp", "output/output.h", false},
      {"reports/line_report.cpp", "profile/tables/profile_tables.h", true},
      {"reports/line_report.cpp", "portctl/control_message.h", false},
      {"reports/line_report.cpp", "ptick/driver.h", false},
      {"portctl/control_message.cpp", "value/text.h", true},
      {"portctl/control_message.cpp", "profile/tables/profile_tables.h", false},
      {"ptick/driver.cpp", "reports/line_report.h", true},
      {"ptick/driver.cpp", "platform/linux/linux_platform.h", false},
      {"ptick/main.cpp", "platform/linux/linux_platform.h", true},
      {"output/output.cpp", "platform/linux/key_prompt.h", false},
      {"platform/platform.h", "platform/linux/key_prompt.h", false},
      {"platform/linux/terminal.cpp", "platform/platform.h", true},
      {"platform/linux/process/shell.cpp", "platform/linux/write_all.h", true},
      {"platform/linux/terminal.cpp", "value/value.h", false},
      {"companion/table.cpp", "companion/text_writer.h", true},
      {"companion/table.cpp", "companion/linux/terminal.h", false},
      {"companion/table.cpp", "value/value.h", false},
      {"companion/linux/terminal.cpp", "companion/text_form.h", true},
      {"companion/linux/result_file.cpp", "platform/linux/write_all.h", true},
      {"companion/linux/result_file.cpp", "platform/platform.h", false},
      {"platform/linux/terminal.cpp", "companion/linux/terminal.h", false},
      {"ptick/driver.cpp", "companion/table.h", false},
      {"ptick_merge/main.cpp", "companion/linux/program.h", true},
      {"ptick_export/main.cpp", "companion/linux/program.h", true},
      {"ptick_export/formats/folded.cpp", "companion/linux/program.h", false},
      {"ptick_export/facts/line_sums.cpp", "companion/utf8.h", false},
      {"ptick_view/main.cpp", "companion/linux/program.h", true},
      {"ptick/driver.cpp", "usage.h", false},
      {"elsewhere/new.cpp", "value/value.h", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MayInclude(row.file, row.included, Floors()), row.want)
        << row.file << " includes " << row.included;
  }
}

TEST(Floors, KeepSystemHeadersInOneFolder) {
  struct Row {
    std::string_view file;
    std::string_view included;
    bool want;
  };
  const std::vector<Row> rows = {
      {"value/text.cpp", "string", true},
      {"value/text.cpp", "unistd.h", false},
      {"output/output.cpp", "sys/ioctl.h", false},
      {"ptick/main.cpp", "signal.h", false},
      {"platform/platform.h", "sys/types.h", false},
      {"platform/linux/terminal.cpp", "termios.h", true},
      {"profile/scan/byte_masks.h", "emmintrin.h", true},
      {"companion/number_text.cpp", "fmt/format.h", true},
      {"companion/number_text.cpp", "unistd.h", false},
      {"figures/tick_share.cpp", "boost/math/distributions/students_t.hpp", false},
      {"ptick_export/formats/pprof.cpp", "protozero/pbf_writer.hpp", true},
      {"ptick_export/formats/gzip_writer.cpp", "zlib.h", true},
      {"companion/progress.cpp", "zlib.h", false},
      {"companion/linux/terminal.cpp", "unistd.h", true},
      {"reports/line_report.cpp", "fmt/format.h", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MayIncludeSystem(row.file, row.included), row.want)
        << row.file << " includes " << row.included;
  }
}

TEST(Floors, FaultsAreFoundInSources) {
  const Source source{"value/text.cpp",
                      {"#include \"value/text.h\"", "", "#include <unistd.h>", "#include <string>",
                       "#include \"platform/platform.h\"  // why", "// #include <poll.h>"}};
  EXPECT_EQ(Faults(source, Floors()),
            (std::vector<std::string>{"value/text.cpp: #include <unistd.h>",
                                      "value/text.cpp: #include \"platform/platform.h\"  // why"}));
}

TEST(Floors, AreKeptByAllSources) {
  const std::vector<Source> sources = SourcesBelow("src");
  EXPECT_GT(sources.size(), 50U);
  for (Source source : sources) {
    source.path.erase(0, std::string_view("src/").size());
    EXPECT_EQ(Faults(source, Floors()), std::vector<std::string>());
    EXPECT_NE(FloorOf(source.path, Floors()), nullptr) << source.path;
  }
}

TEST(Floors, AreFoldersThatAreThere) {
  for (const Floor& floor : Floors()) {
    EXPECT_TRUE(fs::is_directory(fs::path(PTICK_SOURCE_DIR) / "src" / floor.folder))
        << floor.folder;
    for (const std::string& folder : floor.allowed) {
      EXPECT_TRUE(fs::is_directory(fs::path(PTICK_SOURCE_DIR) / "src" / folder)) << folder;
    }
  }
}

TEST(Sources, HaveAtMost300Lines) {
  for (const std::string folder : {"src", "tests", "fuzz", "bench", "examples"}) {
    for (const Source& source : SourcesBelow(folder)) {
      EXPECT_LE(source.lines.size(), 300U) << source.path;
      EXPECT_GE(source.lines.size(), 3U) << source.path;
    }
  }
}

}  // namespace

}  // namespace ptick
