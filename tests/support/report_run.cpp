#include "support/report_run.h"

#include <utility>

#include "output/stop.h"
#include "value/dynamic_array.h"

namespace ptick {

ReportTest::ReportTest() {
  tables_.ProgramName = "PROG";
  tables_.ProfileName = "run1";
}

Printed ReportTest::Run(const std::function<void(Output&)>& report) {
  platform_.printed.clear();
  platform_.on_terminal.clear();
  Printed printed;
  Output output(platform_);
  try {
    report(output);
    output.Finish();
  } catch (const Stop& stop) {
    printed.stopped = stop.status;
    output.Close();
  }
  printed.lines = platform_.printed;
  printed.terminal = platform_.on_terminal;
  return printed;
}

FieldList Fields(std::initializer_list<std::string_view> texts) {
  FieldList fields;
  for (const std::string_view text : texts) {
    fields.Append(text);
  }
  return fields;
}

std::string MakePerform(const PerformSample& sample) {
  std::string entry = sample.StartClock;
  for (const std::string& value : {sample.EndClock, std::string(), std::string(), sample.ticks,
                                   sample.UsrCpu, sample.SysCpu, sample.type, sample.command}) {
    entry += kValueMark;
    entry += value;
  }
  return entry;
}

std::string MakePerform(std::string_view command) {
  return MakePerform({"", "", "", "", "", "", std::string(command)});
}

}  // namespace ptick
