"""The command line tool as its users run it, against the batch program and other readers of its files."""

import csv
import glob
import io
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import ezdxf
import openpyxl

SOURCE, PROGRAMS = sys.argv.pop(), sys.argv.pop()
SAMPLES = sorted(glob.glob(f"{SOURCE}/samples/**/*.WSP", recursive=True))
PUSHROD = f"{SOURCE}/samples/formula-front-pushrod.WSP"
REAR = f"{SOURCE}/samples/formula-rear-pushrod.WSP"
BATCH_UNITS = "mm,kg,kg,lb/in"  # those of a program that was never set up

# The tables of the batch program by their numbers, and the view of the tool that shows the same.
VIEWS = {1: "antis", 2: "lateral", 3: "plan", 4: "spring", 5: "bar", 6: "angles", 7: "custom", 8: "coordinates",
         9: "loads", 10: "lengths", 11: "dynamics", 12: "coefficients", 16: "all-channels"}


class Folder(unittest.TestCase):
    """A test in a folder of its own."""

    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        self.environment = {**os.environ, "LC_ALL": "C", "XDG_CONFIG_HOME": f"{self.folder}/config"}

    def run_program(self, program, *arguments, stdin=b""):
        return subprocess.run([f"{PROGRAMS}/{program}", *arguments], input=stdin, cwd=self.folder,
                              env=self.environment, capture_output=True, check=False)

    def tool(self, *arguments, stdin=b"", status=0):
        """Standard output; for another status than 0 standard error."""
        run = self.run_program("corvanta-tool", *arguments, stdin=stdin)
        self.assertEqual(run.returncode, status, run.stderr.decode())
        return (run.stdout if status == 0 else run.stderr).decode()

    def path(self, name):
        return f"{self.folder}/{name}"

    def write(self, name, text):
        with open(self.path(name), "w", encoding="utf-8", newline="") as file:
            file.write(text)
        return self.path(name)


def batch_tables(text):
    """Title, position, heads and rows of each table that the batch program wrote."""
    tables = []
    for part in text.replace("\r", "").split("TITLE:\t")[1:]:
        title, *lines = part.rstrip("\n").split("\n")
        place = []
        while lines and lines[0].startswith("Values at"):
            place.append(lines.pop(0))
        tables.append((title, ", ".join(place), [[cell.strip() for cell in line.split("\t")] for line in lines]))
    return tables


def cells_of(table):
    """A table of the tool's JSON as the batch program writes it: heads, units, rows."""
    heads = [table["heads"]] + ([table["units"]] if any(table["units"]) else [])
    return heads + table["rows"]


def is_number(text):
    return re.fullmatch(r"-?[\d,]*\.?\d+", text) is not None


