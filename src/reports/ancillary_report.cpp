#include "reports/ancillary_report.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "figures/clock_time.h"
#include "figures/tick_share.h"
#include "reports/ancillary_blocks.h"
#include "value/arithmetic.h"
#include "value/conversion.h"
#include "value/mask.h"

namespace ptick {

namespace {

int CompareWithZero(const Value& x) { return CompareNumbers(x.AsNumber(), std::int64_t{0}); }

// Whether a port or process number was recorded; it starts as -1.
bool IsRecorded(const Value& number) { return CompareWithZero(number) >= 0; }

void PrintProcess(const ProfileTables& tables, Output& output) {
  if (!tables.ProgramCommand.empty()) {
    output.PrintLine("Command line  : " + tables.ProgramCommand);
  }
  if (IsRecorded(tables.PortNo)) {
    output.PrintLine("Port number   : " + tables.PortNo.Text());
  }
  if (IsRecorded(tables.Pid)) {
    output.PrintLine("Process ID    : " + tables.Pid.Text());
  }
  if (IsRecorded(tables.PPid)) {
    output.PrintLine("Parent pid    : " + tables.PPid.Text());
  }
}

std::string DateAndTime(const Value& stamp, const ZoneOffset& zone) {
  return OConv(OConv(stamp, "U0ff1", zone), "D").Text() + ' ' +
         OConv(OConv(stamp, "U0ff0", zone), "MTS").Text();
}

void PrintTimes(const ProfileTables& tables, Platform& platform, Output& output) {
  const ZoneOffset zone = [&platform](std::int64_t time) { return platform.ZoneOffset(time); };
  if (!tables.StartTime.Empty()) {
    output.PrintLine("Start time    : " + DateAndTime(tables.StartTime, zone));
  }
  if (!tables.EndTime.Empty()) {
    output.PrintLine("End time      : " + DateAndTime(tables.EndTime, zone));
  }
}

void PrintCpuAndTicks(const ProfileTables& tables, Output& output) {
  if (!tables.UsrCpu.Empty() && !tables.SysCpu.Empty() && !tables.Hertz.Empty()) {
    output.PrintLine("CPU usage     : User " + Fmt(Seconds(tables.UsrCpu, tables.Hertz), "L2") +
                     " , System " + Fmt(Seconds(tables.SysCpu, tables.Hertz), "L2"));
  }
  if (!tables.TotalTicks.Empty()) {
    output.PrintLine("Profile ticks : " + Fmt(tables.TotalTicks, "ML,"));
  }
}

void PrintEvents(const std::string& label, const Value& count, const Value& ticks,
                 const Value& total_ticks, Output& output) {
  if (CompareWithZero(count) <= 0 && CompareWithZero(ticks) <= 0) {
    output.PrintLine(label + "None");
    return;
  }
  output.PrintLine(label + count.Text() + " events , " + Fmt(ticks, "ML,") + " ticks , " +
                   Fmt(SharePercent(ticks, total_ticks), "MR20") + "% of CPU");
}

void PrintUserTicks(const ProfileTables& tables, Output& output) {
  const TickShare share(tables.TotalTicks);
  for (std::size_t n = 0; n < tables.UserTicks.size(); ++n) {
    const Value& ticks = tables.UserTicks[n];
    if (!ticks.IsTrue()) {
      continue;
    }
    std::string line =
        "User Tick " + Fmt(static_cast<std::int64_t>(n + 1), "L#2") + "  : " + Fmt(ticks, "L#8");
    if (tables.TotalTicks.IsTrue()) {
      line += "( " + Fmt(share.ExactHundredths(ticks), "MR22") + " % )";
    }
    output.PrintLine(line);
  }
}

void PrintMemory(const ProfileTables& tables, Output& output) {
  if (tables.PageSize.IsTrue()) {
    output.PrintLine("Page size     : " + Fmt(tables.PageSize, "ML,"));
  }
  if (!tables.MemUsed.Empty() && !tables.MemFree.Empty()) {
    output.PrintLine("Memory        : Used " + Fmt(tables.MemUsed, "ML,") + " , Free " +
                     Fmt(tables.MemFree, "ML,"));
  }
}

void PrintKeyboard(const ProfileTables& tables, Output& output) {
  output.PrintLine("INPUT count   : " + tables.InputCount.Text());
  if (!tables.TypeRate || tables.Hertz.Empty()) {
    return;
  }
  const Value characters = tables.TypeRate->characters;
  if (CompareWithZero(characters) <= 0) {
    return;
  }
  const Value seconds = Seconds(tables.TypeRate->ticks, tables.Hertz);
  output.PrintLine("Keyboard speed: " + characters.Text() + " characters in " + seconds.Text() +
                   " secs , " + Divide(seconds, characters).Text() + " secs per keystroke");
}

}  // namespace

void ReportAncillary(const ReportJob& job) {
  const ProfileTables& tables = job.tables;
  Output& output = job.output;
  PrintProcess(tables, output);
  PrintTimes(tables, job.platform, output);
  PrintCpuAndTicks(tables, output);
  PrintEvents("Index count   : ", tables.IndexCount, tables.TicksIndex, tables.TotalTicks, output);
  PrintEvents("Trigger count : ", tables.TriggerCount, tables.TicksTrigger, tables.TotalTicks,
              output);
  PrintUserTicks(tables, output);
  PrintMemory(tables, output);
  PrintKeyboard(tables, output);
  PrintResources(tables, output);
  PrintFileStatements(tables, output);
}

}  // namespace ptick
