#include "output/diagnostics.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "support/memory_console.h"

namespace ptick {

namespace {

TEST(Diagnostics, PrintsLinesAsTheyAreAndMessagesUnderTheProgramsName) {
  MemoryConsole console;
  Diagnostics diagnostics(console, "ptick-diff");
  diagnostics.PrintLine("a line");
  diagnostics.PrintLine("");
  diagnostics.PrintMessage("a message");
  EXPECT_EQ(console.on_terminal, "a line\n\nptick-diff: a message\n");
  EXPECT_EQ(console.printed, "");
}

TEST(Diagnostics, WritesEachLineAtOnce) {
  MemoryConsole console;
  Diagnostics diagnostics(console, "ptick");
  console.diagnostics_error = EIO;
  diagnostics.PrintLine("lost");
  console.diagnostics_error = 0;
  diagnostics.PrintLine("kept");
  EXPECT_EQ(console.on_terminal, "kept\n");
}

}  // namespace

}  // namespace ptick