class Export(Folder):
    def same(self, cell, text, where):
        if isinstance(cell, str):
            self.assertEqual(cell, text, where)
        else:
            self.assertTrue(is_number(text), (where, cell, text))
            self.assertEqual(cell, float(text.replace(",", "")), where)

    def compare(self, sample, number, along):
        shutil.copy(sample, self.path("a.WSP"))
        variable = "2" if along == "wheel" else "1"
        custom = ["-c", "14,36"] if number == 7 else []
        self.run_program("corvanta-batch", "/input=a.WSP", "/output=b.txt", "/type=2", "/nogui",
                         f"/table={number}", f"/variable={variable}")
        with open(self.path("b.txt"), encoding="cp1252", newline="") as file:
            expected = [each for each in batch_tables(file.read()) if len(each[2]) > 2]
        os.remove(self.path("b.txt"))
        found = json.loads(self.tool("export", "-v", VIEWS[number], "--along", along, *custom, "--units",
                                     BATCH_UNITS, "-f", "json", "a.WSP"))
        self.assertEqual(len(found), len(expected), (sample, number))
        for table, (title, place, rows) in zip(found, expected):
            self.assertEqual((table["title"], table["position"]), (title, place))
            cells = rows if number == 11 else cells_of(table)
            if number == 11:  # lines, not cells
                rows, cells = table["rows"], [[line[0]] for line in rows]
                rows = [[str(cell) for cell in row] for row in rows]
            while rows and not any(rows[-1]):
                rows.pop()
            self.assertEqual(len(cells), len(rows), (sample, title))
            for row, line in zip(cells, rows):
                for cell, text in zip(row, line, strict=True):
                    self.same(cell, text, (sample, title))

    def test_every_view_of_every_sample_is_what_the_batch_program_exports(self):
        lists = self.path("config/Pewter Lantern/Corvanta/Settings")
        os.makedirs(lists)
        self.write(f"{lists[len(self.folder) + 1:]}/customchannels.txt",
                   "[DEC SEP]\t.\r\n[FILEVERSION]\tSUSP CUSTOM EXPORT LIST 2.0\r\n[COUNT]\t2\r\n"
                   "[0]\t14\r\n[1]\t36\r\n\r\n")
        for sample in SAMPLES:
            for number in VIEWS:
                for along in ("wheel", "rack") if number < 8 else ("wheel",):
                    self.compare(sample, number, along)

    def test_all_forms_hold_the_same(self):
        want = json.loads(self.tool("export", "-f", "json", "-c", "Camber Angle,Half Track", PUSHROD))
        self.assertIn("custom", [table["view"] for table in want])
        self.tool("export", "-f", "xlsx", "-o", "a.xlsx", "-c", "Camber Angle,Half Track", PUSHROD)
        book = openpyxl.load_workbook(self.path("a.xlsx"))
        self.assertEqual(book.sheetnames, [table["view"] for table in want])
        for table in want:
            sheet = [["" if cell is None else cell for cell in row]
                     for row in book[table["view"]].iter_rows(min_row=3, values_only=True)]
            self.assertEqual(sheet, [table["heads"], table["units"], *table["rows"]])
        self.assertEqual(book["lateral"]["B5"].number_format, "0.000")
        for form, decimal, separator in (("tsv", ".", "\t"), ("csv", ".", ","), ("csv", ",", ";")):
            text = self.tool("export", "-f", form, "--decimal", decimal, "-v", "lateral", PUSHROD)
            rows = list(csv.reader(io.StringIO(text), delimiter=separator))
            self.assertEqual(rows[0][1], "Camber Angle [deg]")
            lateral = next(table for table in want if table["view"] == "lateral")
            numbers = [[float(cell.replace(",", ".")) for cell in row] for row in rows[1:]]
            self.assertEqual(numbers, lateral["rows"])

    def test_units_and_places_are_those_that_were_asked_for(self):
        def first(*options):
            return json.loads(self.tool("export", "-f", "json", "-v", "lateral", *options, PUSHROD))[0]
        metric, imperial = first(), first("--units", "imperial")
        self.assertEqual(imperial["units"][2], "in")
        self.assertAlmostEqual(imperial["rows"][0][2] * 25.4, metric["rows"][0][2], delta=0.013)
        # The table along the rack at full bump holds the first row of the one along the wheel.
        across = first("--along", "rack", "--wheel", "25")
        straight = next(row for row in across["rows"] if row[0] == 0)
        self.assertEqual(straight[1:], metric["rows"][0][1:])

    def test_streams_folders_and_what_goes_wrong(self):
        with open(PUSHROD, "rb") as file:
            self.assertEqual(self.tool("export", "-v", "lateral", "-", stdin=file.read()),
                             self.tool("export", "-v", "lateral", PUSHROD))
        os.mkdir(self.path("out"))
        broken = self.write("broken.WSP", "no document")
        words = self.tool("export", "-o", "out", broken, *SAMPLES[:2], status=1)
        self.assertIn("broken.WSP: ", words)  # and the others are written all the same
        self.assertEqual(sorted(os.listdir(self.path("out"))),
                         [os.path.basename(sample).replace("WSP", "tsv") for sample in SAMPLES[:2]])
        self.assertIn("name a folder", self.tool("export", "-o", "x.tsv", *SAMPLES[:2], status=1))
        shutil.copy(PUSHROD, self.path("in.WSP"))
        os.mkdir(self.path("b"))
        shutil.copy(PUSHROD, self.path("b/in.WSP"))
        for lost in (["export", "-o", "in.WSP", "in.WSP"], ["dxf", "-o", "./in.WSP", "in.WSP"],
                     ["sweep", "in.WSP", "--vary", "KSpring=1", "--figure", "14", "-o", "in.WSP"],
                     ["export", "-o", "out", "in.WSP", "b/in.WSP"], ["export", "in.WSP", "b/in.WSP"],
                     ["export", "-v", "custom", "in.WSP"]):
            self.tool(*lost, status=1)
        with open(self.path("in.WSP"), "rb") as kept, open(PUSHROD, "rb") as sample:
            self.assertEqual(kept.read(), sample.read())
        for wrong in (["export"], ["export", "-v", "camber", PUSHROD], ["nothing"], [],
                      ["export", "--units", "mm,N", PUSHROD]):
            self.tool(*wrong, status=2)
        self.assertIn("no such channel", self.tool("export", "-c", "Chamber", PUSHROD, status=1))
        self.tool("export", "-o", "missing/x.tsv", PUSHROD, status=1)


