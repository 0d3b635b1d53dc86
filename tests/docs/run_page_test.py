"""The runner of the documentation's examples finds what is wrong with a page."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

RUNNER = pathlib.Path(__file__).with_name("run_page.py")


class RunPageTest(unittest.TestCase):
    def run_page(self, text):
        """Status and words of the runner for a page."""
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "samples").mkdir()
            (folder / "samples" / "car.WSP").write_text("a car\n")
            (folder / "page.md").write_text(text)
            done = subprocess.run([sys.executable, RUNNER, folder / "page.md", "--copy",
                                   folder / "samples"], capture_output=True, text=True, check=False)
        return done.returncode, done.stdout + done.stderr

    def test_a_right_page_passes(self):
        status, words = self.run_page("""# Two words
See [above](#two-words).
```console
$ cat samples/car.WSP
a car
$ cd samples && export CAR=x
$ ls; echo $CAR > made; false
car.WSP
$ echo $?
1
$ printf '%s\\n' 1 2 \\
>   3 $CAR
1
...
x
```
```python
import os
def twice(x): return 2 * x
```
```python
>>> twice(1.5), open("samples/made").read()
(3.0, 'x...')
>>> import pickle; pickle.loads(pickle.dumps(twice))(2)
4
```
```sh
exit 3
```
""")
        self.assertEqual((status, words.strip()), (0, ""))

    def test_each_fault_is_told_with_its_line(self):
        for text, told in (
                ("```console\n$ echo 3.1\n3.2\n```\n", "page.md:2: $ echo 3.1\nExpected:\n3.2\nGot:\n3.1\n"),
                ("```console\n$ false\n$ echo done\n```\n", "page.md:2: $ false\nends with status 1"),
                ("```console\n$ false | cat\n```\n", "ends with status 1"),
                ("```console\n$ echo a; echo b\na\n```\n", "Got:\na\nb\n"),
                ("```console\n$ echo 'open\n```\n", "page.md:2: $ echo 'open\nends with status 2"),
                ("```python\n>>> 1 + 1\n3\n```\n", "line 2, in page.md"),
                ("\n```python\nx = 1\nx.y\n```\n", "line 4, in <module>\n    x.y"),
                ("```bash\n$ true\n```\n", "page.md:1: a block is one of"),
                ("```console\n$ true\n", "line 1 never ends"),
                ("[gone](gone.md)\n", "there is no gone.md"),
                ("# Here\n[there](#there)\n", "#there is no heading")):
            status, words = self.run_page(text)
            self.assertEqual(status, 1, text)
            self.assertIn(told, words)


if __name__ == "__main__":
    unittest.main()
