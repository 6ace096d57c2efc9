#include "platform/linux/record_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>

#include "platform/linux/unique_fd.h"

namespace ptick {
namespace {

bool NamesRecord(std::string_view name) {
  constexpr std::string_view kNeverInRecordNames("/\0", 2);
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(kNeverInRecordNames) == std::string_view::npos;
}

// Opening a FIFO or a device may wait, so a signal can come in between.
UniqueFd OpenAt(int directory, const std::string& name, int flags) {
  int fd = -1;
  do {
    fd = ::openat(directory, name.c_str(), flags | O_CLOEXEC);
  } while (fd < 0 && errno == EINTR);
  return UniqueFd(fd);
}

class LinuxRecordReader final : public RecordReader {
 public:
  explicit LinuxRecordReader(UniqueFd fd) : fd_(std::move(fd)) {}

  std::optional<std::size_t> Read(std::span<char> block) override {
    ssize_t got = 0;
    do {
      got = ::read(fd_.Get(), block.data(), block.size());
    } while (got < 0 && errno == EINTR);
    if (got < 0) {
      return std::nullopt;
    }
    return static_cast<std::size_t>(got);
  }

 private:
  UniqueFd fd_;
};

class LinuxRecordFile final : public RecordFile {
 public:
  explicit LinuxRecordFile(UniqueFd directory) : directory_(std::move(directory)) {}

  std::unique_ptr<RecordReader> OpenRecord(std::string_view name) override {
    if (!NamesRecord(name)) {
      return nullptr;
    }
    UniqueFd fd = OpenAt(directory_.Get(), std::string(name), O_RDONLY | O_NOCTTY);
    struct stat status = {};
    if (!fd.IsOpen() || ::fstat(fd.Get(), &status) != 0 || S_ISDIR(status.st_mode)) {
      return nullptr;
    }
    if (S_ISREG(status.st_mode)) {
      // Only advice: where it is refused, reading is merely slower.
      ::posix_fadvise(fd.Get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    }
    return std::make_unique<LinuxRecordReader>(std::move(fd));
  }

 private:
  UniqueFd directory_;
};

}  // namespace

std::unique_ptr<RecordFile> OpenRecordFile(std::string_view name) {
  if (name.empty() || name.find('\0') != std::string_view::npos) {
    return nullptr;
  }
  // O_PATH: a directory that may be entered but not listed has records that can be read.
  UniqueFd directory = OpenAt(AT_FDCWD, std::string(name), O_PATH | O_DIRECTORY);
  if (!directory.IsOpen()) {
    return nullptr;
  }
  return std::make_unique<LinuxRecordFile>(std::move(directory));
}

}  // namespace ptick
