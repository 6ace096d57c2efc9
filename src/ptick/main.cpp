#include "platform/linux/linux_platform.h"
#include "ptick/driver.h"

int main(int argc, char** argv) {
  ptick::LinuxPlatform platform(argc, argv);
  return ptick::RunPtick(platform);
}
