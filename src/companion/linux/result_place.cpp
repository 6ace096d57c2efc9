#include "companion/linux/result_place.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace ptick::companion {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void Throw(int error) { throw std::system_error(error, std::generic_category()); }

// Whether a directory is one of those whose entries are the descriptors of this process. What they
// lead to is known by its number only; the text of the link may be no path at all.
bool ListsOwnDescriptors(const fs::path& directory) {
  std::error_code none;
  const fs::path real = fs::canonical(directory, none);
  const std::string own = "/proc/" + std::to_string(::getpid()) + "/";
  return !none && real.native().starts_with(own) && real.filename() == "fd";
}

ResultPlace OpenDescriptor(std::string_view number) {
  int fd = -1;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), fd);
  if (error != std::errc() || end != number.data() + number.size()) {
    Throw(ENOENT);
  }
  ResultPlace place;
  place.open = UniqueFd(::fcntl(fd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  if (!place.open.IsOpen()) {
    Throw(errno);
  }
  return place;
}

ResultPlace OpenInPlace(const fs::path& file) {
  ResultPlace place;
  place.open = UniqueFd(::open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_TRUNC));
  if (!place.open.IsOpen()) {
    Throw(errno);
  }
  return place;
}

ResultPlace Replace(const fs::path& file, const std::optional<struct stat>& old) {
  const std::string name = file.filename();
  if (name.empty()) {
    Throw(EISDIR);
  }
  const fs::path parent = file.parent_path().empty() ? "." : file.parent_path();
  UniqueFd directory(::open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!directory.IsOpen()) {
    Throw(errno);
  }
  // That its folder could be written does not mean that a protected file may go.
  if (old && ::faccessat(directory.Get(), name.c_str(), W_OK, AT_EACCESS) != 0) {
    Throw(errno);
  }
  ResultPlace place;
  place.replaced.emplace(
      ResultPlace::Replaced{.directory = std::move(directory), .name = name, .old = old});
  return place;
}

bool IsOnProc(const fs::path& directory) {
  std::error_code none;
  return fs::canonical(directory, none).native().starts_with("/proc/");
}

}  // namespace

ResultPlace FindResultPlace(const std::string& file) {
  constexpr int kMaxLinks = 40;
  if (file.empty()) {
    Throw(ENOENT);
  }
  fs::path path = file;
  for (int links = 0; links <= kMaxLinks; ++links) {
    const fs::path parent = path.parent_path().empty() ? "." : path.parent_path();
    if (path.has_filename() && ListsOwnDescriptors(parent)) {
      return OpenDescriptor(path.filename().native());
    }
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0) {
      if (errno != ENOENT) {
        Throw(errno);
      }
      return Replace(path, std::nullopt);
    }
    if (S_ISREG(status.st_mode)) {
      return Replace(path, status);
    }
    if (!S_ISLNK(status.st_mode) || IsOnProc(parent)) {
      return OpenInPlace(path);
    }
    path = parent / fs::read_symlink(path);
  }
  Throw(ELOOP);
}

}  // namespace ptick::companion
