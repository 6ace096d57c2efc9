#include "ptick_export/formats/callgrind.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ptick_export/support/exported.h"

namespace ptick::exports {

namespace {

using testing::Export;
using testing::Exported;

/// What follows the head.
std::string Body(const std::string& text) { return text.substr(text.find("\nsummary: ") + 1); }

TEST(Callgrind, BeginsAsReadersExpect) {
  const Exported exported = Export(WriteCallgrind, {"program|RUN A#1|  x", "trace|A|7|5"});
  EXPECT_EQ(exported.text,
            "# callgrind format\n"
            "version: 1\n"
            "creator: ptick-export " PTICK_VERSION
            "\n"
            "cmd: RUN A\\x231   x\n"
            "desc: Ticks: profiling samples, by line of source\n"
            "positions: line\n"
            "event: Ticks : Profiling ticks\n"
            "events: Ticks\n"
            "summary: 5\n"
            "\n"
            "fl=(1) A\n"
            "fn=(1) A\n"
            "7 5\n"
            "\n"
            "totals: 5\n");
  EXPECT_TRUE(exported.told.empty());
}

TEST(Callgrind, NamesSourcesThatAreThere) {
  const Exported exported = Export(WriteCallgrind,
                                   {"trace|A|7|5", "trace|B|1|4", "subroutine_call|B A|3",
                                    "subroutine_call|B C|2", "subroutine_call|D A|1"},
                                   {"A", "C"});
  EXPECT_EQ(Body(exported.text),
            "summary: 9\n"
            "\nfl=(1) src/A\nfn=(1) A\n7 5\n"
            "\nfl=(2) B\nfn=(2) B\n1 4\n"
            "\nfl=(2)\nfn=(2)\n"
            "cfi=(1)\ncfn=(1)\ncalls=3 0\n0 0\n"
            "cfi=(3) src/C\ncfn=(3) C\ncalls=2 0\n0 0\n"
            "\nfl=(4) D\nfn=(4) D\n"
            "cfi=(1)\ncfn=(1)\ncalls=1 0\n0 0\n"
            "\ntotals: 9\n");
  EXPECT_NE(exported.text.find("\ndesc: Calls: from line 0, with inclusive cost 0"),
            std::string::npos);
}

TEST(Callgrind, KeepsNamesThatLookLikeItsOwn) {
  const Exported exported = Export(WriteCallgrind,
                                   "PROFILE:trace\t(1) A\t1\t9\nPROFILE:trace\t A \t1\t8\n"
                                   "PROFILE:trace\t\xE9\t1\t7\nPROFILE:trace\t\xC3\xA9\t1\t6\n"
                                   "PROFILE:trace\t#x\t1\t5\nPROFILE:trace\t\x85\t1\t4\n");
  EXPECT_EQ(Body(exported.text),
            "summary: 39\n"
            "\nfl=(1) (1) A\nfn=(1) (1) A\n1 9\n"
            "\nfl=(2) \\x20A\\x20\nfn=(2) \\x20A\\x20\n1 8\n"
            "\nfl=(3) \xC3\xA9\nfn=(3) \xC3\xA9\n1 7\n"
            "\nfl=(4) \xC3\xA9 (Latin-1)\nfn=(4) \xC3\xA9 (Latin-1)\n1 6\n"
            "\nfl=(5) #x\nfn=(5) #x\n1 5\n"
            "\nfl=(6) \\x85\nfn=(6) \\x85\n1 4\n"
            "\ntotals: 39\n");
}

TEST(Callgrind, SaysWhatIsCut) {
  const Exported exported =
      Export(WriteCallgrind, {"trace|A|x|1.5", "trace|A|0|2", "subroutine_call|A B|2.5",
                              "subroutine_call|A B|0", "subroutine_call|A B|-1",
                              "subroutine_call|A B|99999999999999999999", "subroutine_call|A C|1"});
  EXPECT_EQ(Body(exported.text),
            "summary: 3\n"
            "\nfl=(1) A\nfn=(1) A\n0 3\n"
            "\nfl=(1)\nfn=(1)\n"
            "cfi=(2) B\ncfn=(2) B\ncalls=2 0\n0 0\n"
            "cfi=(3) C\ncfn=(3) C\ncalls=1 0\n0 0\n"
            "\ntotals: 3\n");
  EXPECT_NE(exported.text.find(
                "\ndesc: Cut: 1 line has fractions of a tick, which are cut, 0.5 ticks in all\n"),
            std::string::npos);
  const std::vector<std::string> told = {
      "run1: 1 line has fractions of a tick, which are cut, 0.5 ticks in all",
      "run1: 1 trace record has a line that is no number and becomes line 0, 1.5 ticks in all",
      "run1: 1 subroutine call has a fraction of times, which is cut",
      "run1: 1 subroutine call of less than one time is left out",
      "run1: 1 subroutine call of negative times is left out",
      "run1: 1 subroutine call of too many times is left out",
  };
  EXPECT_EQ(exported.told, told);
}

TEST(Callgrind, IsAFileForAnEmptyProfile) {
  EXPECT_EQ(Body(Export(WriteCallgrind, "").text), "summary: 0\n\ntotals: 0\n");
}

}  // namespace

}  // namespace ptick::exports
