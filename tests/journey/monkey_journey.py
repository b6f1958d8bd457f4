"""Two minutes of the monkey; the nightly run gives it ten (tests/journey/monkey 600)."""
import pathlib
import subprocess
import sys
import unittest

MONKEY = pathlib.Path(__file__).resolve().parent / "monkey"


class Monkey(unittest.TestCase):
    def test_two_minutes(self):
        self.assertEqual(subprocess.run([sys.executable, str(MONKEY), "120"], check=False).returncode, 0)
