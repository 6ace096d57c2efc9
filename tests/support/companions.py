"""Runs companions: programs beside ptick."""

import os

from support.program import PTICK, ProgramTest

# All programs that are built, and those of them that users get.
_BUILT = {
    os.path.basename(path): os.path.abspath(path)
    for path in os.environ.get("PTICK_PROGRAMS", "").split(":")
    if path
}
# Not linked, but a program as the others.
_FLEET = os.path.abspath(os.path.join(os.environ.get("PTICK_BUILD_DIR", "build/dev"), "ptick-fleet"))
if os.path.exists(_FLEET):
    _BUILT["ptick-fleet"] = _FLEET
COMPANIONS = sorted(name for name in _BUILT if name.startswith("ptick-") and name != "ptick-sample")


def path_of(name):
    """Where a program is."""
    return _BUILT.get(name) or os.path.join(os.path.dirname(os.path.abspath(PTICK)), name)


class CompanionTest(ProgramTest):
    """A test of the companion whose name the class says."""

    companion = None

    def run_it(self, *arguments, **settings):
        return self.run_program(path_of(self.companion), *arguments, **settings)

    def check(self, result, out=b"", err="", status=0):
        """Compares all that a run left."""
        out = out if isinstance(out, bytes) else out.encode()
        err = err if isinstance(err, bytes) else err.encode()
        self.assertEqual((out, err, status), (result.out, result.err, result.status))

    def run_piped(self, text, *arguments, **settings):
        """A run with that text on a pipe as its standard input."""
        read, write = os.pipe()
        try:
            if os.fork() == 0:
                os.close(read)
                with os.fdopen(write, "wb") as pipe:
                    pipe.write(text if isinstance(text, bytes) else text.encode())
                os._exit(0)
            os.close(write)
            return self.run_it(*arguments, stdin=read, **settings)
        finally:
            os.close(read)
            os.wait()
