#include "model/table_description.h"

#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

#include "figures/subroutine_order.h"
#include "model/model_list.h"
#include "profile/tables/record_types.h"
#include "profile/ticks/ordered_ticks.h"
#include "reports/input_lines.h"
#include "value/dynamic_array.h"
#include "value/list_operations.h"
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

  void AddList(std::string_view name, const NameList& list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
      Add(name, list[i]);
    }
  }

  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
};

std::string JoinedRate(const std::optional<TypingRate>& rate) {
  return rate ? rate->characters + kFieldMark + rate->ticks : "";
}

void DescribeRow(const DetailsRow& row, Description& description) {
  for (std::size_t i = 0; i < row.ticks.size(); ++i) {
    description.AddEntry(row.programs[i].Text(), row.lines[i].Text(), row.ticks[i].Text());
  }
}

void DescribeRow(const OrderedTicks& ticks, std::size_t row, Description& description) {
  ticks.ForEach(row, [&](const TickEntry& entry) {
    const bool exact = entry.HasExactText();
    description.AddEntry(
        ticks.Programs()[entry.program],
        exact ? std::string(ticks.ExactLine(entry)) : std::to_string(entry.line),
        exact ? std::string(ticks.ExactTicks(entry)) : std::to_string(entry.ticks));
  });
}

// An entry as the lists hold it: nine values; what was assigned after the ninth is never read.
std::string NineValues(const Value& entry) { return Field(entry.Text(), kValueMark, 1, 9).text; }

std::string PerformEntry(const PerformTable::Record& perform) {
  std::string entry;
  for (std::size_t n = 0; n < kPerformNumbers; ++n) {
    entry += perform.Text(static_cast<PerformNumber>(n)) + kValueMark;
  }
  return entry.append(perform.Type()) + kValueMark + std::string(perform.Command());
}

void DescribeSubroutines(const SubroutineTable& subroutines, Description& description) {
  for (const std::size_t n : SubroutineOrder(subroutines)) {
    std::string times;
    subroutines.AppendTimes(n, times);
    description.Add("SubroutineTimes", times);
    description.Add("SubroutinesCalled", subroutines.Called(n));
  }
}

}  // namespace

std::string Describe(const ModelTables& tables, const RunOptions& options) {
  Description description;
  if (options.PerProgram) {
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
  for (std::size_t n = 0; n < tables.SubroutineTimes.size(); ++n) {
    description.Add("SubroutineTimes", tables.SubroutineTimes[n].Text());
    description.Add("SubroutinesCalled", tables.SubroutinesCalled[n].Text());
  }
  for (const Value& entry : tables.Performs) {
    description.Add("Performs", NineValues(entry));
  }
  for (const Value& line : tables.KeyScript) {
    description.Add("KeyScript", line.Text());
  }
  description.Add("TypeRate", tables.TypeRate.Text());
  description.Add("Resource", tables.Resource.Text());
  for (const Value& ticks : tables.UserTicks) {
    description.Add("UserTicks", ticks.Text());
  }
  for (const auto& [type, value] : tables.headers) {
    description.Add(type, value.Text());
  }
  return description.Take();
}

std::string Describe(ProfileTables& tables, const RunOptions& options) {
  Description description;
  const OrderedTicks ticks(std::move(tables.Details), options.TickOrder, options.PerProgram);
  for (std::size_t row = 0; row < ticks.RowCount(); ++row) {
    if (options.PerProgram) {
      description.Add("program", ticks.Programs()[static_cast<NameTable::Id>(row)]);
    }
    DescribeRow(ticks, row, description);
  }
  description.Add("ProgramCommand", tables.ProgramCommand);
  description.Add("ProgramName", tables.ProgramName);
  description.AddList("SharedObjects", tables.SharedObjects);
  DescribeSubroutines(tables.Subroutines, description);
  for (std::size_t n = 0; n < tables.Performs.RecordCount(); ++n) {
    description.Add("Performs", PerformEntry(tables.Performs[n]));
  }
  std::string script;
  InputLines(options.TypeRateOption).AppendAll(tables.Inputs, script);
  for (const std::string& line : LinesOf(script)) {
    description.Add("KeyScript", line);
  }
  description.Add("TypeRate", JoinedRate(tables.TypeRate));
  description.Add("Resource", tables.Resource);
  for (const Value& ticks_of_user : tables.UserTicks) {
    description.Add("UserTicks", ticks_of_user.Text());
  }
  std::map<std::string_view, std::string> headers;
  for (const RecordType& type : RecordTypes()) {
    if (type.header != nullptr) {
      headers[type.name] = (tables.*type.header).Text();
    }
  }
  for (const auto& [type, text] : headers) {
    description.Add(type, text);
  }
  return description.Take();
}

}  // namespace ptick::model
