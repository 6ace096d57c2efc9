#include "ptick_export/formats/trace_events.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ptick_export/support/exported.h"

namespace ptick::exports {

namespace {

using nlohmann::json;
using testing::Export;
using testing::Exported;

/// The complete events, or those of metadata.
json Events(const Exported& exported, const std::string& phase) {
  json events = json::array();
  const json trace = json::parse(exported.text);
  for (const json& event : trace["traceEvents"]) {
    if (event["ph"] == phase) {
      events.push_back(event);
    }
  }
  return events;
}

TEST(TraceEvents, AreCommandsAndInputs) {
  const Exported exported =
      Export(WriteTraceEvents,
             {"program|MENU|x", "hertz|3", "startclock|500", "ticks|7",
              R"(perform|startclock|501|endclock|509|ticks|30|usrcpu|5|type|qry|cmd|LIST "A")",
              "perform|startclock|506|endclock|512|cmd|CROSS", "input|13|4|500|503|4711"});
  EXPECT_EQ(Events(exported, "X"), json::parse(R"([
      {"name": "LIST \"A\"", "ph": "X", "pid": 1, "tid": 1, "cat": "command", "ts": 333333.333,
       "dur": 2666666.667,
       "args": {"type": "qry", "ticks": 30, "usrcpu": 5, "syscpu": null}},
      {"name": "CROSS", "ph": "X", "pid": 1, "tid": 2, "cat": "command", "ts": 2000000,
       "dur": 2000000, "args": {"type": null, "ticks": null, "usrcpu": null, "syscpu": null}},
      {"name": "4711", "ph": "X", "pid": 1, "tid": 3, "cat": "input", "ts": 0, "dur": 1000000,
       "args": {"code": 13, "characters": 4}}])"));
  std::vector<std::string> names;
  for (const json& event : Events(exported, "M")) {
    if (event["name"] != "thread_sort_index") {
      names.push_back(event["args"]["name"]);
    }
  }
  EXPECT_EQ(names, (std::vector<std::string>{"MENU", "Commands", "Commands, track 2", "Inputs"}));
  const json other = json::parse(exported.text)["otherData"];
  EXPECT_EQ(other["command"], "MENU x");
  EXPECT_EQ(other["hertz"], 3);
  EXPECT_EQ(other["ticks"], 7);
  EXPECT_TRUE(exported.told.empty());
}

TEST(TraceEvents, SayThatThereIsNoTimeLine) {
  const Exported exported = Export(WriteTraceEvents, {"input|13|4|500|503|4711"});
  EXPECT_EQ(Events(exported, "X").size(), 0U);
  EXPECT_EQ(exported.told, std::vector<std::string>{
                               "run1: there is no time line: the profile has no 'hertz' above 0"});
  const Exported empty = Export(WriteTraceEvents, "");
  EXPECT_EQ(Events(empty, "X").size(), 0U);
  EXPECT_TRUE(empty.told.empty());
}

TEST(TraceEvents, TellWhatIsLeftOut) {
  const Exported exported = Export(
      WriteTraceEvents, {"hertz|100", "perform|cmd|A", "perform|cmd|B", "input|13|4|500|499|x",
                         "perform|startclock|1|endclock|99999999999999999999|cmd|C"});
  EXPECT_EQ(exported.told,
            (std::vector<std::string>{
                "run1: 2 commands without their clocks are left out of the time line",
                "run1: 1 command with clocks too far from the start is left out of the time line",
                "run1: 1 input that ends before it begins is left out of the time line",
            }));
}

}  // namespace

}  // namespace ptick::exports
