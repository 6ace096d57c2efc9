#include "companion/csv_writer.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "companion/utf8.h"

namespace ptick::companion {

namespace {

TEST(CsvWriter, QuotesWhereNeeded) {
  struct Row {
    std::string_view text;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"plain", "plain"},
      {"", R"("")"},
      {" a b ", " a b "},
      {"a,b", R"("a,b")"},
      {R"(say "x")", R"("say ""x""")"},
      {R"(")", R"("""")"},
      {"a\nb", "\"a\nb\""},
      {"a\rb", "\"a\rb\""},
      {"a;b\t'c'", "a;b\t'c'"},
      {"caf\xE9", "caf\xC3\xA9"},
      {"caf\xC3\xA9", "caf\xC3\xA9"},
      {"\xE9,", "\"\xC3\xA9,\""},
      {"=1+2", "=1+2"},
  };
  for (const Row& row : rows) {
    StringSink sink;
    CsvWriter csv(sink);
    csv.Text(row.text).EndRow();
    EXPECT_EQ(sink.Text(), std::string(row.want) + "\r\n") << row.text;
  }
}

TEST(CsvWriter, WritesRows) {
  StringSink sink;
  CsvWriter csv(sink);
  csv.Text("name").Text("n").Text("share").EndRow();
  csv.Text("A").Number(-3).Number(0.5).EndRow();
  csv.Absent().Number(18446744073709551615U).Number(std::numeric_limits<double>::infinity());
  csv.EndRow();
  csv.Text("").Absent().Absent().EndRow();
  csv.EndRow();
  EXPECT_EQ(sink.Text(), "name,n,share\r\nA,-3,0.5\r\n,18446744073709551615,\r\n\"\",,\r\n\r\n");
}

// A reader by the grammar of RFC 4180.
std::vector<std::vector<std::string>> Read(std::string_view csv) {
  std::vector<std::vector<std::string>> rows;
  while (!csv.empty()) {
    std::vector<std::string>& row = rows.emplace_back();
    while (true) {
      std::string& field = row.emplace_back();
      if (csv.starts_with('"')) {
        csv.remove_prefix(1);
        while (!csv.starts_with('"') || csv.starts_with("\"\"")) {
          field += csv.front();
          csv.remove_prefix(csv.starts_with('"') ? 2 : 1);
        }
        csv.remove_prefix(1);
      } else {
        field = csv.substr(0, csv.find_first_of(",\r\n"));
        EXPECT_EQ(field.find('"'), std::string::npos);
        csv.remove_prefix(field.size());
      }
      if (!csv.starts_with(',')) {
        break;
      }
      csv.remove_prefix(1);
    }
    EXPECT_TRUE(csv.starts_with("\r\n")) << csv;
    csv.remove_prefix(2);
  }
  return rows;
}

TEST(CsvWriter, IsReadBack) {
  constexpr std::string_view kBytes = "a,\"\r\n\t ;\xE9\xC3\xA9\x80\x1b=";
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    StringSink sink;
    CsvWriter csv(sink);
    std::vector<std::vector<std::string>> want;
    for (int i = 0; i < 5; ++i) {
      std::vector<std::string>& row = want.emplace_back();
      for (int field = 0; field < 3; ++field) {
        std::string text;
        for (std::size_t length = random() % 6; length > 0; --length) {
          text += kBytes[random() % kBytes.size()];
        }
        csv.Text(text);
        row.push_back(ToUtf8(text));
      }
      csv.EndRow();
    }
    ASSERT_EQ(Read(sink.Text()), want) << sink.Text();
  }
}

}  // namespace

}  // namespace ptick::companion
