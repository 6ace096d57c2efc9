#include "support/memory_platform.h"

#include <algorithm>

namespace ptick {
namespace {

std::nullptr_t NotThere(int* error) {
  if (error != nullptr) {
    *error = ENOENT;
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
    const std::size_t end = std::min(fails_after_.value_or(text_.size()), text_.size());
    const std::size_t count = std::min({block.size(), block_size_, end - position_});
    std::copy_n(text_.begin() + static_cast<std::ptrdiff_t>(position_), count, block.begin());
    position_ += count;
    return count;
  }

  bool CanBeReadAgain() const override { return !is_pipe_; }

 private:
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
    platform_.reads.emplace_back(name_, name);
    const MemoryPlatform::Directory& directory = platform_.files[name_];
    const auto found = directory.find(name);
    if (found == directory.end()) {
      return NotThere(error);
    }
    return std::make_unique<MemoryReader>(found->second, platform_.block_size);
  }

 private:
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
    return NotThere(error);
  }
  return std::make_unique<MemoryFile>(*this, std::string(name));
}

int MemoryPlatform::Write(Stream stream, std::string_view bytes) {
  const bool to_output = stream == Stream::kOutput;
  if (const int error = to_output ? output_error : terminal_error; error != 0) {
    return error;
  }
  (to_output ? printed : on_terminal) += bytes;
  if (transcript.empty() || transcript.back().first != stream) {
    transcript.emplace_back(stream, "");
  }
  transcript.back().second += bytes;
  return 0;
}

bool MemoryPlatform::IsTerminal(Stream stream) {
  return stream == Stream::kOutput ? output_is_terminal : terminal_is_terminal;
}

std::optional<char> MemoryPlatform::ReadKey() {
  ++keys_asked_for;
  if (keys.empty()) {
    return std::nullopt;
  }
  const char key = keys.front();
  keys.pop_front();
  return key;
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

int MemoryPlatform::SendPortMessage(std::int64_t port, std::string_view text) {
  port_messages.push_back({.port = port, .text = std::string(text)});
  return PortError(port);
}

int MemoryPlatform::MonitorOn(std::int64_t port, std::string_view file, std::string_view options) {
  monitor_calls.push_back(
      {.on = true, .port = port, .file = std::string(file), .options = std::string(options)});
  return PortError(port);
}

int MemoryPlatform::MonitorOff(std::int64_t port) {
  monitor_calls.push_back({.on = false, .port = port});
  return PortError(port);
}

std::vector<std::int64_t> MemoryPlatform::ListeningPorts(std::int64_t first, std::int64_t last) {
  if (first > last) {
    return {};
  }
  return {listening.lower_bound(first), listening.upper_bound(last)};
}

int MemoryPlatform::PortError(std::int64_t port) const {
  const auto found = port_errors.find(port);
  return found == port_errors.end() ? ENOENT : found->second;
}

}  // namespace ptick
