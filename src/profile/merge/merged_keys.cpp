#include "profile/merge/merged_keys.h"

#include <algorithm>
#include <utility>

namespace ptick {

void MergedKey::AppendLine(std::string& out) const {
  out += kProfilePrefix;
  values->Keys().AppendText(key, out);
  out += '\t';
  values->AppendText(key, out);
  out += '\n';
}

MergedKeys::MergedKeys(MergeValues&& values) {
  parts_.emplace_back(std::move(values));
  parts_.front().EndLookups();
}

MergedKeys::MergedKeys(std::vector<MergePart>&& parts) : parts_(std::move(parts)) {
  for (MergePart& part : parts_) {
    part.EndLookups();
  }
}

std::size_t MergedKeys::CountBefore(std::size_t lot) const {
  std::size_t count = 0;
  for (const MergePart& part : parts_) {
    count += lot == 0 ? 0 : part.EndOfLot(lot - 1);
  }
  return count;
}

MergedKeys::Walk::Walk(const MergedKeys& keys, std::size_t begin_lot, std::size_t end_lot)
    : parts_(&keys.parts_), lot_(begin_lot), end_lot_(end_lot), rests_(keys.parts_.size()) {
  for (std::size_t part = 0; part < rests_.size() && lot_ > 0; ++part) {
    rests_[part].end = (*parts_)[part].EndOfLot(lot_ - 1);
  }
  StartLot();
}

// What a lot has of a part begins where the lot before has ended.
void MergedKeys::Walk::StartLot() {
  if (lot_ == end_lot_) {
    return;
  }
  for (std::size_t part = 0; part < rests_.size(); ++part) {
    rests_[part].next = std::exchange(rests_[part].end, (*parts_)[part].EndOfLot(lot_));
    FindPlace(part);
  }
}

void MergedKeys::Walk::FindPlace(std::size_t part) {
  Rest& rest = rests_[part];
  rest.place = rest.next == rest.end ? kNowhere : (*parts_)[part].PlaceOf(rest.next);
}

MergedKey MergedKeys::Walk::Next() {
  for (; lot_ < end_lot_; ++lot_, StartLot()) {
    const auto first = std::ranges::min_element(rests_, {}, &Rest::place);
    if (first->place == kNowhere) {
      continue;
    }
    const auto part = static_cast<std::size_t>(first - rests_.begin());
    const MergeKeys::Id key = first->next++;
    FindPlace(part);
    return {&(*parts_)[part].Values(), part, key};
  }
  return {};
}

}  // namespace ptick
