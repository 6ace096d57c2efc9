#include "driver/driver.h"
#include "platform/linux/linux_platform.h"

int main(int argc, char** argv) {
  ptick::LinuxPlatform platform(argc, argv);
  return ptick::RunPtick(platform);
}
