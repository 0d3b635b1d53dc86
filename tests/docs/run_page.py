#!/usr/bin/env python3
"""Runs what a page of the documentation shows, from its own text, and follows its links.

    run_page.py PAGE [--copy FOLDER]... [--programs FOLDER]

Everything happens in a folder of the page's own, with copies of those that are named, in the order of
the page:

    ```console   "$ COMMAND" is run by bash, continued on lines that begin with "> ". It has to end
                 with status 0, as has each part of a pipe, unless the next command is "echo $?".
                 The lines below it, if there are any, are its output and its errors; a line "..."
                 stands for any lines.
    ```python    With ">>>" a doctest, without it executed. All blocks share one namespace.
    ```sh, text  and other languages that are only shown, see SHOWN.

A link to a file has to find it, and one to a heading the heading.
"""

import argparse
import doctest
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import traceback
import types

RUN = ("console", "python")
SHOWN = ("", "sh", "text", "json", "cpp", "cmake", "ini", "slurm")
FENCE = re.compile(r"( *)```+\s*(.*?)\s*$")
LINK = re.compile(r"\]\(([^()\s]+)\)")


class Block:
    """A fenced block: its language, its lines and the number of the line above them."""

    def __init__(self, language, line, lines):
        self.language, self.line, self.lines = language, line, lines


def read_page(text):
    """The fenced blocks of a page, and its prose as lines."""
    blocks, prose, open_block, indent = [], [], None, 0
    for number, line in enumerate(text.split("\n"), 1):
        fence = FENCE.match(line)
        if open_block is None and fence:
            indent = len(fence[1])
            open_block = Block(fence[2], number, [])
            blocks.append(open_block)
        elif fence and not fence[2]:
            open_block = None
        elif open_block:
            open_block.lines.append(line[indent:])
        else:
            prose.append(line)
    if open_block:
        raise ValueError(f"the block that begins in line {open_block.line} never ends")
    return blocks, prose


def commands_of(block):
    """Each command of a console block as its line, its text and the output that is shown."""
    commands = []
    for number, line in enumerate(block.lines, block.line + 1):
        if line.startswith("$ "):
            commands.append((number, [line[2:]], []))
        elif commands and line.startswith("> ") and not commands[-1][2]:
            commands[-1][1].append(line[2:])
        elif commands:
            commands[-1][2].append(line)
        else:
            raise ValueError(f"line {number} stands above the first command: {line}")
    return [(number, "\n".join(command), shown) for number, command, shown in commands]


def matches(shown, output):
    """Whether the output is what is shown, in which a line "..." stands for any lines."""
    pattern = "".join(r"(?:.*\n)*" if line == "..." else re.escape(line) + r"\n" for line in shown)
    return re.fullmatch(pattern, output) is not None


