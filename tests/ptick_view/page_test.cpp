#include "ptick_view/page.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "companion/byte_sink.h"
#include "ptick_view/inert_sink.h"

namespace ptick::view {

namespace {

TEST(Page, IsDividedWhereItsDataBelongs) {
  const Page page = DividePage("<p>@PTICK_VIEW_DATA@</p>");
  EXPECT_EQ(page.before, "<p>");
  EXPECT_EQ(page.after, "</p>");
}

TEST(Page, MarksThePlaceOfItsDataOnce) {
  EXPECT_THROW(DividePage("<p></p>"), std::logic_error);
  EXPECT_THROW(DividePage("@PTICK_VIEW_DATA@ @PTICK_VIEW_DATA@"), std::logic_error);
}

TEST(Page, ThatIsEmbeddedIsWhole) {
  const Page page = EmbeddedPage();
  EXPECT_TRUE(page.before.starts_with("<!doctype html>")) << page.before.substr(0, 40);
  EXPECT_TRUE(page.before.ends_with(R"(<script type="application/json" id="data">)"));
  EXPECT_TRUE(page.after.starts_with("</script>"));
  EXPECT_LE(page.before.size() + page.after.size(), std::size_t{600} * 1024);
}

TEST(InertSink, LeavesNothingThatEndsAnElement) {
  struct Row {
    std::string text;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"", ""},
      {R"({"a":1})", R"({"a":1})"},
      {R"("</script>")", R"("\u003c/script>")"},
      {R"("<!--<<")", R"("\u003c!--\u003c\u003c")"},
      {"<", "\\u003c"},
  };
  for (const Row& row : rows) {
    companion::StringSink text;
    InertSink(text).Write(row.text);
    EXPECT_EQ(text.Text(), row.want) << row.text;
  }
}

}  // namespace

}  // namespace ptick::view
