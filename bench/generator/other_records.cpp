#include "generator/other_records.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace ptick::bench {

namespace {

constexpr std::uint64_t kStartTime = 1'773'043'331;
constexpr std::uint64_t kHertz = 100;

constexpr std::array<std::string_view, 8> kTypedTexts = {
    "",        "K-1140",    "Mrs Dahl, phone", "250",
    "SEAL-08", "~ \"Y\" ~", "size\t12\tM",     "pallet of 40, see note from Thursday",
};
constexpr std::array<std::string_view, 8> kCommands = {
    "SELECT ORDERS WITH CUST = ",
    "LIST STOCK WITH BIN = ",
    "SPOOL ACK NORTH",
    "COUNT INVOICES WITH NO = ",
    "SORT * BY QTY WITH ",
    "TERM DESK ",
    "COPY ORDERS TO ARCHIVE ",
    "ED NOTES ",
};
constexpr std::array<std::string_view, 3> kPerformTypes = {"prog", "qry", "intr"};

template <std::size_t size>
std::string_view AnyOf(const std::array<std::string_view, size>& texts, Random& random) {
  return texts.at(random.Below(static_cast<std::uint32_t>(size)));
}

}  // namespace

const std::string& OtherRecords::AnyProgram() {
  return programs_[random_.Below(static_cast<std::uint32_t>(programs_.size()))];
}

void OtherRecords::PutHeader(std::string_view type, std::uint64_t value) {
  file_.Put("PROFILE:").Put(type).Put("\t").Put(value).Put("\n");
}

void OtherRecords::PutHead() {
  file_.Put("# order desk NORTH, branch server\nPROFILE:program\tORDER.DESK NORTH 4 -JP\n");
  PutHeader("portno", 14U);
  PutHeader("pid", 23817U);
  PutHeader("ppid", 23790U);
  PutHeader("hertz", kHertz);
  PutHeader("pagesize", 4096U);
  PutHeader("starttime", kStartTime);
  PutHeader("startclock", clock_);
  file_.Put("PROFILE:shared_object\tmain()\t1\n");
}

void OtherRecords::PutSubroutineCall() {
  file_.Put("PROFILE:subroutine_call\t").Put(AnyProgram()).Put(" ").Put(AnyProgram());
  file_.Put("\t").Put(random_.Zipf()).Put("\n");
}

void OtherRecords::PutSharedObject() {
  file_.Put("PROFILE:shared_object\t/opt/mavro/lib/").Put(AnyProgram()).Put(".so\t1\n");
}

void OtherRecords::PutInput() {
  constexpr std::array<std::string_view, 8> kTerminators = {"13", "13", "13", "13",
                                                            "10", "9",  "27", "0"};
  const std::string_view text = AnyOf(kTypedTexts, random_);
  file_.Put("PROFILE:input\t").Put(AnyOf(kTerminators, random_)).Put("\t").Put(text.size());
  file_.Put("\t").Put(clock_ += 1U + random_.Below(300));
  file_.Put("\t").Put(clock_ += 1U + random_.Below(100));
  file_.Put("\t").Put(text).Put("\n");
  ++inputs_;
}

void OtherRecords::PutPerform() {
  const std::uint64_t start = clock_ + random_.Below(50);
  const std::uint32_t user = random_.Below(200);
  const std::uint32_t system = random_.Below(50);
  clock_ = start + user + system + 2;
  file_.Put("PROFILE:perform\tstartclock\t").Put(start).Put("\tendclock\t").Put(clock_);
  file_.Put("\tstarttime\t").Put(kStartTime + start / kHertz);
  file_.Put("\tendtime\t").Put(kStartTime + clock_ / kHertz);
  file_.Put("\tticks\t").Put(user + system).Put("\tusrcpu\t").Put(user);
  file_.Put("\tsyscpu\t").Put(system).Put("\ttype\t").Put(AnyOf(kPerformTypes, random_));
  file_.Put("\tcmd\t").Put(AnyOf(kCommands, random_)).Put(1000 + random_.Below(5000)).Put("\n");
}

void OtherRecords::PutAny() {
  switch (random_.Below(6)) {
    case 0:
      return PutSubroutineCall();
    case 1:
      return PutInput();
    case 2:
      return PutPerform();
    case 3:
      return PutSharedObject();
    case 4:
      file_.Put("PROFILE:user_ticks\t").Put(1 + random_.Below(10));
      file_.Put("\t").Put(random_.Zipf()).Put("\n");
      return;
    default:
      file_.Put("order desk NORTH: message from desk ").Put(random_.Below(10)).Put("\n");
  }
}

void OtherRecords::PutTail(std::uint64_t ticks) {
  PutHeader("endtime", kStartTime + clock_ / kHertz);
  PutHeader("endclock", clock_);
  PutHeader("ticks", ticks);
  PutHeader("usrcpu", ticks / 2);
  PutHeader("syscpu", ticks / 3);
  PutHeader("memused", 31'457'280U);
  PutHeader("memfree", 6'291'456U);
  PutHeader("read_count", ticks / 4);
  PutHeader("write_count", ticks / 5);
  PutHeader("open_count", 25U);
  PutHeader("input_count", inputs_);
  file_.Put("PROFILE:typerate\t445\t7655\n");
  file_.Put("PROFILE:resource\t11342\t10876\t20418\t37\t0\t5176\t20864\t0\t0\t3\t1917\t24410\n");
}

}  // namespace ptick::bench