class Drawing(Folder):
    def lines(self, *options):
        self.tool("dxf", "-o", "a.dxf", *options, PUSHROD)
        with open(self.path("a.dxf"), encoding="ascii") as file:
            groups = [line.strip() for line in file]
        pairs = list(zip(groups[::2], groups[1::2]))
        return [float(value) for code, value in pairs if code in ("10", "20", "30", "11", "21", "31")]

    def test_the_second_form_holds_the_lines_of_the_classic_one_for_every_reader(self):
        classic = self.lines("--form", "classic")
        modern = self.lines()
        document = ezdxf.readfile(self.path("a.dxf"))
        self.assertEqual(document.dxfversion, "AC1009")
        self.assertFalse(document.audit().has_errors)
        read = [number for line in document.modelspace().query("LINE")
                for number in (*line.dxf.start, *line.dxf.end)]
        self.assertGreater(len(read), 100)
        self.assertEqual(read, classic)
        self.assertEqual(len(modern), len(classic))

    def test_draws_the_points_of_the_position_that_was_asked_for(self):
        points = self.tool("export", "-v", "coordinates", "--wheel", "25", "--rack", "-28", PUSHROD)
        row = next(line.split("\t") for line in points.splitlines() if line.startswith("Trackrod inboard"))
        drawn = self.lines("--wheel", "25", "--rack", "-28")
        ends = [drawn[n:n + 3] for n in range(0, len(drawn), 3)]
        for point, is_drawn in (([float(cell) for cell in row[1:]], True), ([-118, 166.5, 197.5], False)):
            near = [end for end in ends if max(abs(a - b) for a, b in zip(end, point)) < 0.006]
            self.assertEqual(bool(near), is_drawn)
        run = self.run_program("corvanta-tool", "dxf", "--rack", "3", PUSHROD)
        self.assertIn(b"no step at 3 mm of rack travel; shown is 0.00 mm", run.stderr)
        for travel in ("1000", "nan", "2,5"):
            self.tool("dxf", "--wheel", travel, "-o", "b.dxf", PUSHROD, status=1)
        self.tool("dxf", "--decimal", ",", "--wheel", "2,5", "-o", "b.dxf", PUSHROD)


