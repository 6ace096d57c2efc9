#include <memory_resource>

#include "platform/linux/large_pages.h"
#include "platform/linux/linux_platform.h"
#include "ptick/driver.h"

int main(int argc, char** argv) {
  ptick::LargePages large_pages;
  std::pmr::set_default_resource(&large_pages);
  ptick::LinuxPlatform platform(argc, argv);
  return ptick::RunPtick(platform);
}
