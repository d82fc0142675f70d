"""What is asked of run records in the hands of readers that nobody here wrote: Python's for JSON, XML, HTML and CSV, the
shell of SQLite, and a browser where there is one."""

import csv
import html.parser
import io
import json
import os
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as xml

RECORDS = os.environ["ORVANE_RECORDS"]
SAMPLE_STORE = os.environ["SAMPLE_STORE"]
SMALL = "019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60"
GUIDE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "docs", "records.md")
VOID = {"meta"}


class Page(html.parser.HTMLParser):
    """The text of a page, and whether each of its elements ends where it should."""

    def __init__(self, text):
        super().__init__(convert_charrefs=True)
        self.open, self.text, self.tags, self.wrong = [], [], set(), []
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attributes):
        self.tags.add(tag)
        if tag not in VOID:
            self.open.append(tag)

    def handle_startendtag(self, tag, attributes):
        self.tags.add(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.wrong.append(tag)

    def handle_data(self, data):
        self.text.append(data)


class Readers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.file = os.path.join(cls.folder.name, "records.sqlite")
        cls.store = "sqlite:" + cls.file
        subprocess.run([SAMPLE_STORE, cls.store, "2"], check=True)

    def ask(self, *words):
        return subprocess.run([RECORDS, "--store", self.store, *words], check=True, capture_output=True, timeout=60).stdout

    def exported(self, ending, *runs):
        path = os.path.join(self.folder.name, "export" + ending)
        self.ask("export", *runs, "--to", path)
        with open(path, encoding="utf-8", newline="") as file:
            return file.read()

    def shell(self, words):
        run = subprocess.run(["sqlite3", "-json", "-readonly", self.file, words], check=True, capture_output=True, timeout=60)
        return json.loads(run.stdout or b"[]")

    @unittest.skipUnless(shutil.which("sqlite3"), "no shell of SQLite")
    def test_lists_and_records_are_the_rows_of_the_tables(self):
        self.assertEqual(json.loads(self.ask("list", "--json")), self.shell("SELECT * FROM run ORDER BY began DESC, id DESC"))
        record = json.loads(self.ask("show", SMALL, "--json"))
        for member, table, order in (("steps", "step", "position"), ("readings", "reading", "position"),
                                     ("passes", "pass", "reading, position"), ("boxes", "box", "position")):
            rows = self.shell(f"SELECT * FROM {table} WHERE run = '{SMALL}' ORDER BY {order}")
            for row in rows:
                del row["run"]
            self.assertEqual(record[member], rows, table)
            self.assertEqual([list(row) for row in record[member]], [list(row) for row in rows], table)
        tags = self.shell(f"SELECT key, value FROM tag WHERE run = '{SMALL}'")
        self.assertEqual(record["tags"], {row["key"]: row["value"] for row in tags})
        digests = self.shell(f"SELECT role, sha256 FROM run_document WHERE run = '{SMALL}' ORDER BY role")
        self.assertEqual(sorted((d["role"], d["sha256"]) for d in record["documents"]),
                         [(row["role"], row["sha256"]) for row in digests])

    @unittest.skipUnless(shutil.which("sqlite3"), "no shell of SQLite")
    def test_each_question_of_the_guide_has_an_answer(self):
        with open(GUIDE, encoding="utf-8") as file:
            questions = re.findall(r"```sql\n(.*?)```", file.read(), re.DOTALL)
        self.assertEqual(len(questions), 10)
        for question in questions:
            with self.subTest(question):
                self.assertNotEqual(self.shell(question), [])

    def test_json_of_one_run_is_its_object_and_of_several_an_array(self):
        self.assertEqual(json.loads(self.exported(".json", SMALL)), json.loads(self.ask("show", SMALL, "--json")))
        self.assertEqual([run["verdict"] for run in json.loads(self.exported(".json", SMALL, "last"))], ["FAIL", "PASS"])

    def test_csv_has_every_reading_and_no_formula(self):
        rows = list(csv.DictReader(io.StringIO(self.exported(".csv", SMALL)), strict=True))
        readings = json.loads(self.ask("show", SMALL, "--json"))["readings"]
        self.assertEqual([float(row["value"]) for row in rows], [reading["value"] for reading in readings])
        self.assertEqual([row["name"] for row in rows], [reading["name"] for reading in readings])
        self.assertEqual({row["serial"] for row in rows}, {"'=K7-0001"})

    def test_junit_counts_what_it_has(self):
        suites = xml.fromstring(self.exported(".xml", SMALL, "last"))
        self.assertEqual(suites.tag, "testsuites")
        for suite in suites:
            cases = suite.findall("testcase")
            self.assertEqual(int(suite.get("tests")), len(cases))
            self.assertEqual(int(suite.get("failures")), len(suite.findall("testcase/failure")))
        failure = suites.find("testsuite/testcase/failure")
        self.assertEqual(failure.text, 'level 5 is <outside> & "far"')
        self.assertEqual(failure.get("message"), failure.text)

    def test_html_is_sound_and_its_texts_are_texts(self):
        page = Page(self.exported(".html", SMALL, "last"))
        self.assertEqual((page.open, page.wrong), ([], []))
        self.assertFalse(page.tags & {"script", "link", "img", "iframe", "object", "embed"}, page.tags)
        self.assertIn('level 5 is <outside> & "far"', page.text)
        self.assertIn("<b>&</b>", page.text)

    @unittest.skipUnless(shutil.which("chromium"), "no browser")
    def test_a_browser_has_the_same_texts_and_prints_the_page(self):
        text = self.exported(".html", SMALL)
        source = os.path.join(self.folder.name, "export.html")
        printed = os.path.join(self.folder.name, "export.pdf")
        browser = ["chromium", "--headless", "--no-sandbox", "--disable-gpu",
                   "--user-data-dir=" + os.path.join(self.folder.name, "browser")]
        dom = subprocess.run([*browser, "--dump-dom", "file://" + source], check=True, capture_output=True, timeout=120)
        shown = Page(dom.stdout.decode())
        self.assertEqual("".join(shown.text).split(), "".join(Page(text).text).split())
        subprocess.run([*browser, "--print-to-pdf=" + printed, "file://" + source], check=True, capture_output=True,
                       timeout=120)
        with open(printed, "rb") as file:
            self.assertEqual(file.read(5), b"%PDF-")


if __name__ == "__main__":
    unittest.main(verbosity=2)
