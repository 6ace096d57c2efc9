#include "profile/ticks/tick_part.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace ptick {

void TickPart::EndRun(std::uint32_t run) {
  marks_.EndRun(run, table_.small_);
  const End end{run, table_.programs_.size(), table_.large_.size(), table_.irregular_.size()};
  const bool has_grown = ends_.empty() || ends_.back().programs != end.programs ||
                         ends_.back().large != end.large || ends_.back().irregular != end.irregular;
  if (has_grown) {
    ends_.push_back(end);
  }
}

/// One join.
class TickJoin {
 public:
  TickJoin(TickTable& table, std::vector<TickPart>&& parts)
      : table_(table), parts_(std::move(parts)), joined_(parts_.size()) {}

  void Join();

 private:
  /// What a run adds to a part, besides what is in its buckets.
  struct Run {
    std::size_t part;
    TickPart::End begin;
    TickPart::End end;
  };

  std::vector<Run> Runs() const;
  void JoinPrograms(const Run& run);
  void JoinEntries(const Run& run);
  void JoinExactTexts();
  void JoinBuckets();

  TickTable& table_;
  std::vector<TickPart> parts_;
  std::vector<BucketPart> joined_;
};

void TickJoin::Join() {
  JoinExactTexts();
  for (const Run& run : Runs()) {
    JoinPrograms(run);
    JoinEntries(run);
  }
  JoinBuckets();
}

// In their order.
std::vector<TickJoin::Run> TickJoin::Runs() const {
  std::vector<Run> runs;
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    TickPart::End begin{};
    for (const TickPart::End& end : parts_[part].ends_) {
      runs.push_back({part, std::exchange(begin, end), end});
    }
  }
  std::ranges::sort(runs, {}, [](const Run& run) { return run.end.run; });
  return runs;
}

// A name that a part meets first in a run was in none of its runs before.
void TickJoin::JoinPrograms(const Run& run) {
  const NameTable& names = parts_[run.part].table_.programs_;
  for (std::size_t name = run.begin.programs; name < run.end.programs; ++name) {
    joined_[run.part].programs.push_back(
        table_.programs_.Intern(names[static_cast<NameTable::Id>(name)]));
  }
}

void TickJoin::JoinEntries(const Run& run) {
  const TickTable& from = parts_[run.part].table_;
  const BucketPart& part = joined_[run.part];
  for (std::size_t place = run.begin.large; place < run.end.large; ++place) {
    const TickEntry& entry = from.large_[place];
    table_.large_.Add(part.EntryOf({entry.program, entry.line}, entry.ticks));
  }
  for (std::size_t place = run.begin.irregular; place < run.end.irregular; ++place) {
    const auto& [ticks, entry] = from.irregular_[place];
    table_.irregular_.push_back({ticks, part.EntryOf({entry.program, entry.line}, entry.ticks)});
  }
}

void TickJoin::JoinExactTexts() {
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    TickTable& from = parts_[part].table_;
    joined_[part].exact_texts_before = static_cast<std::uint32_t>(table_.exact_lines_.size());
    for (std::size_t text = 0; text < from.exact_lines_.size(); ++text) {
      table_.exact_lines_.Append(from.exact_lines_[text]);
      table_.exact_ticks_.Append(from.exact_ticks_[text]);
    }
    from.exact_lines_ = {};
    from.exact_ticks_ = {};
  }
}

// The table's own buckets are one more part, with its one run.
void TickJoin::JoinBuckets() {
  BucketPart own;
  own.programs.resize(table_.programs_.size());
  std::iota(own.programs.begin(), own.programs.end(), NameTable::Id{0});
  own.marks.EndRun(0, table_.small_);
  own.buckets = std::exchange(table_.small_, {});
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    joined_[part].buckets = std::move(parts_[part].table_.small_);
    joined_[part].marks = std::move(parts_[part].marks_);
  }
  joined_.push_back(std::move(own));
  table_.parts_ = std::move(joined_);
}

void JoinTicks(TickTable& table, std::vector<TickPart>&& parts) {
  TickJoin(table, std::move(parts)).Join();
}

}  // namespace ptick
