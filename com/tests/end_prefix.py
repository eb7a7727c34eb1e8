"""end_prefix.py PREFIX: ends what still runs in a Wine prefix and takes it away: each one holds a whole system's files."""

import shutil
import sys

from wine import Wine

Wine(sys.argv[1]).end()
shutil.rmtree(sys.argv[1])
