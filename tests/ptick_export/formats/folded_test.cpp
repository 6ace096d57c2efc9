#include "ptick_export/formats/folded.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ptick_export/support/exported.h"

namespace ptick::exports {

namespace {

using testing::Export;
using testing::Exported;

TEST(Folded, AddsUpLinesOfPrograms) {
  const Exported exported = Export(
      WriteFolded, {"trace|A|7|5", "trace|B|1|30", "trace|A|7|2", "trace|A|3|1", "trace|B|x y|2"});
  EXPECT_EQ(exported.text, "B;1 30\nB;x y 2\nA;3 1\nA;7 7\n");
  EXPECT_TRUE(exported.told.empty());
}

TEST(Folded, HoldsNothingOfAnEmptyProfile) {
  EXPECT_EQ(Export(WriteFolded, "").text, "");
  EXPECT_EQ(Export(WriteFolded, "PROFILE:ticks\t5\n").text, "");
}

TEST(Folded, KeepsFramesApart) {
  const Exported exported =
      Export(WriteFolded,
             "PROFILE:trace\tA;1\t1;2\t6\nPROFILE:trace\tA\\x3b1\t1\t5\n"
             "PROFILE:trace\t\xE9\t\xE9\t4\nPROFILE:trace\t\xC3\xA9\t\xC3\xA9\t3\n"
             "PROFILE:trace\ta\r\t\x1B[1m\t2\nPROFILE:trace\tE\n");
  EXPECT_EQ(exported.text,
            "A\\x3b1;1\\x3b2 6\nA\\\\x3b1;1 5\n\xC3\xA9;\xC3\xA9 4\n"
            "\xC3\xA9 (Latin-1);\xC3\xA9 (Latin-1) 3\na\\x0d;\\x1b[1m 2\n");
  EXPECT_EQ(exported.told, std::vector<std::string>{
                               "run1: 1 line without a whole tick is left out, 0 ticks in all"});
}

TEST(Folded, NamesAnEmptyLine) {
  EXPECT_EQ(Export(WriteFolded, "PROFILE:trace\n").text, "");
  EXPECT_EQ(Export(WriteFolded, {"trace|A|(empty)|1"}).text, "A;\\x28empty) 1\n");
}

TEST(Folded, TellsWhatItDoesNotHold) {
  const Exported exported =
      Export(WriteFolded, {"trace|A|1|1.5", "trace|A|2|2.25", "trace|A|3|0.5", "trace|A|4|-3",
                           "trace|A|5|1000000000000000000000"});
  EXPECT_EQ(exported.text, "A;1 1\nA;2 2\n");
  EXPECT_EQ(exported.told,
            (std::vector<std::string>{
                "run1: 2 lines have fractions of a tick, which are cut, 0.75 ticks in all",
                "run1: 1 line without a whole tick is left out, 0.5 ticks in all",
                "run1: 1 line with negative ticks is left out, -3 ticks in all",
                "run1: 1 line with too many ticks is left out, 1000000000000000000000 ticks in all",
            }));
}

}  // namespace

}  // namespace ptick::exports
