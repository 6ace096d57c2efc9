// The options -f and -F, on the command line.

#include "ptick/source_options.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/program_run.h"

namespace ptick {

namespace {

using testing::OptionsText;
using testing::ParseCommand;
using testing::ParsedCommand;

using Arguments = std::vector<std::string>;

class SourceOptionsTest : public ::testing::Test {
 protected:
  SourceOptionsTest() {
    for (const std::string name : {"src", "lib", "/abs/src", "v", "-n"}) {
      platform_.files[name] = {};
    }
  }

  /// What is said of a command line, and what is left of it.
  struct Outcome {
    std::string options;
    std::string terminal;
    std::optional<int> stopped;
  };

  Outcome Parse(const Arguments& arguments) {
    platform_.on_terminal.clear();
    platform_.opened_files.clear();
    const ParsedCommand parsed = ParseCommand(arguments, platform_);
    return {OptionsText(parsed.options), platform_.on_terminal, parsed.stopped};
  }

  struct Row {
    Arguments given;
    std::string want_options;
    std::string want_terminal;
    std::optional<int> want_stopped = std::nullopt;
  };

  void Expect(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      const std::string shown = ::testing::PrintToString(row.given);
      const Outcome outcome = Parse(row.given);
      EXPECT_EQ(outcome.terminal, row.want_terminal) << shown;
      EXPECT_EQ(outcome.stopped, row.want_stopped) << shown;
      if (!outcome.stopped) {
        EXPECT_EQ(outcome.options, row.want_options) << shown;
      }
    }
  }

  /// `count` options -f, all of them for "src".
  static Arguments Sources(std::size_t count) {
    Arguments sources(count, "-fsrc");
    return sources;
  }

  static std::size_t CountOf(const ParsedCommand& parsed) {
    return parsed.options.SourceFiles.size();
  }

