"""make_prefix.py PREFIX: a fresh Wine prefix, with a short date form of the order that the component has elsewhere, and the
key for a user's own classes, which Windows always has."""

import shutil
import sys

from wine import Wine

shutil.rmtree(sys.argv[1], ignore_errors=True)
wine = Wine(sys.argv[1])
# A part of the system that can't start here must not fail the rest: what matters is that programs run.
wine.run("wineboot", "-i", seconds=240)
wine.must("reg", "add", r"HKCU\Control Panel\International", "/v", "sShortDate", "/d", "d/M/yyyy", "/f")
wine.must("reg", "add", r"HKCU\Software\Classes", "/f")
