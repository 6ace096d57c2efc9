// ptick-diff: what became slower or faster.
#include "companion/linux/program.h"
#include "ptick_diff/diff_program.h"

int main(int argc, char** argv) {
  ptick::compare::DiffOptions options;
  return ptick::companion::RunProgram(ptick::compare::DiffProgram(options), argc, argv);
}