  MemoryPlatform platform_;
};

std::string No(std::string_view name) {
  return "ptick: [201] cannot open file '" + std::string(name) + "': No such file or directory\n";
}

TEST_F(SourceOptionsTest, OpenASourceFile) {
  Expect({
      {{"-fsrc"}, " sources=src", ""},
      {{"-f", "src"}, " sources=src", ""},
      {{"-f", "src", "run1"}, " profiles=run1 sources=src", ""},
      {{"-nfsrc", "-flib"}, "n sources=src,lib", ""},
      {{"-nf", "src", "-u"}, "nu sources=src", ""},
      {{"-f/abs/src"}, " sources=/abs/src", ""},
      {{"-fsrc", "-fsrc"}, " sources=src,src", ""},
      {{"-fv"}, " sources=v", ""},
      {{"-f", "-n"}, " sources=-n", ""},
      // A file that cannot be opened is told of and takes no place.
      {{"-fnone"}, "", No("none")},
      {{"-fsrc", "-fnone", "-flib", "-f", "x/y", "run1"},
       " profiles=run1 sources=src,lib",
       No("none") + No("x/y")},
      {{"-f"}, "", No("")},
      {{"-f", "", "run1"}, " profiles=run1", No("")},
      {{"-fsrc/"}, "", No("src/")},
  });
}

TEST_F(SourceOptionsTest, OpenTheFilesOfAList) {
  platform_.files["."]["list"].text = "src\nlib\n";
  platform_.files["lists"]["src"].text = "lib\nnone\nsrc";
  platform_.files["/a/b"]["c"].text = "src\xfelib\n\nv\n";
  platform_.files["."]["empty"].text = "";
  platform_.files["."]["line-end"].text = "\n";
  platform_.files["."]["two-line-ends"].text = "\n\n";
  platform_.files["."]["mark"].text = "\xfe";
  platform_.files["."]["pipe"] = {.text = "src\nlib\n", .is_pipe = true};
  Expect({
      {{"-Flist"}, " sources=src,lib", ""},
      {{"-F", "list"}, " sources=src,lib", ""},
      {{"-F", "list", "run1"}, " profiles=run1 sources=src,lib", ""},
      {{"-F./list", "-nflib"}, "n sources=src,lib,lib", ""},
      {{"-nFlists/src"}, "n sources=lib,src", No("none")},
      {{"-F/a/b/c"}, " sources=src,lib,v", No("")},
      {{"-Fempty"}, "", ""},
      {{"-Fempty", "-fsrc"}, " sources=src", ""},
      {{"-Fline-end", "-fsrc"}, " sources=src", ""},
      {{"-Ftwo-line-ends"}, "", No("") + No("")},
      {{"-Fmark"}, "", No("") + No("")},
      {{"-Fpipe"}, " sources=src,lib", ""},
  });
}

TEST_F(SourceOptionsTest, StopAtAListThatCannotBeRead) {
  platform_.files["."] = {};
  platform_.files["."]["broken"] = {.text = "src\n", .fails_after = 2};
  const auto no_record = [](const std::string& name, const std::string& directory = ".",
                            const std::string& reason = "No such file or directory") {
    return "ptick: [202] cannot read record '" + name + "' in '" + directory + "': " + reason +
           "\n";
  };
  Expect({
      {{"-Fnone", "-x"}, "", no_record("none"), 1},
      {{"-F", "none"}, "", no_record("none"), 1},
      {{"-Fbroken"}, "", no_record("broken", ".", "Input/output error"), 1},
      {{"-Fsrc/none"}, "", no_record("none", "src"), 1},
      {{"-Fsrc/"}, "", no_record("", "src"), 1},
      {{"-F"}, "", no_record(""), 1},
      {{"-Fdir/list"}, "", No("dir"), 1},
      {{"-F/a/b/c"}, "", No("/a/b"), 1},
      {{"-F/list"}, "", No("/"), 1},
      {{"-fnone", "-Fdir/list"}, "", No("none") + No("dir"), 1},
  });
}

TEST_F(SourceOptionsTest, OpenAtMost500Files) {
  Arguments arguments = Sources(500);
  ParsedCommand parsed = ParseCommand(arguments, platform_);
  EXPECT_EQ(CountOf(parsed), 500U);
  EXPECT_EQ(platform_.on_terminal, "");

  const std::string too_many = "Too many files specified with -f option\n";
  arguments.emplace_back("-vflib");
  arguments.emplace_back("-nf");
  arguments.emplace_back("lib");
  arguments.emplace_back("-u");
  platform_.opened_files.clear();
  parsed = ParseCommand(arguments, platform_);
  EXPECT_EQ(parsed.stopped, std::nullopt);
  EXPECT_EQ(CountOf(parsed), 500U);
  EXPECT_EQ(platform_.opened_files.size(), 500U);
  EXPECT_EQ(platform_.on_terminal, too_many + too_many);
  // The name after a refused -f is no longer its own.
  parsed.options.SourceFiles.clear();
  EXPECT_EQ(OptionsText(parsed.options), "nuv profiles=lib");
}

TEST_F(SourceOptionsTest, CountOnlyTheFilesThatOpened) {
  Arguments arguments = Sources(499);
  arguments.insert(arguments.begin(), 10, "-fnone");
  arguments.emplace_back("-flib");
  EXPECT_EQ(CountOf(ParseCommand(arguments, platform_)), 500U);
}

/// A list of `count` names.
std::string List(std::string_view name, std::size_t count) {
  std::string list;
  for (std::size_t n = 0; n < count; ++n) {
    list += std::string(name) + "\n";
  }
  return list;
}

TEST_F(SourceOptionsTest, CountEveryNameOfAList) {
  struct LimitRow {
    std::size_t open;
    std::string list;
    std::optional<std::size_t> want;  ///< files open; nothing where the run stops
  };
  const std::vector<LimitRow> rows = {
      {0, List("src", 500), 500},
      {0, List("src", 501), std::nullopt},
      {499, List("src", 1), 500},
      {499, List("src", 2), std::nullopt},
      {499, List("none", 1), 499},
      {499, List("none", 2), std::nullopt},
      {499, "src\n\n", std::nullopt},
      {499, "src", 500},
      {500, "", 500},
      {500, "src", std::nullopt},
      {500, "\n", 500},
      {500, "\nsrc", std::nullopt},
      {500, "\n\n", std::nullopt},
      {499, "\n\n", std::nullopt},
      {250, List("src", 250), 500},
      {250, List("src", 251), std::nullopt},
  };
  for (const LimitRow& row : rows) {
    SCOPED_TRACE(std::to_string(row.open) + " and " + row.list.substr(0, 9));
    platform_.files["dir"]["list"].text = row.list;
    platform_.on_terminal.clear();
    platform_.opened_files.clear();
    Arguments arguments = Sources(row.open);
    arguments.emplace_back("-Fdir/list");
    const ParsedCommand parsed = ParseCommand(arguments, platform_);
    if (row.want) {
      EXPECT_EQ(parsed.stopped, std::nullopt);
      EXPECT_EQ(CountOf(parsed), *row.want);
    } else {
      EXPECT_EQ(parsed.stopped, 1);
      EXPECT_EQ(platform_.on_terminal, "Too many files specified in file dir/list\n");
      EXPECT_EQ(platform_.opened_files.size(), row.open + 1) << "none of the list is opened";
    }
  }
}

// However the list comes: a line end that is read by itself may not be all of it.
TEST_F(SourceOptionsTest, CountNamesThatComeByteByByte) {
  platform_.block_size = 1;
  platform_.files["dir"]["list"].text = "\nsrc\n";
  Arguments arguments = Sources(500);
  arguments.emplace_back("-Fdir/list");
  EXPECT_EQ(ParseCommand(arguments, platform_).stopped, 1);
  EXPECT_EQ(platform_.on_terminal, "Too many files specified in file dir/list\n");
}

TEST_F(SourceOptionsTest, StopAtAListThatIsNoList) {
  platform_.files["."]["long"].text = std::string(3000000, 'x');
  platform_.files["."]["unlikely"].text = std::string(1000000, 'x');
  Expect({
      {{"-Flong"}, "", "ptick: [202] cannot read record 'long' in '.': File too large\n", 1},
      {{"-Funlikely"}, "", No(std::string(1000000, 'x'))},
  });
}

// What comes after too many names is not read.
TEST_F(SourceOptionsTest, ReadNoFurtherThanTheLimit) {
  platform_.files["."]["list"] = {.text = List("src", 100000), .fails_after = 100000};
  EXPECT_EQ(Parse({"-Flist"}).terminal, "Too many files specified in file list\n");
}

TEST_F(SourceOptionsTest, KeepAPathAsItWasWritten) {
  platform_.files["."]["list"].text = List("src", 501);
  platform_.files["/a/b"]["list"].text = List("src", 501);
  for (const std::string path : {"list", "./list", "/a/b/list"}) {
    EXPECT_EQ(Parse({"-F" + path}).terminal, "Too many files specified in file " + path + "\n");
  }
}

}  // namespace

}  // namespace ptick
