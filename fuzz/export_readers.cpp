#include "fuzz/export_readers.h"

#include <zlib.h>

#include <charconv>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <protozero/pbf_reader.hpp>
#include <vector>

#include "companion/utf8.h"
#include "fuzz/require.h"

namespace ptick::fuzz {

namespace {

using nlohmann::json;

std::vector<std::string_view> LinesOf(std::string_view text) {
  Require(companion::IsUtf8(text), "text is UTF-8");
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    Require(end != std::string_view::npos, "the last line has its end");
    lines.push_back(text.substr(0, end));
    Require(lines.back().find('\r') == std::string_view::npos, "no other line end is in a line");
    text.remove_prefix(end + 1);
  }
  return lines;
}

std::int64_t WholeNumber(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  Require(error == std::errc() && end == text.data() + text.size() && number >= 0,
          "a count is a whole number");
  return number;
}

void Add(ReadSums& sums, std::string program, std::string line, double ticks) {
  Require(sums.emplace(std::pair(std::move(program), std::move(line)), ticks).second,
          "each line of a program is there once");
}

// Names by their numbers: "(3) NAME" the first time, "(3)" after that.
class NumberedNames {
 public:
  std::string Read(std::string_view text) {
    Require(text.starts_with('('), "a name has a number");
    const std::size_t end = text.find(')');
    Require(end != std::string_view::npos, "a name has a number");
    const std::int64_t number = WholeNumber(text.substr(1, end - 1));
    text.remove_prefix(end + 1);
    if (text.empty()) {
      Require(names_.contains(number), "a number has a name");
    } else {
      Require(text.size() > 1 && text[0] == ' ' && text[1] != ' ', "a name follows its number");
      Require(names_.emplace(number, text.substr(1)).second, "a number has one name");
    }
    return names_[number];
  }

 private:
  std::map<std::int64_t, std::string> names_;
};

std::string Unzipped(std::string zipped) {
  z_stream stream = {};
  Require(::inflateInit2(&stream, 15 + 16) == Z_OK, "zlib begins");
  stream.next_in = reinterpret_cast<Bytef*>(zipped.data());  // NOLINT(*-reinterpret-cast)
  stream.avail_in = static_cast<uInt>(zipped.size());
  std::string text;
  int status = Z_OK;
  while (status == Z_OK) {
    std::string room(std::size_t{1} << 16U, '\0');
    stream.next_out = reinterpret_cast<Bytef*>(room.data());  // NOLINT(*-reinterpret-cast)
    stream.avail_out = static_cast<uInt>(room.size());
    status = ::inflate(&stream, Z_NO_FLUSH);
    text.append(room, 0, room.size() - stream.avail_out);
  }
  Require(status == Z_STREAM_END && stream.avail_in == 0, "the bytes are one gzip file");
  ::inflateEnd(&stream);
  return text;
}

// The numbers of a message by their fields, and its last message.
struct Message {
  std::map<protozero::pbf_tag_type, std::int64_t> numbers;
  protozero::data_view inner;
};

Message ReadMessage(protozero::pbf_reader reader) {
  Message message;
  while (reader.next()) {
    const protozero::pbf_tag_type tag = reader.tag();
    if (reader.wire_type() == protozero::pbf_wire_type::varint) {
      message.numbers[tag] = reader.get_int64();
    } else {
      message.inner = reader.get_view();
    }
  }
  return message;
}

}  // namespace

ReadSums ReadFolded(std::string_view text) {
  ReadSums sums;
  for (const std::string_view line : LinesOf(text)) {
    const std::size_t frame = line.find(';');
    const std::size_t count = line.rfind(' ');
    Require(frame != std::string_view::npos && count != std::string_view::npos && frame < count &&
                line.find(';', frame + 1) == std::string_view::npos,
            "a stack has two frames and a count");
    const std::int64_t ticks = WholeNumber(line.substr(count + 1));
    Require(ticks > 0, "counts are above 0");
    Add(sums, std::string(line.substr(0, frame)),
        std::string(line.substr(frame + 1, count - frame - 1)), static_cast<double>(ticks));
  }
  return sums;
}

