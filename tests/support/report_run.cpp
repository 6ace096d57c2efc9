#include "support/report_run.h"

#include <utility>

#include "output/stop.h"
#include "value/dynamic_array.h"

namespace ptick {

ReportTest::ReportTest() {
  tables_.ProgramName = "PROG";
  tables_.ProfileName = "run1";
}

Printed ReportTest::Run(const std::function<void(const ReportJob&)>& report) {
  platform_.printed.clear();
  platform_.on_terminal.clear();
  Printed printed;
  Output output(platform_, "ptick");
  try {
    report({tables_, options_, platform_, output});
    output.Finish();
  } catch (const Stop& stop) {
    printed.stopped = stop.status;
    output.Close();
  }
  printed.lines = platform_.printed;
  printed.terminal = platform_.on_terminal;
  return printed;
}

NameList Names(std::initializer_list<std::string_view> texts) {
  NameList names;
  for (const std::string_view text : texts) {
    names.Append(text);
  }
  return names;
}

PerformSample MakePerform(std::string_view command) {
  PerformSample sample;
  sample.command = command;
  return sample;
}

PerformTable Performs(const std::vector<PerformSample>& samples) {
  PerformTable performs;
  for (const PerformSample& sample : samples) {
    PerformTexts texts;
    texts[PerformNumber::kStartClock] = sample.start_clock;
    texts[PerformNumber::kEndClock] = sample.end_clock;
    texts[PerformNumber::kTicks] = sample.ticks;
    texts[PerformNumber::kUsrCpu] = sample.usr_cpu;
    texts[PerformNumber::kSysCpu] = sample.sys_cpu;
    texts.type = sample.type;
    texts.command = sample.command;
    performs.Add(texts, true);
  }
  return performs;
}

SubroutineTable Subroutines(std::initializer_list<CallSample> samples) {
  SubroutineTable subroutines;
  for (const CallSample& sample : samples) {
    subroutines.Add({.caller = "CALLER", .called = sample.called, .times = sample.times}, false);
  }
  return subroutines;
}

}  // namespace ptick
