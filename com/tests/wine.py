"""Windows programs under Wine, in a prefix of their own and without a display."""

import os
import subprocess


def windows_path(path):
    """A file of this system as a Windows program knows it; some take a word that begins with a slash for an option."""
    return "Z:" + os.path.abspath(path).replace("/", "\\")


class Wine:
    def __init__(self, prefix):
        self.environment = {key: value for key, value in os.environ.items() if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        self.environment |= {
            "WINEPREFIX": os.path.abspath(prefix),
            "WINEDEBUG": "-all",
            # Nothing here needs .NET or a browser, and nothing shall appear in a desktop's menu.
            "WINEDLLOVERRIDES": "mscoree,mshtml,winemenubuilder.exe=",
        }

    def run(self, *words, seconds=60):
        """A program's exit code and output."""
        done = subprocess.run(["wine", *words], env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, timeout=seconds)
        return done.returncode, done.stdout.decode("utf-8", "replace").replace("\r\n", "\n")

    def must(self, *words, seconds=60):
        """A program's output; the end of the test when it fails."""
        code, output = self.run(*words, seconds=seconds)
        if code != 0:
            raise SystemExit(f"{' '.join(words)} ended with {code}\n{output}")
        return output

    def end(self):
        """Ends what still runs in the prefix, so that the registry is on the disk."""
        subprocess.run(["wineserver", "-k"], env=self.environment, stderr=subprocess.DEVNULL, timeout=30, check=False)
