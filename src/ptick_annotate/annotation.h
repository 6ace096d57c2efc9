// The listing of ptick-annotate.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "companion/distinct_texts.h"
#include "companion/inputs/source_folders.h"
#include "companion/text_writer.h"
#include "figures/running_sum.h"
#include "profile/tables/profile_tables.h"
#include "profile/ticks/ordered_ticks.h"
#include "ptick_annotate/line_ticks.h"
#include "ptick_annotate/shares.h"
#include "ptick_annotate/source_excerpt.h"

namespace ptick::companion {

struct AnnotationOptions {
  ExcerptOptions excerpt;
  /// Those that are shown; all when there is none.
  std::vector<std::string> programs;
};

/// Prints the programs of a profile, the hungriest first, each with its source and the ticks of its
/// lines; then what could not be shown so. All ticks of all entries are told once: as annotated, as
/// without source, as of lines that their source does not have, or as not asked for.
class Annotation {
 public:
  /// Takes the entries out of the tables. All that is given must outlive this.
  Annotation(ProfileTables& tables, const SourceFolders& folders, const AnnotationOptions& options,
             TextWriter& writer);

  /// Prints all of it.
  void Print();

  /// The programs asked for that have no ticks in the profile.
  std::vector<std::string> ProgramsNotThere() const;

 private:
  /// Ticks of a program, or of a line of it, that are told at the end.
  struct Rest {
    std::string_view program;
    std::string line;
    Value ticks;
  };

  bool IsAskedFor(std::string_view program) const;
  void PrintHead();
  void PrintProgram(std::size_t row);
  void PrintListed(std::string_view program, const ProgramTicks& ticks,
                   const SourceExcerpt& excerpt);
  void PrintEnd();
  void PrintWithoutSource();
  void PrintNotInSource();
  /// "12 ticks, 0.5 %".
  std::string Amount(const Value& ticks) const;

  const ProfileTables& tables_;
  RunningSum all_;
  OrderedTicks ticks_;
  const SourceFolders& folders_;
  const AnnotationOptions& options_;
  TextWriter& writer_;

  bool has_total_;
  Shares shares_;
  DistinctTexts names_;

  RunningSum annotated_;
  RunningSum not_asked_for_;
  std::uint64_t programs_not_asked_for_ = 0;
  RunningSum without_source_;
  std::vector<Rest> programs_without_source_;
  RunningSum not_in_source_;
  std::vector<Rest> lines_not_in_source_;
};

}  // namespace ptick::companion
