#include "companion/linux/result_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <system_error>

#include "companion/linux/terminal.h"
#include "companion/problem.h"
#include "companion/terminal_text.h"
#include "platform/linux/write_all.h"

namespace ptick::companion {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 16;
constexpr mode_t kNewFileMode = 0666;

}  // namespace

ResultFile::ResultFile(const std::optional<std::string>& file, ResultKind kind,
                       std::string_view program, StatusLine& status_line)
    : name_(file && *file != "-" ? *file : "standard output"), status_line_(status_line) {
  if (file && *file != "-") {
    Open(*file, program);
  }
  is_on_terminal_ = IsTerminal(Descriptor());
  if (is_on_terminal_ && kind == ResultKind::kBytes) {
    throw Trouble({.file = name_,
                   .line = std::nullopt,
                   .reason = "is a terminal, and the result is no text; use -o FILE or a pipe"});
  }
  buffer_.reserve(2 * kBufferSize);
}

void ResultFile::Open(const std::string& file, std::string_view program) {
  try {
    place_ = FindResultPlace(file);
    if (place_.replaced) {
      const std::optional<struct stat>& old = place_.replaced->old;
      // Nobody may read it who may not read the old one.
      temporary_ =
          std::make_unique<TemporaryFile>(std::move(place_.replaced->directory), program,
                                          old ? old->st_mode & kNewFileMode : kNewFileMode);
    }
  } catch (const std::system_error& error) {
    throw Trouble(name_, error.code().value());
  }
}

int ResultFile::Descriptor() const {
  if (temporary_) {
    return temporary_->Descriptor();
  }
  return place_.open.IsOpen() ? place_.open.Get() : STDOUT_FILENO;
}

void ResultFile::Write(std::string_view bytes) {
  if (is_on_terminal_) {
    AppendTerminalText(buffer_, bytes, TextPlace::kLines);
    FlushWhenFull();
  } else {
    WriteControl(bytes);
  }
}

void ResultFile::WriteControl(std::string_view bytes) {
  if (bytes.size() >= kBufferSize) {
    Flush();
    WriteOut(bytes);
  } else {
    buffer_ += bytes;
    FlushWhenFull();
  }
}

void ResultFile::FlushWhenFull() {
  if (buffer_.size() >= kBufferSize) {
    Flush();
  }
}

void ResultFile::Flush() {
  WriteOut(buffer_);
  buffer_.clear();
}

void ResultFile::WriteOut(std::string_view bytes) {
  if (is_closed_ || bytes.empty()) {
    return;
  }
  if (is_on_terminal_) {
    status_line_.Erase();
  }
  const int error = WriteAll(Descriptor(), bytes);
  if (error == EPIPE) {
    is_closed_ = true;
  } else {
    Check(error);
  }
}

void ResultFile::Finish() {
  Flush();
  if (temporary_) {
    if (place_.replaced->old) {
      Check(temporary_->TakeAfter(*place_.replaced->old));
    }
    Check(temporary_->BecomePermanent(place_.replaced->name));
    return;
  }
  // Some file systems tell only when a descriptor is closed that there was no room.
  const int fd = ::fcntl(Descriptor(), F_DUPFD_CLOEXEC, 0);
  if (fd >= 0 && ::close(fd) != 0) {
    Check(errno);
  }
}

void ResultFile::Check(int error) const {
  if (error != 0) {
    throw Trouble(name_, error);
  }
}

}  // namespace ptick::companion
