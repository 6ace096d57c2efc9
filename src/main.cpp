#include <memory_resource>

#include "driver/driver.h"
#include "platform/linux/large_pages.h"
#include "platform/linux/linux_platform.h"

int main(int argc, char** argv) {
  ptick::LargePages large_pages;
  std::pmr::set_default_resource(&large_pages);
  ptick::LinuxPlatform platform(argc, argv);
  return ptick::RunPtick(platform);
}
