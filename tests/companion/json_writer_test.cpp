#include "companion/json_writer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "companion/json_text.h"
#include "companion/terminal_text.h"
#include "companion/utf8.h"

namespace ptick::companion {

namespace {

using namespace std::string_view_literals;
using Elements = JsonWriter::Elements;

TEST(JsonText, Escapes) {
  struct Row {
    std::string_view text;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"", R"("")"},
      {"plain /'&<>", R"("plain /'&<>")"},
      {R"(say "x" \)", R"("say \"x\" \\")"},
      {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
      {"\0\x1b\x1f\x7f"sv, R"("\u0000\u001b\u001f\u007f")"},
      {"caf\xC3\xA9", "\"caf\xC3\xA9\""},
      {"caf\xE9", "\"caf\xC3\xA9\""},
      {"\xE9\"\xE9", "\"\xC3\xA9\\\"\xC3\xA9\""},
      {"\x9B", R"("\u009b")"},
      {"\xC2\x9B", R"("\u009b")"},
      // NOLINTNEXTLINE(misc-misleading-bidirectional): it is escaped
      {"a\xE2\x80\xA8\xE2\x80\xAE\xEF\xBB\xBF", R"("a\u2028\u202e\ufeff")"},
      {"\xF3\xA0\x81\x81", R"("\udb40\udc41")"},
      {"\xF0\x9F\x98\x80", "\"\xF0\x9F\x98\x80\""},
  };
  for (const Row& row : rows) {
    std::string json;
    AppendJsonText(json, row.text);
    EXPECT_EQ(json, row.want) << row.text;
  }
}

TEST(JsonText, IsReadBack) {
  // NOLINTNEXTLINE(misc-misleading-bidirectional): it is escaped
  constexpr std::string_view kBytes = "ab\"\\/\n\t\x1b\x7f\xE9\xC3\xA9\x80\xE2\x80\xAE\xF0\x9F";
  std::mt19937 random(3);
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (std::size_t length = random() % 12; length > 0; --length) {
      text += kBytes[random() % kBytes.size()];
    }
    std::string json;
    AppendJsonText(json, text);
    ASSERT_EQ(nlohmann::json::parse(json).get<std::string>(), ToUtf8(text)) << json;
    ASSERT_EQ(TerminalText(json, TextPlace::kCell), json);
  }
}

TEST(JsonText, HasEveryCharacter) {
  for (char32_t code = 0; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) {
      continue;
    }
    std::string text = "x";
    AppendCharacter(text, code);
    std::string json;
    AppendJsonText(json, text);
    ASSERT_EQ(nlohmann::json::parse(json).get<std::string>(), text) << json;
  }
}

TEST(JsonText, KnowsNumbers) {
  for (const std::string_view text : {"0", "-0", "12", "-12", "0.5", "-10.25", "1e5", "1E+5",
                                      "1.5e-10", "123456789012345678901234567890"}) {
    EXPECT_TRUE(IsJsonNumber(text)) << text;
  }
  for (const std::string_view text : {"", "-", "+1", "01", "-01", ".5", "5.", "1e", "1e+", "0x1",
                                      " 1", "1 ", "1,2", "nan", "inf", "--1", "1.2.3", "1e5.5"}) {
    EXPECT_FALSE(IsJsonNumber(text)) << text;
  }
}

std::string Written(const std::function<void(JsonWriter&)>& write) {
  StringSink sink;
  JsonWriter json(sink);
  write(json);
  json.Finish();
  return sink.Text();
}

TEST(JsonWriter, WritesWhatItIsTold) {
  EXPECT_EQ(Written([](JsonWriter& json) { json.Text("x"); }), "\"x\"\n");
  EXPECT_EQ(Written([](JsonWriter& json) { json.BeginObject().EndObject(); }), "{}\n");
  EXPECT_EQ(Written([](JsonWriter& json) { json.BeginArray().EndArray(); }), "[]\n");
  EXPECT_EQ(
      Written([](JsonWriter& json) { json.BeginArray(Elements::kOnLinesOfTheirOwn).EndArray(); }),
      "[]\n");
  EXPECT_EQ(Written([](JsonWriter& json) {
              json.BeginObject();
              json.Key("text").Text("a\"b").Key("int").Number(-3).Key("uint");
              json.Number(std::numeric_limits<std::uint64_t>::max()).Key("double").Number(2000.5);
              json.Key("digits").NumberText("1.50").Key("yes").Bool(true).Key("no").Bool(false);
              json.Key("null").Null().Key("nan").Number(std::numeric_limits<double>::quiet_NaN());
              json.Key("zero").Number(-0.0);
              json.EndObject();
            }),
            R"({"text":"a\"b","int":-3,"uint":18446744073709551615,"double":2000.5,)"
            R"("digits":1.50,"yes":true,"no":false,"null":null,"nan":null,"zero":0})"
            "\n");
  EXPECT_EQ(Written([](JsonWriter& json) {
              json.BeginObject().Key("rows").BeginArray(Elements::kOnLinesOfTheirOwn);
              json.BeginObject().Key("a").Number(1).Key("b").Null().EndObject();
              json.BeginArray().Number(1).Number(2).BeginArray().EndArray().EndArray();
              json.EndArray().Key("n").Number(2).EndObject();
            }),
            "{\"rows\":[\n{\"a\":1,\"b\":null},\n[1,2,[]]\n],\"n\":2}\n");
}

TEST(JsonWriter, RefusesWhatIsNoJson) {
  const std::vector<std::function<void(JsonWriter&)>> wrong = {
      [](JsonWriter& /*json*/) {},
      [](JsonWriter& json) { json.BeginObject(); },
      [](JsonWriter& json) { json.BeginArray().EndObject(); },
      [](JsonWriter& json) { json.BeginObject().EndArray(); },
      [](JsonWriter& json) { json.BeginObject().Number(1); },
      [](JsonWriter& json) { json.BeginObject().Key("a").EndObject(); },
      [](JsonWriter& json) { json.BeginObject().Key("a").Key("b"); },
      [](JsonWriter& json) { json.Key("a"); },
      [](JsonWriter& json) { json.BeginArray().Key("a"); },
      [](JsonWriter& json) { json.Number(1).Number(2); },
      [](JsonWriter& json) { json.Number(1).BeginArray(); },
      [](JsonWriter& json) { json.EndArray(); },
      [](JsonWriter& json) { json.NumberText("01"); },
  };
  for (std::size_t i = 0; i < wrong.size(); ++i) {
    EXPECT_THROW(Written(wrong[i]), std::logic_error) << i;
  }
}

class CountingSink final : public ByteSink {
 public:
  void Write(std::string_view bytes) override {
    most_ = std::max(most_, bytes.size());
    text_ += bytes;
  }
  std::size_t Most() const { return most_; }
  const std::string& Text() const { return text_; }

 private:
  std::size_t most_ = 0;
  std::string text_;
};

TEST(JsonWriter, HandsOnLongTextsPieceByPiece) {
  CountingSink sink;
  JsonWriter json(sink);
  json.BeginArray(Elements::kOnLinesOfTheirOwn);
  for (int i = 0; i < 100'000; ++i) {
    json.BeginObject().Key("row").Number(i).EndObject();
  }
  json.EndArray().Finish();
  EXPECT_LT(sink.Most(), 70'000U);
  const nlohmann::json read = nlohmann::json::parse(sink.Text());
  ASSERT_EQ(read.size(), 100'000U);
  EXPECT_EQ(read[99'999]["row"], 99'999);
}

}  // namespace

}  // namespace ptick::companion
