"""What the tests of the module share."""

import os
import pathlib
import subprocess

import corvanta

SOURCE = pathlib.Path(__file__).resolve().parent.parent.parent
SAMPLES = SOURCE / "samples"
PUSHROD = SAMPLES / "formula-front-pushrod.WSP"


def pushrod():
    return corvanta.Corner.load(PUSHROD)


def run(program, *arguments):
    """What a program of the build says; it must succeed and say nothing on standard error."""
    command = [os.path.join(os.environ["CORVANTA_PROGRAMS"], program), *map(str, arguments)]
    done = subprocess.run(command, capture_output=True, check=True, text=True)
    assert done.stderr == "", done.stderr
    return done.stdout
