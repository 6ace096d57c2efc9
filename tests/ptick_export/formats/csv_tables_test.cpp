#include "ptick_export/formats/csv_tables.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ptick_export/support/exported.h"

namespace ptick::exports {

namespace {

TEST(CsvTables, HoldWhatReportsShow) {
  struct Row {
    std::string_view table;
    std::vector<std::string_view> records;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"lines",
       {"trace|A|7|5", "trace|B|x,y|7.5", "trace|A|007|5", "trace|\"C\"|1"},
       "program,line,ticks\r\nB,\"x,y\",7.5\r\nA,007,5\r\nA,7,5\r\n\"\"\"C\"\"\",1,0\r\n"},
      {"programs",
       {"trace|A|7|5", "trace|B|1|7.5", "trace|A|8|4", "trace|C|8|9"},
       "program,ticks\r\nC,9\r\nA,9\r\nB,7.5\r\n"},
      {"commands",
       {"perform|startclock|1|ticks|2|type|qry|cmd|A,B", "perform|cmd|C"},
       "command,type,startclock,endclock,starttime,endtime,ticks,usrcpu,syscpu\r\n"
       "\"A,B\",qry,1,,,,2,,\r\nC,,,,,,,,\r\n"},
      {"subroutines",
       {"subroutine_call|A B|3", "subroutine_call|A C|12", "subroutine_call"},
       "caller,subroutine,times\r\nA,C,12\r\nA,B,3\r\n\"\",\"\",0\r\n"},
      {"objects", {"shared_object|b|1", "shared_object|a|1"}, "name\r\na\r\nb\r\n"},
      {"inputs",
       {"input|13|4|500|503|a|b", "input|13"},
       "code,characters,startclock,endclock,text\r\n13,4,500,503,a\tb\r\n13,,,,\"\"\r\n"},
      {"counters",
       {"ticks|5", "hertz|100", "read_count|3", "portno|7", "memused"},
       "name,value\r\nmemused,\r\nread_count,3\r\nportno,7\r\n"},
  };
  ASSERT_EQ(rows.size(), CsvTables().size());
  for (std::size_t n = 0; n < rows.size(); ++n) {
    const CsvTable& table = CsvTables()[n];
    EXPECT_EQ(table.name, rows[n].table);
    EXPECT_EQ(testing::Export(table.write, testing::RecordsOf(rows[n].records)).text, rows[n].want)
        << table.name;
    EXPECT_EQ(testing::Export(table.write, "").text, std::string(table.columns) + "\r\n");
  }
}

}  // namespace

}  // namespace ptick::exports