ReadSums ReadCallgrind(std::string_view text) {
  ReadSums sums;
  NumberedNames functions;
  NumberedNames files;
  std::string function;
  bool is_in_head = true;
  bool is_call = false;
  double total = 0;
  std::int64_t summary = -1;
  for (const std::string_view line : LinesOf(text)) {
    if (is_in_head) {
      is_in_head = !line.starts_with("events: ");
      Require(line == "# callgrind format" || line.find('#') == std::string_view::npos,
              "no remark is in the head");
    } else if (line.starts_with("summary: ") || line.starts_with("totals: ")) {
      summary = WholeNumber(line.substr(line.find(' ') + 1));
    } else if (line.starts_with("fn=")) {
      function = functions.Read(line.substr(3));
    } else if (line.starts_with("cfn=")) {
      functions.Read(line.substr(4));
    } else if (line.starts_with("fl=")) {
      files.Read(line.substr(3));
    } else if (line.starts_with("cfi=")) {
      files.Read(line.substr(4));
    } else if (line.starts_with("calls=")) {
      is_call = true;
    } else if (is_call) {
      Require(line == "0 0", "a call costs nothing");
      is_call = false;
    } else if (!line.empty()) {
      const std::size_t blank = line.find(' ');
      Require(blank != std::string_view::npos, "a cost has a line");
      const auto ticks = static_cast<double>(WholeNumber(line.substr(blank + 1)));
      Add(sums, function, std::to_string(WholeNumber(line.substr(0, blank))), ticks);
      total += ticks;
    }
  }
  Require(total == static_cast<double>(summary), "the total is the sum of all costs");
  return sums;
}

ReadSums ReadPprof(const std::string& zipped) {
  const std::string bytes = Unzipped(zipped);
  std::vector<std::string> texts;
  for (protozero::pbf_reader profile(bytes); profile.next();) {
    if (profile.tag() == 6) {
      texts.push_back(profile.get_string());
      Require(companion::IsUtf8(texts.back()), "texts are UTF-8");
    } else {
      profile.skip();
    }
  }
  Require(!texts.empty() && texts.front().empty(), "the first text is empty");
  std::map<std::int64_t, std::string> functions;
  std::map<std::uint64_t, std::pair<std::string, std::string>> places;
  ReadSums sums;
  for (protozero::pbf_reader profile(bytes); profile.next();) {
    if (profile.tag() == 5) {
      Message function = ReadMessage(profile.get_message());
      functions[function.numbers[1]] = texts.at(static_cast<std::size_t>(function.numbers[2]));
    } else if (profile.tag() == 4) {
      Message location = ReadMessage(profile.get_message());
      Message line = ReadMessage(protozero::pbf_reader(location.inner));
      places[static_cast<std::uint64_t>(location.numbers[1])] = {functions.at(line.numbers[1]),
                                                                 std::to_string(line.numbers[2])};
    } else if (profile.tag() == 2) {
      protozero::pbf_reader sample = profile.get_message();
      Require(sample.next(1), "a sample has a location");
      const auto& place = places.at(*sample.get_packed_uint64().begin());
      Require(sample.next(2), "a sample has a value");
      Add(sums, place.first, place.second, static_cast<double>(*sample.get_packed_int64().begin()));
    } else {
      profile.skip();
    }
  }
  return sums;
}

ReadSums ReadSpeedscope(std::string_view text) {
  const json file = json::parse(text);
  const json& frames = file.at("shared").at("frames");
  const json& ticks = file.at("profiles").at(0);
  Require(ticks.at("samples").size() == ticks.at("weights").size(), "samples have weights");
  ReadSums sums;
  for (std::size_t n = 0; n < ticks["samples"].size(); ++n) {
    const json& sample = ticks["samples"][n];
    const auto frame = [&](std::size_t at) -> std::string {
      return frames.at(sample.at(at).get<std::size_t>()).at("name");
    };
    Add(sums, frame(0), frame(1), ticks["weights"][n]);
  }
  for (std::size_t n = 1; n < file["profiles"].size(); ++n) {
    std::vector<int> open;
    double now = file["profiles"][n]["startValue"];
    for (const json& event : file["profiles"][n]["events"]) {
      Require(event["at"] >= now, "time goes on");
      now = event["at"];
      if (event["type"] == "O") {
        open.push_back(event["frame"]);
      } else {
        Require(!open.empty() && open.back() == event["frame"], "commands nest");
        open.pop_back();
      }
    }
    Require(open.empty(), "commands end");
  }
  return sums;
}

void ReadJson(std::string_view text) { Require(json::accept(text), "it is JSON"); }

void ReadCsv(std::string_view text) {
  Require(companion::IsUtf8(text), "text is UTF-8");
  std::size_t columns = 0;
  std::size_t fields = 1;
  bool is_quoted = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '"') {
      is_quoted = !is_quoted;
    } else if (!is_quoted && text[at] == ',') {
      ++fields;
    } else if (!is_quoted && text[at] == '\r') {
      Require(at + 1 < text.size() && text[++at] == '\n', "a row ends with CR LF");
      Require(columns == 0 || columns == fields, "rows are alike");
      columns = fields;
      fields = 1;
    }
  }
  Require(!is_quoted && text.ends_with("\r\n"), "the last row ends");
}

}  // namespace ptick::fuzz
