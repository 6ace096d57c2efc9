#include "platform/linux/ports/runtime_directory.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "platform/linux/shortage.h"

namespace ptick::ports {

namespace {

std::optional<std::string> Variable(const char* name) {
  const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody sets one
  if (value == nullptr || *value == '\0') {
    return std::nullopt;
  }
  return value;
}

// "/" and "/." after the name would make the system follow a link of that name.
std::string WithoutTrailingSlashes(std::string path) {
  while (path.size() > 1 && (path.ends_with('/') || path.ends_with("/."))) {
    path.pop_back();
  }
  return path;
}

bool IsTrusted(const UniqueFd& directory) {
  struct stat status {};
  return ::fstat(directory.Get(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == ::geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

Opened OpenChecked(const std::string& path) {
  Opened opened;
  opened.descriptor = UniqueFd(::open(path.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!opened.descriptor.IsOpen()) {
    opened.error = errno == ENOENT || IsShortage(errno) ? errno : EACCES;
  } else if (!IsTrusted(opened.descriptor)) {
    opened.descriptor.Close();
    opened.error = EACCES;
  }
  return opened;
}

}  // namespace

std::string RuntimeDirectoryPath() {
  if (const auto own = Variable("MAVRO_RUNTIME_DIR")) {
    return WithoutTrailingSlashes(*own);
  }
  if (const auto user = Variable("XDG_RUNTIME_DIR")) {
    return *user + "/mavro";
  }
  return "/tmp/mavro-" + std::to_string(::geteuid());
}

Opened OpenRuntimeDirectory() { return OpenChecked(RuntimeDirectoryPath()); }

Opened CreateRuntimeDirectory() {
  const std::string path = RuntimeDirectoryPath();
  if (::mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
    return {UniqueFd(), errno};
  }
  return OpenChecked(path);
}

std::string DescriptorPath(const UniqueFd& descriptor) {
  return "/proc/self/fd/" + std::to_string(descriptor.Get());
}

}  // namespace ptick::ports
