"""registration_test.py PREFIX DLL: registers the server for the machine and for one user, looks at the keys, and sees that
nothing is left behind."""

import pathlib
import re
import sys

from wine import Wine

CLASSES = """CMaterialGama CConfiguracionOTBoletin CEjecutorGama CUsuarioEjecutorGama CUnidadLectura COrdenGenerada
CLecturaEquipo CImputacionSistematica CImputacionPreventiva CImputacionParalela CGrupoGama CGama CEquipo
CDocumentoEquipo CBoletin CGlobalPreventivo""".split()
PROGIDS = [f"Zontara.{name}" for name in CLASSES] + ["Perluma.ListaCambios", "Perluma.SesionGlobal"]

prefix, dll = sys.argv[1:]
wine = Wine(prefix)


def exported(root):
    """All keys of the registered classes with their values."""
    path = pathlib.Path(prefix) / "drive_c" / "exported.reg"
    wine.must("reg", "export", root + r"\Software\Classes", r"C:\exported.reg", "/y")
    keys = path.read_text("utf-16").split("\n[")
    return {key: values.strip() for key, _, values in (each.partition("]\n") for each in keys)}


def expect(claim, holds):
    if not holds:
        raise SystemExit("not so: " + claim)


def matching(keys, pattern):
    return [key for key in keys if re.search(pattern, key)]


def check(root, *scope):
    before = exported(root)
    wine.must("regsvr32", "/s", *scope, dll)
    after = exported(root)
    added = {key: values for key, values in after.items() if key not in before}
    expect(f"what others registered under {root} stays", {key: after[key] for key in before} == before)
    for progid in PROGIDS:
        expect(f"{progid} is registered under {root}", matching(added, rf"\\{re.escape(progid)}\\CLSID$"))
    servers = matching(added, r"\\InprocServer32$")
    expect("each class that clients create has a server", len(servers) == len(PROGIDS))
    expect("it lives in an apartment", all('"ThreadingModel"="Apartment"' in added[key] for key in servers))
    expect("there are three type libraries of version 84.0, in English",
           len(matching(added, r"\\TypeLib\\\{[-0-9A-F]+\}\\54\.0\\409\\win64$")) == 3)
    # Sixteen classes and one's events; recordset, fields and field; list and session.
    expect("each interface is registered", len(matching(added, r"\\Interface\\\{[-0-9A-F]+\}$")) == 22)

    wine.must("regsvr32", "/s", *scope, dll)
    expect("registering again changes nothing", exported(root) == after)
    wine.must("regsvr32", "/s", "/u", *scope, dll)
    expect(f"nothing is left behind under {root}", exported(root) == before)
    wine.must("regsvr32", "/s", "/u", *scope, dll)


check("HKLM")
check("HKCU", "/n", "/i:user")
