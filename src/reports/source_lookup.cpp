#include "reports/source_lookup.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "value/text.h"

namespace ptick {

namespace {

constexpr std::string_view kNotFound = "??";

// The field that a line number written in digits names; nothing for any other text and for numbers
// that no record reaches.
std::optional<std::size_t> FieldNumber(std::string_view line) {
  std::size_t number = 0;
  const char* const end = line.data() + line.size();
  const auto [stop, error] = std::from_chars(line.data(), end, number);
  if (error != std::errc() || stop != end) {
    return std::nullopt;
  }
  return number;
}

}  // namespace

SourceLookup::SourceLookup(const std::vector<SourceFile>& files, Mask source_mask)
    : files_(files), source_mask_(source_mask) {}

std::string SourceLookup::FetchSourceLine(std::string_view name, std::string_view line) {
  const std::optional<std::size_t> number = FieldNumber(line);
  return FetchSourceLine(name, number.value_or(0));
}

std::string SourceLookup::FetchSourceLine(std::string_view name, std::size_t line) {
  const NameTable::Id program = programs_.Intern(name);
  records_.resize(programs_.size());
  std::string text(kNotFound);
  for (std::size_t file = 0; file < files_.size(); ++file) {
    if (const std::optional<std::string_view> field = RecordOf(program, file).ReadField(line)) {
      text = Trim(Change(*field, "\t", " "));
      break;
    }
  }
  return std::string(TrimTrailing(source_mask_.Format(text)));
}

// Files are tried in order, so the records of a program come in that order, too.
const RecordText& SourceLookup::RecordOf(NameTable::Id program, std::size_t file) {
  std::vector<RecordText>& records = records_[program];
  if (file == records.size()) {
    const std::string_view name = programs_[program];
    records.push_back(ReadRecordText(*files_[file].file, name).value_or(RecordText()));
  }
  return records[file];
}

}  // namespace ptick
