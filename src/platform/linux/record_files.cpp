#include "platform/linux/record_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <optional>
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

std::nullptr_t Refuse(int reason, int* error) {
  if (error != nullptr) {
    *error = reason;
  }
  return nullptr;
}

std::nullptr_t RefuseName(std::string_view name, int* error) {
  return Refuse(name == "." || name == ".." ? EISDIR : ENOENT, error);
}

std::nullptr_t RefuseKind(mode_t mode, int* error) {
  return Refuse(S_ISDIR(mode) ? EISDIR : EINVAL, error);
}

/// The kind of file and its permissions; nothing, and errno set, when it is not open.
std::optional<mode_t> ModeOf(const UniqueFd& fd) {
  struct stat status = {};
  if (!fd.IsOpen() || ::fstat(fd.Get(), &status) != 0) {
    return std::nullopt;
  }
  return status.st_mode;
}

// Calls until no signal comes in between. Nothing, and the error number, when the call fails.
template <typename Call>
std::optional<std::size_t> ReadBy(const Call& call, int& error) {
  ssize_t got = 0;
  do {
    got = call();
  } while (got < 0 && errno == EINTR);
  if (got < 0) {
    error = errno;
    return std::nullopt;
  }
  return static_cast<std::size_t>(got);
}

class LinuxRecordReader final : public RecordReader {
 public:
  LinuxRecordReader(UniqueFd fd, bool is_regular) : fd_(std::move(fd)), is_regular_(is_regular) {}

  std::optional<std::size_t> Read(std::span<char> block) override {
    return ReadBy([&] { return ::read(fd_.Get(), block.data(), block.size()); }, error_);
  }

  int Error() const override { return error_; }

  std::optional<std::uint64_t> Size() const override {
    struct stat status = {};
    if (!is_regular_ || ::fstat(fd_.Get(), &status) != 0) {
      return std::nullopt;
    }
    return static_cast<std::uint64_t>(status.st_size);
  }

  std::optional<std::size_t> ReadAt(std::uint64_t place, std::span<char> block,
                                    int& error) const override {
    const auto offset = static_cast<off_t>(place);
    return ReadBy([&] { return ::pread(fd_.Get(), block.data(), block.size(), offset); }, error);
  }

  bool CanBeReadAgain() const override { return is_regular_; }

 private:
  UniqueFd fd_;
  bool is_regular_;
  int error_ = 0;
};

std::unique_ptr<RecordReader> ReaderOf(UniqueFd fd, bool is_regular) {
  if (is_regular) {
    // Only advice: where it is refused, reading is merely slower.
    ::posix_fadvise(fd.Get(), 0, 0, POSIX_FADV_SEQUENTIAL);
  }
  return std::make_unique<LinuxRecordReader>(std::move(fd), is_regular);
}

// Of whatever can be read to its end; a directory cannot.
std::unique_ptr<RecordReader> ReaderOfAny(UniqueFd fd, int* error) {
  const std::optional<mode_t> mode = ModeOf(fd);
  if (!mode) {
    return Refuse(errno, error);
  }
  if (S_ISDIR(*mode)) {
    return Refuse(EISDIR, error);
  }
  return ReaderOf(std::move(fd), S_ISREG(*mode));
}

class LinuxRecordFile final : public RecordFile {
 public:
  explicit LinuxRecordFile(UniqueFd directory) : directory_(std::move(directory)) {}

  std::unique_ptr<RecordReader> OpenRecord(std::string_view name, int* error) override {
    if (!NamesRecord(name)) {
      return RefuseName(name, error);
    }
    return ReaderOfAny(OpenAt(directory_.Get(), std::string(name), O_RDONLY | O_NOCTTY), error);
  }

  // It is looked at before it is opened: opening a FIFO lets a writer go on that waits for a
  // reader. Should its name become that of another file in between, opening does not wait, and what
  // has been opened is looked at once more.
  std::unique_ptr<RecordReader> OpenRegularRecord(std::string_view name, int* error) override {
    if (!NamesRecord(name)) {
      return RefuseName(name, error);
    }
    const std::string path(name);
    struct stat status = {};
    if (::fstatat(directory_.Get(), path.c_str(), &status, 0) != 0) {
      return Refuse(errno, error);
    }
    if (!S_ISREG(status.st_mode)) {
      return RefuseKind(status.st_mode, error);
    }
    UniqueFd fd = OpenAt(directory_.Get(), path, O_RDONLY | O_NOCTTY | O_NONBLOCK);
    const std::optional<mode_t> mode = ModeOf(fd);
    if (!mode) {
      return Refuse(errno, error);
    }
    if (!S_ISREG(*mode)) {
      return RefuseKind(*mode, error);
    }
    return ReaderOf(std::move(fd), true);
  }

 private:
  UniqueFd directory_;
};

}  // namespace

std::unique_ptr<RecordFile> OpenRecordFile(std::string_view name, int* error) {
  if (name.empty() || name.find('\0') != std::string_view::npos) {
    return Refuse(ENOENT, error);
  }
  // O_PATH: a directory that may be entered but not listed has records that can be read.
  UniqueFd directory = OpenAt(AT_FDCWD, std::string(name), O_PATH | O_DIRECTORY);
  if (!directory.IsOpen()) {
    return Refuse(errno, error);
  }
  return std::make_unique<LinuxRecordFile>(std::move(directory));
}

std::unique_ptr<RecordReader> OpenPath(std::string_view path, int* error) {
  if (path.find('\0') != std::string_view::npos) {
    return Refuse(ENOENT, error);
  }
  return ReaderOfAny(OpenAt(AT_FDCWD, std::string(path), O_RDONLY | O_NOCTTY), error);
}

std::unique_ptr<RecordReader> ReadOpenFile(int fd, int* error) {
  UniqueFd copy(::fcntl(fd, F_DUPFD_CLOEXEC, 0));
  const std::optional<mode_t> mode = ModeOf(copy);
  if (!mode) {
    return Refuse(errno, error);
  }
  // Its position is shared, so what was read is gone, whatever it is.
  return S_ISDIR(*mode) ? Refuse(EISDIR, error) : ReaderOf(std::move(copy), false);
}

}  // namespace ptick
