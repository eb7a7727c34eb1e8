"""under_wine.py PREFIX PROGRAM...: a program under Wine that tells by its exit code whether all is well."""

import sys

from wine import Wine

print(Wine(sys.argv[1]).must(*sys.argv[2:]), end="")
