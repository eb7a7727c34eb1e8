"""client_test.py PREFIX PROGRAM CLIENT...: a client under Wine sees, line for line, what the same session shows on this
system through PROGRAM."""

import difflib
import pathlib
import subprocess
import sys

from wine import Wine, windows_path

prefix, program, *client = sys.argv[1:]
reference = pathlib.Path(__file__).with_name("reference.py")
expected = subprocess.run([sys.executable, reference, program], stdout=subprocess.PIPE, encoding="utf-8", check=True).stdout
seen = Wine(prefix).must(*client[:-1], windows_path(client[-1]))
if len(expected.splitlines()) < 100:
    raise SystemExit("the reference tells too little:\n" + expected)
if seen != expected:
    difference = difflib.unified_diff(expected.splitlines(), seen.splitlines(), "this system", client[-1], lineterm="")
    raise SystemExit("\n".join(difference))
