"""The sheet beside the bench fits on one page in each language, and names the words that stand on the operator's page."""

import pathlib
import sys
import unittest
import xml.etree.ElementTree

from surroundings import need_modules

need_modules("weasyprint")

import weasyprint  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
VERDICTS = ["PASS", "FAIL", "OUT OF TOLERANCE", "NOT MEASURED", "NO RESULT"]


def translations():
    root = xml.etree.ElementTree.parse(ROOT / "src/app/operator/korean.ts").getroot()
    return {message.find("source").text: message.find("translation").text for message in root.iter("message")}


class OperatorsSheet(unittest.TestCase):
    def test_fits_on_one_page(self):
        for language in ["en", "ko"]:
            document = weasyprint.HTML(filename=str(ROOT / f"docs/sheet/operator.{language}.html")).render()
            self.assertEqual(len(document.pages), 1, language)

    def test_has_the_words_of_the_page(self):
        words = VERDICTS + ["Initialize now", "Do not run it", "Not ready for a unit"]
        korean = translations()
        for language, wanted in [("en", words), ("ko", [korean[word] for word in words])]:
            sheet = (ROOT / f"docs/sheet/operator.{language}.html").read_text(encoding="utf-8")
            for word in wanted:
                self.assertIn(word, sheet, language)


if __name__ == "__main__":
    sys.exit(unittest.main())
