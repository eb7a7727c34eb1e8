"""end_prefix.py PREFIX: ends what still runs in a Wine prefix."""

import sys

from wine import Wine

Wine(sys.argv[1]).end()