class CheckAndConvert(Folder):
    def test_documents_come_out_as_they_went_in(self):
        for sample in SAMPLES:
            with open(sample, "rb") as file:
                want = file.read()
            self.tool("convert", sample, "-o", "a.WSP")
            with open(self.path("a.WSP"), "rb") as file:
                self.assertEqual(file.read(), want, sample)

    def test_points_go_out_to_a_table_and_come_back(self):
        table = self.tool("convert", "-t", "csv", "--units", "imperial", PUSHROD)
        rows = list(csv.reader(io.StringIO(table)))
        row = next(row for row in rows if row[0] == "ptTRI")
        self.assertAlmostEqual(float(row[4]) * 25.4, 197.5, places=5)
        row[4] = str(200 * float(row[4]) / 197.5)
        points = self.write("p.csv", "\n".join(",".join(each) for each in (rows[0], row)))
        self.tool("convert", "-p", points, "--units", "imperial", PUSHROD, "-o", "a.WSP")
        self.assertEqual(self.tool("convert", "-t", "csv", "a.WSP"),
                         self.tool("convert", "-t", "csv", PUSHROD).replace(",197.5\n", ",200\n"))
        for text, words in (("ptTRI,,1,2\n", "Line 2"), ("ptTRI,,1,2,x\n", "Z"),
                            ("ptXX,,1,2,3\n", "ptXX"), ("ptTRI,,1,2,3\nptTRI,,1,2,3\n", "Line 3")):
            wrong = self.write("w.csv", ",".join(rows[0]) + "\n" + text)
            self.assertIn(words, self.tool("convert", "-p", wrong, PUSHROD, "-o", "b.WSP", status=1))
            self.assertFalse(os.path.exists(self.path("b.WSP")))

    def test_every_sample_is_found_sound_and_a_broken_one_is_told(self):
        for line in self.tool("check", *SAMPLES).splitlines():
            self.assertNotIn("error", line)
        high = self.write("p.csv", "Point,Name,X,Y,Z\nptTRI,,-118,166.5,1975\n")
        self.tool("convert", "-p", high, PUSHROD, "-o", "a.WSP")
        run = self.run_program("corvanta-tool", "check", "a.WSP")
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"a.WSP: error: ", run.stdout)
        with open(PUSHROD, encoding="cp1252", newline="") as file:
            self.write("m.WSP", re.sub("\\[ptTRI\\][^\\[]*", "", file.read()))
        for options, status in (([], 0), (["--strict"], 1)):
            run = self.run_program("corvanta-tool", "check", *options, "m.WSP")
            self.assertEqual(run.returncode, status)
            self.assertIn(b"m.WSP: warning: ", run.stdout)
        self.assertIn("Camber Angle: -3.200 deg", self.tool("info", PUSHROD))


