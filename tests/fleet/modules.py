"""Where tests find the modules of ptick-fleet: as they are in the build folder."""

import os
import sys

BUILD_DIR = os.path.abspath(os.environ.get("PTICK_BUILD_DIR", "build/dev"))
MODULES = os.path.join(BUILD_DIR, "share", "ptick-fleet")
sys.path.insert(0, MODULES)