class PageRun:
    """The examples of one page in its folder; Faults tells what went wrong."""

    def __init__(self, page, folder):
        self.page, self.folder, self.faults = page, folder, []
        self.state, self.status, self.groups = folder.parent / "shell-state", 0, []
        self.state.write_text(f"cd '{folder}'\n")
        # A module of this name, so that what the page defines can be pickled as in a session.
        self.module = types.ModuleType("__main__")

    def fault(self, line, words):
        self.faults.append(f"{self.page}:{line}: {words}")

    def run(self, blocks):
        commands = [c for b in blocks if b.language == "console" for c in commands_of(b)]
        forgiven = {n for (n, _, _), (_, after, _) in zip(commands, commands[1:]) if after == "echo $?"}
        for block in blocks:
            if block.language == "console":
                for number, command, shown in commands_of(block):
                    self.run_command(number, command, shown, number in forgiven)
            elif block.language == "python":
                self.run_python(block)
            elif block.language not in SHOWN:
                self.fault(block.line, f"a block is one of {RUN + SHOWN}, not {block.language}")
        for group in self.groups:
            try:
                os.killpg(group, signal.SIGKILL) # what was left running in the background
            except ProcessLookupError:
                pass

    def run_command(self, line, command, shown, forgiven):
        """Every command has a shell of its own, which takes over folder and variables."""
        keep = 'status=$?; { export -p; printf "cd %q\\n" "$PWD"; } >"$0"; exit $status'
        script = f". \"$0\"\ntrap '{keep}' EXIT\n(exit {self.status})\n{command}\n"
        with tempfile.TemporaryFile() as output:
            shell = subprocess.Popen(["bash", "-o", "pipefail", "-c", script, str(self.state)],
                                     cwd=self.folder, stdin=subprocess.DEVNULL, stdout=output,
                                     stderr=subprocess.STDOUT, start_new_session=True)
            self.groups.append(shell.pid)
            self.status = shell.wait()
            output.seek(0)
            text = output.read().decode(errors="backslashreplace").replace("\r\n", "\n")
        if text and not text.endswith("\n"):
            text += "\n"
        if self.status != 0 and not forgiven:
            self.fault(line, f"$ {command}\nends with status {self.status}:\n{text}")
        elif shown and not matches(shown, text):
            expected = "".join(f"{row}\n" for row in shown)
            self.fault(line, f"$ {command}\nExpected:\n{expected}Got:\n{text}")

    def run_python(self, block):
        text, names = "\n".join(block.lines) + "\n", self.module.__dict__
        if ">>>" in text:
            test = doctest.DocTestParser().get_doctest(text, {}, self.page.name, str(self.page), block.line)
            test.globs = names # not a copy
            runner = doctest.DocTestRunner(verbose=False, optionflags=doctest.ELLIPSIS
                                           | doctest.NORMALIZE_WHITESPACE)
            told = []
            runner.run(test, out=told.append, clear_globs=False)
            if told:
                self.fault(block.line, "".join(told))
            return
        try:
            # Lines count from the top of the page, so that a traceback shows the page.
            exec(compile("\n" * block.line + text, str(self.page), "exec"), names)
        except BaseException:
            self.fault(block.line, traceback.format_exc())


def anchor(heading):
    """The name by which a heading is linked."""
    words = re.sub(r"[`*]|\[([^]]*)\]\([^)]*\)", r"\1", heading).strip().lower()
    return re.sub(r"[^\w\- ]", "", words).replace(" ", "-")


def headings(text):
    return {anchor(line.lstrip("#")) for line in read_page(text)[1] if re.match(r"#+ ", line)}


def broken_links(page, prose):
    for target in LINK.findall("\n".join(prose)):
        if re.match(r"[a-z]+:", target):
            continue
        name, _, place = target.partition("#")
        file = page.parent / name if name else page
        if not file.exists():
            yield f"{page}: there is no {target}"
        elif place and file.suffix == ".md" and place not in headings(file.read_text()):
            yield f"{page}: {target} is no heading"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("page", type=lambda name: pathlib.Path(name).resolve())
    parser.add_argument("--copy", action="append", default=[], type=pathlib.Path,
                        help="a folder that the page's folder has a copy of")
    parser.add_argument("--programs", default=os.curdir, help="a folder in front of PATH")
    options = parser.parse_args()
    programs = os.path.abspath(options.programs)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name) / "page"
        folder.mkdir()
        for original in options.copy:
            shutil.copytree(original, folder / original.name)
        # The interpreter of the page's commands is that of its Python.
        interpreter = os.path.dirname(sys.executable)
        os.environ |= {"PATH": f"{programs}:{interpreter}:{os.environ['PATH']}",
                       "XDG_CONFIG_HOME": f"{name}/config",
                       "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen"}
        os.chdir(folder)
        blocks, prose = read_page(options.page.read_text())
        page_run = PageRun(options.page, folder)
        sys.modules["__main__"] = page_run.module
        page_run.run(blocks)
        os.chdir("/")
    faults = page_run.faults + list(broken_links(options.page, prose))
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