class Sweep(Folder):
    AXES = ["--vary", "ptTRI.Z=190:205:7", "--vary", "KSpring=100,120,150", "--vary", "trackrod=-1:1:3"]
    FIGURES = ["--figure", "Steer Angle - Bump:gain", "--figure", "Camber Angle:at=-20",
               "--figure", "Ackerman %:rack"]

    def sweep(self, *options, axes=None, status=0):
        return self.tool("sweep", PUSHROD, *(axes or self.AXES), *self.FIGURES, *options, status=status)

    def test_rows_are_those_of_documents_made_by_hand(self):
        text = self.sweep(axes=["--vary", "ptTRI.Z=190,200"])
        rows = list(csv.DictReader(io.StringIO(text)))
        self.assertEqual(len(rows), 2)
        for row in rows:
            points = self.write("p.csv", f"Point,Name,X,Y,Z\nptTRI,,-118,166.5,{row['Trackrod inboard pickup Z [mm]']}\n")
            self.tool("convert", "-p", points, PUSHROD, "-o", "a.WSP")
            lateral = json.loads(self.tool("export", "-v", "lateral", "-f", "json", "a.WSP"))[0]
            camber = next(line[1] for line in lateral["rows"] if line[0] == -20)
            self.assertAlmostEqual(float(row["Camber Angle at -20 mm [deg]"]), camber, delta=0.0005)

    def test_shards_make_up_the_whole_and_an_interrupted_one_goes_on(self):
        whole = self.sweep("--jobs", "1")
        lines = whole.splitlines(keepends=True)
        self.assertEqual(len(lines), 1 + 7 * 3 * 3)
        shards = [self.sweep("--shard", f"{n}/4").splitlines(keepends=True) for n in range(1, 5)]
        self.assertEqual([line for shard in shards for line in shard[1:]], lines[1:])
        text = "".join(shards[1])
        for length in (0, 5, len(shards[1][0]), len(text) // 2, len(text) - 1, len(text)):
            self.write("s.csv", text[:length])
            self.sweep("--shard", "2/4", "--resume", "-o", "s.csv")
            with open(self.path("s.csv"), encoding="utf-8", newline="") as file:
                self.assertEqual(file.read(), text, length)
        other = [axis.replace("190:205", "191:206") for axis in self.AXES]
        for options, axes in ((["--shard", "3/4"], None), (["--shard", "2/4"], other), (["--shard", "2/9"], None)):
            self.assertIn("other variants", self.sweep(*options, "--resume", "-o", "s.csv", axes=axes, status=1))
        self.sweep("-o", "s.csv", axes=["--vary", "ptSTI.X=1"], status=1)
        with open(self.path("s.csv"), encoding="utf-8", newline="") as file:
            self.assertEqual(file.read(), text)

    def test_variants_that_can_t_be_solved_have_their_reason_in_their_row(self):
        rows = list(csv.DictReader(io.StringIO(self.sweep(axes=["--vary", "ptTRI.Z=197.5,2500"]))))
        self.assertEqual([bool(row["failure"]) for row in rows], [False, True])
        self.assertEqual(rows[1]["Steer Angle - Bump gain [deg/mm]"], "")
        text = self.tool("sweep", REAR, "--vary", "KSpring=100", "--figure", "Anti-Rise %", "--figure", "14:at=999")
        row = next(csv.DictReader(io.StringIO(text)))
        self.assertGreater(float(row["Anti-Rise % [%]"]), 0)
        self.assertIn("no value of Camber Angle", row["failure"])
        for axis in ("ptTRI.W=1", "ptTRI.Z", "ptTRI.Z=a", "ptTRI.Z=1:2", "ptTRI.Z=1:2:0", "ptSTI.X=1"):
            self.sweep(axes=["--vary", axis], status=1)
        self.sweep("--shard", "5/4", status=1)


class Study(Folder):
    FILE = f"{SOURCE}/samples/formula-front-pushrod.study"

    def answers(self, *options, file=FILE):
        tables = json.loads(self.tool("study", "-f", "json", *options, file))
        return {table["view"]: table for table in tables}

    def test_answers_all_that_is_asked(self):
        answers = self.answers()
        self.assertEqual({view.split("-")[0] for view in answers},
                         {"sweep", "tolerance", "optimise", "region", "fit", "setup"})
        # The readings are those of a trackrod pickup 0.9 mm higher, to the third decimal.
        fitted = answers["fit-coordinates"]["rows"][0]
        self.assertAlmostEqual(fitted[3], 0.9, delta=3 * fitted[4])
        places = [row[1] for row in answers["region-demands"]["rows"][:-1]]
        self.assertEqual(sum(places), 3 * 5 * 9)

    def test_what_optimise_found_holds_in_the_document_that_it_kept(self):
        before = self.answers("-s", "optimise", "--keep", "best.WSP")
        self.assertIn("All targets hold", before["optimise-found"]["rows"][0][0])
        self.assertIn("one can be kept", self.tool("study", "--keep", "k.WSP", self.FILE, status=1))
        after = self.answers("-s", "optimise", "--document", "best.WSP")
        self.assertTrue(all(row[2] == "holds" for row in after["optimise-targets"]["rows"]))

    def test_looks_at_the_chart_and_figure_in_hand(self):
        slopes = self.answers("-s", "sensitivity", "--chart", "Steer Angle - Bump")
        rows = {row[0]: row[1] for row in slopes["sensitivity-per-length"]["rows"]}
        text = self.tool("sweep", PUSHROD, "--vary", "ptTRI.Z=197.4,197.6", "--figure", "Steer Angle - Bump:gain")
        low, high = (float(row["Steer Angle - Bump gain [deg/mm]"]) for row in csv.DictReader(io.StringIO(text)))
        self.assertAlmostEqual(rows["Trackrod inboard Z"], (high - low) / 0.2, delta=1e-6)

    def test_tells_what_can_t_be_answered(self):
        shutil.copy(PUSHROD, self.path("in.WSP"))
        self.tool("study", "-d", "in.WSP", "-s", "optimise", "-o", "in.WSP", self.FILE, status=1)
        with open(self.path("in.WSP"), "rb") as kept, open(PUSHROD, "rb") as sample:
            self.assertEqual(kept.read(), sample.read())
        empty = self.write("e.study", '{"schema": "corvanta-study", "version": 1, "document": "gone.WSP", '
                                      '"variants": [], "targets": [], "charts": []}')
        self.assertIn("gone.WSP is not there", self.tool("study", empty, status=1))
        self.assertIn("asks nothing", self.tool("study", "-d", PUSHROD, empty, status=1))
        words = self.tool("study", "-d", PUSHROD, "-s", "optimise", empty, status=1)
        self.assertIn("optimise: No coordinate is free", words)


class Completion(Folder):
    def complete(self, *words):
        script = (f'. "{SOURCE}/packaging/completion/corvanta-tool"; COMP_WORDS=("$@"); '
                  'COMP_CWORD=$(($# - 1)); _corvanta_tool; printf "%s\\n" "${COMPREPLY[@]}"')
        run = subprocess.run(["bash", "-c", script, "bash", f"{PROGRAMS}/corvanta-tool", *words],
                             cwd=self.folder, capture_output=True, check=True)
        return run.stdout.decode().split()

    def test_commands_options_and_words_are_offered(self):
        self.assertIn("sweep", self.complete(""))
        self.assertEqual(self.complete("ex"), ["export"])
        self.assertEqual(self.complete("export", "--vi"), ["--view"])
        self.assertEqual(self.complete("export", "-f", "x"), ["xlsx"])
        self.assertEqual(self.complete("export", "--view", "lateral,sp"), ["lateral,spring"])
        self.assertEqual(self.complete("study", "--study", "s"), ["sensitivity", "sweep", "setup"])
        self.write("a.WSP", "")
        self.assertEqual(self.complete("check", "a"), ["a.WSP"])


@unittest.skipUnless(os.path.exists(f"{PROGRAMS}/corvanta"), "there is no desktop program")
class Report(Folder):
    def test_the_pages_hold_the_numbers_of_the_table(self):
        self.tool("report", "-v", "lateral", "--coordinates", "-o", "a.pdf", PUSHROD)
        pages = subprocess.run(["pdftotext", "-layout", self.path("a.pdf"), "-"], check=True,
                               capture_output=True).stdout.decode()
        for line in self.tool("export", "-v", "lateral", PUSHROD).splitlines()[1:]:
            self.assertRegex(pages, r"\s+".join(re.escape(cell) for cell in line.split("\t")))
        self.assertIn("Trackrod inboard", pages)
        self.assertNotIn("Link Loads", pages)

    def test_no_pages_of_what_can_t_be_calculated(self):
        broken = self.write("broken.WSP", "no document")
        self.tool("report", "-o", "b.pdf", broken, status=1)
        self.assertFalse(os.path.exists(self.path("b.pdf")))


if __name__ == "__main__":
    unittest.main()
