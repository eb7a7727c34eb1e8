"""Runs the README's tour on the demo's database and compares what each command prints with what the README shows.
A line of three dots stands for what more it prints."""

import pathlib
import re
import shlex
import subprocess
import sys

program, readme, folder = sys.argv[1:]
text = pathlib.Path(readme).read_text(encoding="utf-8")
block = re.search(r"<!-- tour -->\n```text\n(.*?)```", text, re.S).group(1)
steps = re.split(r"^\$ zontara ", block, flags=re.M)[1:]
failed = len(steps) < 3
for step in steps:
    command, shown = step.split("\n", 1)
    ran = subprocess.run([program, *shlex.split(command)], cwd=folder, capture_output=True, text=True, encoding="utf-8")
    head, more, _ = shown.partition("\n...\n")
    same = ran.stdout.startswith(head + "\n") if more else ran.stdout.rstrip("\n") == shown.rstrip("\n")
    if ran.returncode != 0 or not same:
        print(f"zontara {command}: status {ran.returncode}\n{ran.stderr}printed:\n{ran.stdout}instead of:\n{shown}")
        failed = True
sys.exit(failed)
