"""guide_test.py PREFIX: the VBScript of the guide runs as it stands there, but for the path of its database."""

import pathlib
import re
import sys

from wine import Wine, windows_path

guide = pathlib.Path(__file__).parents[2] / "docs" / "com.md"
script = re.search(r"## VBScript\n\n```vb\n(.*?)```", guide.read_text("utf-8"), re.DOTALL)[1]
path = '"C:\\data\\plant.db"'
if path not in script:
    raise SystemExit("the guide opens no database")
client = pathlib.Path(sys.argv[1]) / "drive_c" / "guide.vbs"
client.write_text(script.replace(path, '":memory:", True'), "utf-8")
told = Wine(sys.argv[1]).must("cscript", "//nologo", windows_path(client)).splitlines()
if told[:1] != ["launched: 0"] or not told[1:2] or not told[1].endswith(" from HuntERR.ErrorIn") or "Call Stack" not in str(told):
    raise SystemExit("\n".join(told))
