#include "ptick_export/formats/pprof.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>
#include <map>
#include <protozero/pbf_reader.hpp>
#include <string>
#include <vector>

#include "ptick_export/support/exported.h"

namespace ptick::exports {

namespace {

using protozero::pbf_reader;
using testing::Export;
using testing::Exported;

std::string Unzipped(const std::string& zipped) {
  z_stream stream = {};
  EXPECT_EQ(::inflateInit2(&stream, 15 + 16), Z_OK);
  std::string in = zipped;
  std::string out(std::size_t{1} << 20U, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(in.data());  // NOLINT(*-reinterpret-cast)
  stream.avail_in = static_cast<uInt>(in.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());  // NOLINT(*-reinterpret-cast)
  stream.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(::inflate(&stream, Z_FINISH), Z_STREAM_END);
  EXPECT_EQ(stream.avail_in, 0U);
  out.resize(stream.total_out);
  ::inflateEnd(&stream);
  return out;
}

/// A profile as its readers see it.
struct Read {
  std::vector<std::string> texts;
  std::vector<std::string> functions;  ///< "NAME in FILE", by id
  std::vector<std::string> places;     ///< "NAME:LINE", by id
  std::vector<std::string> samples;    ///< "PLACE=TICKS"
  std::vector<std::string> comments;
  std::map<protozero::pbf_tag_type, std::int64_t> numbers;
};

Read ReadBack(const std::string& zipped) {
  const std::string bytes = Unzipped(zipped);
  Read read;
  // What refers to texts comes before or after them: they are read first.
  for (pbf_reader profile(bytes); profile.next();) {
    if (profile.tag() == 6) {
      read.texts.push_back(profile.get_string());
    } else {
      profile.skip();
    }
  }
  const auto text = [&read](std::int64_t id) {
    return read.texts.at(static_cast<std::size_t>(id));
  };
  std::vector<std::string> names;
  for (pbf_reader profile(bytes); profile.next();) {
    switch (profile.tag()) {
      case 2: {
        pbf_reader sample = profile.get_message();
        EXPECT_TRUE(sample.next(1));
        const auto place = *sample.get_packed_uint64().begin();
        EXPECT_TRUE(sample.next(2));
        read.samples.push_back(read.places.at(place - 1) + "=" +
                               std::to_string(*sample.get_packed_int64().begin()));
        break;
      }
      case 4: {
        pbf_reader location = profile.get_message();
        EXPECT_TRUE(location.next(1));
        EXPECT_EQ(location.get_uint64(), read.places.size() + 1);
        EXPECT_TRUE(location.next(4));
        pbf_reader line = location.get_message();
        EXPECT_TRUE(line.next(1));
        const std::string name = names.at(line.get_uint64() - 1);
        EXPECT_TRUE(line.next(2));
        read.places.push_back(name + ":" + std::to_string(line.get_int64()));
        break;
      }
      case 5: {
        pbf_reader function = profile.get_message();
        EXPECT_TRUE(function.next(1));
        EXPECT_EQ(function.get_uint64(), names.size() + 1);
        EXPECT_TRUE(function.next(2));
        names.push_back(text(function.get_int64()));
        EXPECT_TRUE(function.next(4));
        read.functions.push_back(names.back() + " in " + text(function.get_int64()));
        break;
      }
      case 13:
        read.comments.push_back(text(profile.get_int64()));
        break;
      case 9:
      case 10: {
        const protozero::pbf_tag_type tag = profile.tag();
        read.numbers[tag] = profile.get_int64();
        break;
      }
      default:
        profile.skip();
    }
  }
  return read;
}

using Strings = std::vector<std::string>;

TEST(Pprof, HoldsALocationForEachLine) {
  const Exported exported =
      Export(WritePprof,
             {"program|MENU|x", "starttime|1773043331", "endtime|1773043341", "trace|A|7|5",
              "trace|B|x|30", "trace|A|7|2", "trace|A|9|1000000"},
             {"B"});
  const Read read = ReadBack(exported.text);
  EXPECT_EQ(read.texts.front(), "");
  EXPECT_EQ(read.functions, (Strings{"A in A", "B in src/B"}));
  EXPECT_EQ(read.samples, (Strings{"A:7=7", "A:9=1000000", "B:0=30"}));
  EXPECT_EQ(read.comments, Strings{"MENU x"});
  EXPECT_EQ(read.numbers.at(9), 1773043331'000'000'000);
  EXPECT_EQ(read.numbers.at(10), 10'000'000'000);
  EXPECT_EQ(exported.told, Strings{"run1: 1 trace record has a line that is no number and becomes "
                                   "line 0, 30 ticks in all"});
}

TEST(Pprof, SaysWhatIsCut) {
  const Exported exported = Export(WritePprof, {"trace|A|7|5.5", "trace|A|8|0.5"});
  const Read read = ReadBack(exported.text);
  EXPECT_EQ(read.samples, Strings{"A:7=5"});
  EXPECT_EQ(read.comments,
            Strings{"1 line has fractions of a tick, which are cut, 0.5 ticks in all"});
  EXPECT_EQ(read.numbers.size(), 0U);
  EXPECT_EQ(exported.told.size(), 2U);
}

TEST(Pprof, KeepsNamesApart) {
  const Read read = ReadBack(
      Export(WritePprof, "PROFILE:trace\t\xE9\t1\t4\nPROFILE:trace\t\xC3\xA9\t1\t3\n").text);
  EXPECT_EQ(read.samples, (Strings{"\xC3\xA9:1=4", "\xC3\xA9 (Latin-1):1=3"}));
}

TEST(Pprof, IsAProfileWithoutSamplesForAnEmptyOne) {
  const Read read = ReadBack(Export(WritePprof, "").text);
  EXPECT_EQ(read.samples, Strings());
  EXPECT_EQ(read.texts.front(), "");
}

TEST(Pprof, IsTheSameBytesEachTime) {
  const std::string profile = "PROFILE:trace\tA\t1\t4\nPROFILE:trace\tB\t1\t3\n";
  EXPECT_EQ(Export(WritePprof, profile).text, Export(WritePprof, profile).text);
}

}  // namespace

}  // namespace ptick::exports
