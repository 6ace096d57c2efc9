#include "companion/support/sample.h"

int main(int argc, char** argv) {
  ptick::companion::SampleOptions options;
  return RunProgram(ptick::companion::SampleProgram(options), argc, argv);
}
