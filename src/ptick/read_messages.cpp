#include "ptick/read_messages.h"

#include <string>
#include <system_error>

#include "value/text.h"

namespace ptick {

namespace {

std::string Reason(int error) { return ": " + std::generic_category().message(error); }

}  // namespace

void PrintCannotOpen(std::string_view directory, int error, Output& output) {
  output.PrintMessage("[201] cannot open file " + Quote(directory, '\'') + Reason(error));
}

void PrintCannotRead(const RecordPlace& place, int error, Output& output) {
  output.PrintMessage("[202] cannot read record " + Quote(place.record, '\'') + " in " +
                      Quote(place.directory, '\'') + Reason(error));
}

void PrintProblem(const ReadProblem& problem, Output& output) {
  switch (problem.kind) {
    case ReadProblem::Kind::kCannotOpenFile:
      PrintCannotOpen(problem.place.directory, problem.error, output);
      break;
    case ReadProblem::Kind::kCannotReadRecord:
      PrintCannotRead(problem.place, problem.error, output);
      break;
    case ReadProblem::Kind::kInvalidLine:
      output.PrintTerminal("Invalid format in profile file at line " +
                           std::to_string(problem.line));
      output.PrintTerminal("\t" + problem.text);
      break;
  }
}

}  // namespace ptick
