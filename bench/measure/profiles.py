"""The generated profiles: where they lie and how they are made."""

import pathlib
import subprocess


class Profiles:
    """Generates profiles into a directory, each once."""

    def __init__(self, generator, directory):
        self._generator = generator
        self._directory = pathlib.Path(directory)

    def one(self, lines, *options):
        """A profile of that many lines."""
        return self._files(1, lines, options)[0]

    def several(self, count, lines, *options):
        """`count` profiles of that many lines each."""
        return self._files(count, lines, options)

    def sources(self):
        """A directory with the source records of all 2,000 programs."""
        directory = self._directory / "sources"
        if not directory.exists():
            self.one(1, "--sources", directory)
        return directory

    def _files(self, count, lines, options):
        words = [str(word) for word in (lines, *options)]
        name = self._directory / "-".join([str(count), *words]).replace("/", "")
        files = [name] if count == 1 else [
            name.with_name(f"{name.name}.{file}") for file in range(1, count + 1)]
        if not files[0].exists():
            subprocess.run([self._generator, "--lines", *words, "--files", str(count), name],
                           check=True)
        return files
