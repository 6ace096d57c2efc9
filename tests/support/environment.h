#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace ptick::testing {

/// Sets an environment variable, or takes it away, until the end of the scope.
class EnvironmentValue {
 public:
  EnvironmentValue(std::string name, const std::optional<std::string>& value)
      : name_(std::move(name)) {
    if (const char* before = std::getenv(name_.c_str())) {
      before_ = before;
    }
    Set(value);
  }
  EnvironmentValue(const EnvironmentValue&) = delete;
  EnvironmentValue& operator=(const EnvironmentValue&) = delete;
  ~EnvironmentValue() { Set(before_); }

 private:
  void Set(const std::optional<std::string>& value) const {
    if (value) {
      ::setenv(name_.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name_.c_str());
    }
  }

  std::string name_;
  std::optional<std::string> before_;
};

}  // namespace ptick::testing
