#!/usr/bin/env python3
"""Tests of generate_tlb.py: faulty descriptions are refused at their line.

Usage: generate_tlb_test.py FOLDER_OF_THE_GENERATOR
"""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, sys.argv.pop(1))
import generate_tlb  # noqa: E402

LIBRARY = "library Test {10430000-72AE-11D5-B316-0800309CC2CE} version 5.0\n"
ROOT = LIBRARY + "interface IRoot {10430001}\n"

FAULTS = [
    ("", "no library line"),
    ("interface IRoot {10430001}\n", ":1: the library line must come first"),
    (LIBRARY + "    Get_Name() -> text\n", ":2: an operation stands before"),
    (ROOT + "interface IRoot {10430003}\n", ":3: IRoot stands twice"),
    (LIBRARY + "interface IChild : IRoot {10430001}\n", ":2: IChild stands before its parent IRoot"),
    (ROOT + "interface IOther {10430001}\n", "IOther and IRoot share 10430001"),
    (ROOT + "interface IOther {10430002}\n", "IOther and IRoot share 10430002"),
    (ROOT + "    Get_Name() -> string\n", "IRoot.Get_Name uses string"),
    (ROOT + "    Set_Name(name: txt)\n", "IRoot.Set_Name uses txt"),
    (ROOT + "    Set_Name(text)\n", ":3: cannot read the argument 'text'"),
    (ROOT + "    Get_Name -> text\n", ":3: cannot read the operation"),
    (ROOT + "interface IOther 10430003\n", ":3: cannot read the interface"),
]


def parse(text):
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "test.types"
        path.write_text(text, encoding="utf-8")
        return generate_tlb.parse(path)


class GenerateTlbTest(unittest.TestCase):
    def test_refuses_a_faulty_description_and_says_where(self):
        for text, message in FAULTS:
            with self.subTest(message=message):
                with self.assertRaises(generate_tlb.DescriptionError) as caught:
                    parse(text)
                self.assertIn(message, str(caught.exception))

    def test_keeps_an_operation_that_a_derived_interface_repeats_reachable(self):
        library = parse(
            ROOT + "    save()\ninterface IChild : IRoot {10430003}\n    save(comment: text)\n"
        )
        self.assertIn("using IRoot::save;", generate_tlb.header(library))


if __name__ == "__main__":
    unittest.main()
