"""Opens every DXF file of a folder with a reader of its own and prints, for each, the file's name,
the number of errors that the audit found and the lengths of its lines."""

import pathlib
import sys

import ezdxf

for path in sorted(pathlib.Path(sys.argv[1]).glob("*.dxf")):
    drawing = ezdxf.readfile(path)
    errors = drawing.audit().errors
    lengths = [
        (line.dxf.end - line.dxf.start).magnitude for line in drawing.modelspace().query("LINE")
    ]
    print(path.stem, len(errors), *(f"{length:.6f}" for length in lengths))
