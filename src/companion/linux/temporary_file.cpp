#include "companion/linux/temporary_file.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace ptick::companion {

namespace {

std::string RandomName(std::string_view stem) {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz012345";
  std::array<unsigned char, 12> bytes = {};
  if (::getrandom(bytes.data(), bytes.size(), 0) != ssize_t{bytes.size()}) {
    throw std::system_error(errno, std::generic_category());
  }
  std::string name = "." + std::string(stem) + ".";
  for (const unsigned char byte : bytes) {
    name += kLetters[byte % kLetters.size()];
  }
  return name;
}

// Some file systems have nothing to be synchronised, and say so.
bool IsSynchronised(int fd) {
  return ::fsync(fd) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
}

}  // namespace

TemporaryFile::TemporaryFile(UniqueFd directory, std::string_view stem, mode_t mode)
    : directory_(std::move(directory)) {
  int error = EEXIST;
  while (error == EEXIST) {
    name_ = RandomName(stem);
    doomed_ = {.directory = directory_.Get(), .name = name_.c_str(), .next = nullptr};
    const CleanupLock lock;
    file_ = UniqueFd(::openat(directory_.Get(), name_.c_str(),
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
    error = file_.IsOpen() ? 0 : errno;
    if (error == 0) {
      Doom(doomed_, lock);
    }
  }
  if (error != 0) {
    throw std::system_error(error, std::generic_category());
  }
}

TemporaryFile::~TemporaryFile() {
  if (!name_.empty()) {
    const CleanupLock lock;
    ::unlinkat(directory_.Get(), name_.c_str(), 0);
    Spare(doomed_, lock);
  }
}

int TemporaryFile::TakeAfter(const struct stat& other) const {
  struct stat own = {};
  if (::fstat(file_.Get(), &own) != 0) {
    return errno;
  }
  mode_t kept = 07777;
  if (own.st_uid != other.st_uid || own.st_gid != other.st_gid) {
    if (::fchown(file_.Get(), other.st_uid, other.st_gid) != 0) {
      // The group at least. Nobody else's rights are lent to whoever runs the file, though.
      kept = 0777;
      [[maybe_unused]] const int ignored =
          ::fchown(file_.Get(), static_cast<uid_t>(-1), other.st_gid);
    }
  }
  return ::fchmod(file_.Get(), other.st_mode & kept) == 0 ? 0 : errno;
}

int TemporaryFile::BecomePermanent(const std::string& name) {
  if (!IsSynchronised(file_.Get())) {
    return errno;
  }
  const CleanupLock lock;
  if (::renameat(directory_.Get(), name_.c_str(), directory_.Get(), name.c_str()) != 0) {
    return errno;
  }
  Spare(doomed_, lock);
  name_.clear();
  return 0;
}

}  // namespace ptick::companion
