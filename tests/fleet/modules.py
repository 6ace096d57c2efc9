"""Where tests find the modules of ptick-fleet: as they are in the build folder."""

import os

BUILD_DIR = os.path.abspath(os.environ.get("PTICK_BUILD_DIR", "build/dev"))
MODULES = os.path.join(BUILD_DIR, "share", "ptick-fleet")
