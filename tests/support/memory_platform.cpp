#include "support/memory_platform.h"

#include <algorithm>

namespace ptick {
namespace {

class MemoryReader final : public RecordReader {
 public:
  MemoryReader(const MemoryPlatform::Record& record, std::size_t block_size)
      : text_(record.Text), fails_after_(record.FailsAfter), block_size_(block_size) {}

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

 private:
  std::string text_;
  std::optional<std::size_t> fails_after_;
  std::size_t block_size_;
  std::size_t position_ = 0;
};

class MemoryFile final : public RecordFile {
 public:
  MemoryFile(MemoryPlatform& platform, std::string name)
      : platform_(platform), name_(std::move(name)) {}

  std::unique_ptr<RecordReader> OpenRecord(std::string_view name) override {
    platform_.Reads.emplace_back(name_, name);
    const MemoryPlatform::Directory& directory = platform_.Files[name_];
    const auto found = directory.find(name);
    if (found == directory.end()) {
      return nullptr;
    }
    return std::make_unique<MemoryReader>(found->second, platform_.BlockSize);
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

std::unique_ptr<RecordFile> MemoryPlatform::OpenFile(std::string_view name) {
  OpenedFiles.emplace_back(name);
  if (Files.find(name) == Files.end()) {
    return nullptr;
  }
  return std::make_unique<MemoryFile>(*this, std::string(name));
}

int MemoryPlatform::Write(Stream stream, std::string_view bytes) {
  const bool to_output = stream == Stream::kOutput;
  if (const int error = to_output ? OutputError : TerminalError; error != 0) {
    return error;
  }
  (to_output ? Output : Terminal) += bytes;
  if (Transcript.empty() || Transcript.back().first != stream) {
    Transcript.emplace_back(stream, "");
  }
  Transcript.back().second += bytes;
  return 0;
}

bool MemoryPlatform::IsTerminal(Stream stream) {
  return stream == Stream::kOutput ? OutputIsTerminal : TerminalIsTerminal;
}

std::optional<char> MemoryPlatform::ReadKey() {
  ++KeysAskedFor;
  if (Keys.empty()) {
    return std::nullopt;
  }
  const char key = Keys.front();
  Keys.pop_front();
  return key;
}

void MemoryPlatform::CaptureFirstLines(const std::vector<std::vector<std::string>>& commands,
                                       const std::function<void(std::string_view)>& done) {
  for (const std::vector<std::string>& command : commands) {
    Commands.push_back(command);
    const auto found = CommandOutputs.find(JoinWords(command));
    const std::string_view output =
        found == CommandOutputs.end() ? std::string_view() : std::string_view(found->second);
    done(output.substr(0, output.find('\n')));
  }
}

int MemoryPlatform::RunShell(const std::string& command_line, std::string_view input) {
  ShellRuns.push_back({.CommandLine = command_line, .Input = std::string(input)});
  return ShellStatus;
}

int MemoryPlatform::SendPortMessage(std::int64_t port, std::string_view text) {
  PortMessages.push_back({.Port = port, .Text = std::string(text)});
  return PortError(port);
}

int MemoryPlatform::MonitorOn(std::int64_t port, std::string_view file, std::string_view options) {
  MonitorCalls.push_back(
      {.On = true, .Port = port, .File = std::string(file), .Options = std::string(options)});
  return PortError(port);
}

int MemoryPlatform::MonitorOff(std::int64_t port) {
  MonitorCalls.push_back({.On = false, .Port = port});
  return PortError(port);
}

std::vector<std::int64_t> MemoryPlatform::ListeningPorts(std::int64_t first, std::int64_t last) {
  if (first > last) {
    return {};
  }
  return {Listening.lower_bound(first), Listening.upper_bound(last)};
}

int MemoryPlatform::PortError(std::int64_t port) const {
  const auto found = PortErrors.find(port);
  return found == PortErrors.end() ? ENOENT : found->second;
}

}  // namespace ptick
