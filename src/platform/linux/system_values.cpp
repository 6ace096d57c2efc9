#include "platform/linux/system_values.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string_view>

namespace ptick {

namespace {

constexpr std::int64_t kMaxPage = 32767;
constexpr TerminalSize kUsualSize;

// The value of an environment variable; an unset one reads like an empty one.
std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

bool IsAllDigits(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// A number too long for 64 bits is out of every range asked for here, so it counts as none.
std::optional<std::int64_t> ParseDigits(std::string_view text) {
  std::int64_t number = 0;
  if (!IsAllDigits(text) ||
      std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc()) {
    return std::nullopt;
  }
  return number;
}

winsize OutputWindow() {
  winsize window = {};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) != 0) {
    return {};
  }
  return window;
}

// Takes the text before the next ':' off the front of `line`.
std::string_view TakeColonField(std::string_view& line) {
  const std::size_t end = std::min(line.find(':'), line.size());
  const std::string_view field = line.substr(0, end);
  line.remove_prefix(std::min(end + 1, line.size()));
  return field;
}

}  // namespace

std::int64_t ReadPageWidth() {
  const std::optional<std::int64_t> columns = ParseDigits(Environment("COLUMNS"));
  if (columns && *columns >= 1 && *columns <= kMaxPage) {
    return *columns;
  }
  const winsize window = OutputWindow();
  return window.ws_col > 0 ? window.ws_col : kUsualSize.columns;
}

TerminalSize ReadTerminalSize() {
  const winsize window = OutputWindow();
  return {.rows = window.ws_row > 0 ? window.ws_row : kUsualSize.rows,
          .columns = window.ws_col > 0 ? window.ws_col : ReadPageWidth()};
}

std::string ReadAccountName() {
  if (const std::string_view account = Environment("MAVRO_ACCOUNT"); !account.empty()) {
    return std::string(account);
  }
  if (std::optional<std::string> name = FindUserName("/etc/passwd", ::getuid())) {
    return *std::move(name);
  }
  for (const char* variable : {"LOGNAME", "USER"}) {
    if (const std::string_view name = Environment(variable); !name.empty()) {
      return std::string(name);
    }
  }
  return std::to_string(::getuid());
}

std::string ReadOwnPort() {
  const std::string_view port = Environment("MAVRO_PORT");
  return IsAllDigits(port) ? std::string(port) : "0";
}

std::optional<std::string> FindUserName(const std::string& path, std::uint32_t uid) {
  std::ifstream passwords(path);
  for (std::string line; std::getline(passwords, line);) {
    std::string_view rest = line;
    const std::string_view name = TakeColonField(rest);
    TakeColonField(rest);  // the password
    if (!name.empty() && ParseDigits(TakeColonField(rest)) == std::int64_t{uid}) {
      return std::string(name);
    }
  }
  return std::nullopt;
}

std::optional<std::int64_t> ReadZoneOffset(std::int64_t time) {
  const std::time_t moment = time;
  std::tm local = {};
  ::tzset();  // only now, for most runs show no times
  if (::localtime_r(&moment, &local) == nullptr) {
    return std::nullopt;
  }
  return local.tm_gmtoff;
}

}  // namespace ptick
