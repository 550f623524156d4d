"""What the pages on Python show is run as it stands there, a page in a folder of its own."""

import contextlib
import io
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

PROJECT = pathlib.Path(os.environ["PROJECT"])
BLOCK = re.compile(r"^```(python|console)\n(.*?)^```\n(?:\n```text\n(.*?)^```\n)?", re.M | re.S)
COMMAND = re.compile(r"^\$ (.*\n)((?:(?!\$ ).*\n)*)", re.M)


class Documents(unittest.TestCase):
    maxDiff = None

    def follow(self, name, picture=None):
        """Runs the blocks of a page, one after the other, and compares the picture that they draw.
        @return how many there are
        """
        blocks = BLOCK.findall((PROJECT / "docs" / name).read_text())
        before = os.getcwd()
        with tempfile.TemporaryDirectory() as folder:
            os.chdir(folder)
            try:
                os.symlink(PROJECT / "samples", "samples")
                names = {"__name__": "__main__"}
                for kind, text, expected in blocks:
                    if kind == "console":
                        for command, output in COMMAND.findall(text):
                            done = subprocess.run(["bash", "-ec", command], stdout=subprocess.PIPE, text=True)
                            self.assertEqual(done.stdout, output, command)
                    else:
                        printed = io.StringIO()
                        with contextlib.redirect_stdout(printed):
                            exec(compile(text, name, "exec"), names)
                        self.assertEqual(printed.getvalue(), expected, text)
                if picture is not None:
                    self.compare(pathlib.Path(picture), PROJECT / "docs/pictures" / picture)
            finally:
                os.chdir(before)
        return len(blocks)

    def compare(self, drawn, kept):
        if "RENEW" in os.environ:
            kept.write_bytes(drawn.read_bytes())
        self.assertEqual(drawn.read_bytes(), kept.read_bytes(), f"{kept} is not what is drawn: RENEW=1 renews it")

    def test_what_isdbt_inspect_finds(self):
        self.assertEqual(self.follow("python.md"), 12)

    def test_the_intervals_of_tables(self):
        self.assertEqual(self.follow("python-intervals.md", "intervals.svg"), 3)


if __name__ == "__main__":
    unittest.main()
