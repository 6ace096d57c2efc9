#include "support/memory_platform.h"

#include <algorithm>

namespace ptick {

namespace {

std::nullptr_t Refuse(int reason, int* error) {
  if (error != nullptr) {
    *error = reason;
  }
  return nullptr;
}

class MemoryReader final : public RecordReader {
 public:
  MemoryReader(const MemoryPlatform::Record& record, std::size_t block_size)
      : text_(record.text),
        fails_after_(record.fails_after),
        is_pipe_(record.is_pipe),
        block_size_(block_size) {}

  std::optional<std::size_t> Read(std::span<char> block) override {
    if (fails_after_ && position_ >= *fails_after_) {
      return std::nullopt;
    }
    const std::size_t count = Copy(position_, block);
    position_ += count;
    return count;
  }

  std::optional<std::uint64_t> Size() const override {
    return is_pipe_ ? std::nullopt : std::optional<std::uint64_t>(text_.size());
  }

  std::optional<std::size_t> ReadAt(std::uint64_t place, std::span<char> block,
                                    int& error) const override {
    if (fails_after_ && place >= *fails_after_) {
      error = EIO;
      return std::nullopt;
    }
    return Copy(static_cast<std::size_t>(place), block);
  }

  bool CanBeReadAgain() const override { return !is_pipe_; }

 private:
  // Returns how many bytes one read gives at a place.
  std::size_t Copy(std::size_t place, std::span<char> block) const {
    const std::size_t end = std::min(fails_after_.value_or(text_.size()), text_.size());
    const std::size_t count = std::min({block.size(), block_size_, end - std::min(place, end)});
    std::copy_n(text_.begin() + static_cast<std::ptrdiff_t>(std::min(place, end)), count,
                block.begin());
    return count;
  }

  std::string text_;
  std::optional<std::size_t> fails_after_;
  bool is_pipe_;
  std::size_t block_size_;
  std::size_t position_ = 0;
};

class MemoryFile final : public RecordFile {
 public:
  MemoryFile(MemoryPlatform& platform, std::string name)
      : platform_(platform), name_(std::move(name)) {}

  std::unique_ptr<RecordReader> OpenRecord(std::string_view name, int* error) override {
    const MemoryPlatform::Record* const record = Find(name);
    return record == nullptr ? Refuse(ENOENT, error) : ReaderOf(*record);
  }

  std::unique_ptr<RecordReader> OpenRegularRecord(std::string_view name, int* error) override {
    const MemoryPlatform::Record* const record = Find(name);
    if (record == nullptr) {
      return Refuse(ENOENT, error);
    }
    return record->is_pipe ? Refuse(EINVAL, error) : ReaderOf(*record);
  }

 private:
  const MemoryPlatform::Record* Find(std::string_view name) {
    platform_.reads.emplace_back(name_, name);
    const MemoryPlatform::Directory& directory = platform_.files[name_];
    const auto found = directory.find(name);
    return found == directory.end() ? nullptr : &found->second;
  }

  std::unique_ptr<RecordReader> ReaderOf(const MemoryPlatform::Record& record) const {
    return std::make_unique<MemoryReader>(record, platform_.block_size);
  }

  MemoryPlatform& platform_;
  std::string name_;
};

std::string JoinWords(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) {
    line += line.empty() ? word : " " + word;
  }
  return line;
}

}  // namespace

std::unique_ptr<RecordFile> MemoryPlatform::OpenFile(std::string_view name, int* error) {
  opened_files.emplace_back(name);
  if (files.find(name) == files.end()) {
    return Refuse(ENOENT, error);
  }
  return std::make_unique<MemoryFile>(*this, std::string(name));
}

FirstLines MemoryPlatform::CaptureFirstLines(
    const std::vector<std::vector<std::string>>& commands) {
  FirstLines first_lines;
  for (const std::vector<std::string>& command : commands) {
    commands_run.push_back(command);
    const std::string words = JoinWords(command);
    const auto error = command_errors.find(words);
    if (first_lines.error == 0 && error != command_errors.end()) {
      first_lines.error = error->second;
    }
    const auto output = command_outputs.find(words);
    const std::string text = output == command_outputs.end() ? "" : output->second;
    first_lines.lines.push_back(text.substr(0, text.find_first_of("\n\xfe")));
  }
  return first_lines;
}

int MemoryPlatform::RunShell(const std::string& command_line, std::string_view input) {
  shell_runs.push_back({.command_line = command_line, .input = std::string(input)});
  return shell_status;
}

}  // namespace ptick
