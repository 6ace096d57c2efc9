#include "ptick_merge/name_list.h"

#include <algorithm>
#include <memory>
#include <span>

#include "companion/problem.h"
#include "platform/record_file.h"

namespace ptick::companion {

namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;

std::string ReadText(const std::string& list, const InputOpener& open) {
  const std::unique_ptr<RecordReader> reader = open(list);
  std::string text;
  for (std::size_t used = 0;;) {
    text.resize(std::max(used + kBlock, std::min(text.capacity(), 2 * text.size())));
    const std::optional<std::size_t> size = reader->Read(std::span(text).subspan(used));
    if (!size) {
      throw Trouble(InputName(list), reader->Error());
    }
    used += *size;
    if (*size == 0) {
      text.resize(used);
      return text;
    }
  }
}

Trouble ListTrouble(const std::string& list, const std::string& reason) {
  return Trouble({.file = InputName(list), .line = std::nullopt, .reason = reason});
}

}  // namespace

NameList::NameList(const std::string& list, NameEnd end, const InputOpener& open)
    : text_(ReadText(list, open)), end_(static_cast<char>(end)) {
  if (!text_.empty() && text_.back() != end_) {
    text_ += end_;
  }
  if (end == NameEnd::kLineEnd) {
    DropEmptyLines();
  }
  text_.shrink_to_fit();
  CheckNames(list);
}

void NameList::DropEmptyLines() {
  char before = end_;
  std::erase_if(text_, [&](char c) {
    const bool is_dropped = c == end_ && before == end_;
    before = c;
    return is_dropped;
  });
}

void NameList::CheckNames(const std::string& list) {
  Walk walk(*this);
  while (const std::optional<std::string> name = walk.Next()) {
    ++size_;
    if (name->empty()) {
      throw ListTrouble(list, "name " + std::to_string(size_) + " is empty");
    }
    if (*name == "-" && list == "-") {
      throw ListTrouble(list, "'-' cannot be a profile where the names come from there");
    }
  }
  if (size_ == 0) {
    throw ListTrouble(list, "names no profile");
  }
}

void NameList::Add(std::string_view name) {
  text_ += name;
  text_ += end_;
  ++size_;
}

std::optional<std::string> NameList::Walk::Next() {
  if (rest_.empty()) {
    return std::nullopt;
  }
  const std::size_t size = rest_.find(end_);
  std::string name(rest_.substr(0, size));
  rest_.remove_prefix(size + 1);
  return name;
}

}  // namespace ptick::companion
