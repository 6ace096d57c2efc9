#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "profile/ticks/name_table.h"
#include "records/record_text.h"
#include "reports/report_options.h"
#include "value/mask.h"

namespace ptick {

/// Finds the text of source lines in the open source files. The first file, in command-line order,
/// that has the line of the program supplies it. A program's record is read from a file once, when
/// a row first asks for it there, and kept.
class SourceLookup {
 public:
  /// `source_mask` fits the text to its column. The files must outlive the lookup.
  SourceLookup(const std::vector<SourceFile>& files, Mask source_mask);

  /// The text of source line `line` of program `name`: TABs and runs of blanks made one blank,
  /// fitted to the column, no trailing blanks. "??" when no file has the line, or `line` is not a
  /// number written in digits.
  std::string FetchSourceLine(std::string_view name, std::string_view line);
  std::string FetchSourceLine(std::string_view name, std::size_t line);

 private:
  const RecordText& RecordOf(NameTable::Id program, std::size_t file);

  const std::vector<SourceFile>& files_;
  Mask source_mask_;
  NameTable programs_;
  std::vector<std::vector<RecordText>> records_;  ///< per program, those of the files tried so far
};

}  // namespace ptick
