#include "model/table_description.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace ptick::model {

namespace {

class Description {
 public:
  void Add(std::string_view name, std::string_view text) {
    text_.append(name).append(": [").append(Shown(text)).append("]\n");
  }

  void AddEntry(std::string_view program, std::string_view line, std::string_view ticks) {
    text_.append("  [").append(Shown(program)).append("] [").append(Shown(line));
    text_.append("] [").append(Shown(ticks)).append("]\n");
  }

  void AddList(std::string_view name, const ValueList& list) {
    for (const Value& element : list) {
      Add(name, element.Text());
    }
  }

  void AddList(std::string_view name, const FieldList& list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
      Add(name, list[i]);
    }
  }

  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
};

using Header = std::pair<std::string_view, Value ProfileTables::*>;

constexpr std::array kHeaders = {
    Header{"memused", &ProfileTables::MemUsed},
    Header{"hertz", &ProfileTables::Hertz},
    Header{"memfree", &ProfileTables::MemFree},
    Header{"pagesize", &ProfileTables::PageSize},
    Header{"starttime", &ProfileTables::StartTime},
    Header{"startclock", &ProfileTables::StartClock},
    Header{"endtime", &ProfileTables::EndTime},
    Header{"endclock", &ProfileTables::EndClock},
    Header{"ticks", &ProfileTables::TotalTicks},
    Header{"ticks_index", &ProfileTables::TicksIndex},
    Header{"index_count", &ProfileTables::IndexCount},
    Header{"ticks_trigger", &ProfileTables::TicksTrigger},
    Header{"trigger_count", &ProfileTables::TriggerCount},
    Header{"usrcpu", &ProfileTables::UsrCpu},
    Header{"syscpu", &ProfileTables::SysCpu},
    Header{"read_count", &ProfileTables::ReadCount},
    Header{"write_count", &ProfileTables::WriteCount},
    Header{"delete_count", &ProfileTables::DeleteCount},
    Header{"clearfile_count", &ProfileTables::ClearFileCount},
    Header{"open_count", &ProfileTables::OpenCount},
    Header{"input_count", &ProfileTables::InputCount},
    Header{"portno", &ProfileTables::PortNo},
    Header{"pid", &ProfileTables::Pid},
    Header{"ppid", &ProfileTables::PPid},
};

std::string JoinedRate(const std::optional<TypingRate>& rate) {
  return rate ? rate->characters + kFieldMark + rate->ticks : "";
}

void DescribeRow(const DetailsRow& row, Description& description) {
  for (std::size_t i = 0; i < row.ticks.size(); ++i) {
    description.AddEntry(row.programs[i].Text(), row.lines[i].Text(), row.ticks[i].Text());
  }
}

void DescribeRow(const TickTable& details, std::size_t row, Description& description) {
  details.ForEach(row, [&](const TickEntry& entry) {
    const bool exact = entry.HasExactText();
    description.AddEntry(
        details.Programs()[entry.program],
        exact ? std::string(details.ExactLine(entry)) : std::to_string(entry.line),
        exact ? std::string(details.ExactTicks(entry)) : std::to_string(entry.ticks));
  });
}

}  // namespace

std::string Describe(const ModelTables& tables, bool per_program) {
  Description description;
  if (per_program) {
    for (std::size_t row = 0; row < tables.program_names.size(); ++row) {
      description.Add("program", tables.program_names[row].Text());
      DescribeRow(tables.Details[row], description);
    }
  } else {
    DescribeRow(tables.Details.front(), description);
  }
  description.Add("ProgramCommand", tables.ProgramCommand.Text());
  description.Add("ProgramName", tables.ProgramName.Text());
  description.AddList("SharedObjects", tables.SharedObjects);
  description.AddList("SubroutineTimes", tables.SubroutineTimes);
  description.AddList("SubroutinesCalled", tables.SubroutinesCalled);
  description.AddList("Performs", tables.Performs);
  description.AddList("KeyScript", tables.KeyScript);
  description.Add("TypeRate", tables.TypeRate.Text());
  description.Add("Resource", tables.Resource.Text());
  description.Add("LastClock", tables.LastClock.Text());
  for (const Value& ticks : tables.UserTicks) {
    description.Add("UserTicks", ticks.Text());
  }
  for (const Header& header : kHeaders) {
    description.Add(header.first, tables.headers.at(std::string(header.first)).Text());
  }
  return description.Take();
}

std::string Describe(const ProfileTables& tables, bool per_program) {
  Description description;
  for (std::size_t row = 0; row < tables.Details.RowCount(); ++row) {
    if (per_program) {
      description.Add("program", tables.Details.Programs()[static_cast<NameTable::Id>(row)]);
    }
    DescribeRow(tables.Details, row, description);
  }
  description.Add("ProgramCommand", tables.ProgramCommand);
  description.Add("ProgramName", tables.ProgramName);
  description.AddList("SharedObjects", tables.SharedObjects);
  description.AddList("SubroutineTimes", tables.SubroutineTimes);
  description.AddList("SubroutinesCalled", tables.SubroutinesCalled);
  description.AddList("Performs", tables.Performs);
  description.AddList("KeyScript", tables.KeyScript);
  description.Add("TypeRate", JoinedRate(tables.TypeRate));
  description.Add("Resource", tables.Resource);
  description.Add("LastClock", tables.LastClock.Text());
  for (const Value& ticks : tables.UserTicks) {
    description.Add("UserTicks", ticks.Text());
  }
  for (const Header& header : kHeaders) {
    description.Add(header.first, (tables.*header.second).Text());
  }
  return description.Take();
}

}  // namespace ptick::model
