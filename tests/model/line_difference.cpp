#include "model/line_difference.h"

#include <cstddef>

#include "model/model_list.h"

namespace ptick::model {

std::string FirstDifference(const std::string& model, const std::string& program) {
  if (model == program) {
    return "";
  }
  const std::vector<std::string> wanted = LinesOf(model);
  const std::vector<std::string> got = LinesOf(program);
  std::size_t at = 0;
  while (at < wanted.size() && at < got.size() && wanted[at] == got[at]) {
    ++at;
  }
  const auto line = [at](const std::vector<std::string>& lines) {
    return at < lines.size() ? Shown(lines[at]) : "(end)";
  };
  return "differs in line " + std::to_string(at + 1) + "\n  model:   " + line(wanted) +
         "\n  program: " + line(got) + "\n";
}

std::string JoinLines(const std::vector<std::string>& lines) {
  std::string joined;
  for (const std::string& line : lines) {
    joined += line + "\n";
  }
  return joined;
}

}  // namespace ptick::model
