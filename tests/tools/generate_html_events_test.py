#!/usr/bin/env python3
"""Tests of generate_html_events.py: faulty tables are refused at their line.

Usage: generate_html_events_test.py FOLDER_OF_THE_GENERATOR
"""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, sys.argv.pop(1))
import generate_html_events  # noqa: E402

LOAD = "event onload 3EB\n"
ERROR = "event onerror 3EA (text: text)\n"
IDENTIFIER = "{96A0A4E0-D062-11CF-94B6-00AA0060275C}"
OTHER = IDENTIFIER.replace("96", "97")
WINDOW = f"class TWindow {IDENTIFIER}: onload\n"

FAULTS = [
    ("", "there is no class"),
    (LOAD + LOAD, ":2: onload stands twice"),
    ("event onload 3EG\n", ":1: cannot read 'event onload 3EG'"),
    ("event onload 3EB (text: string)\n", ":1: cannot read the argument 'text: string'"),
    (LOAD + "list All:\n    onload\n    onhelp\n", ":2: there is no event onhelp"),
    (LOAD + "list All: onload\nlist All: onload\n", ":3: the list All stands twice"),
    (LOAD + f"class TWindow {IDENTIFIER}: onhelp\n", ":2: there is no event onhelp"),
    (LOAD + "class TWindow {96A0A4E0}: onload\n", ":2: cannot read"),
    (LOAD + WINDOW + WINDOW, ":3: TWindow stands twice"),
    (LOAD + WINDOW + f"class TOther {IDENTIFIER}: onload\n", ":3: TOther and TWindow share"),
    (LOAD + f"class TWindow {IDENTIFIER}: onload onload\n", "onload has the name or DISPID of onload"),
    (
        LOAD + f"event onhelp 3EB\nlist All: onload\nclass TWindow {IDENTIFIER}: All onhelp\n",
        ":4: onhelp has the name or DISPID of onload",
    ),
]


def parse(text):
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "test.table"
        path.write_text(text, encoding="utf-8")
        return generate_html_events.parse(path)


class GenerateHtmlEventsTest(unittest.TestCase):
    def test_refuses_a_faulty_table_and_says_where(self):
        for text, message in FAULTS:
            with self.subTest(message=message):
                with self.assertRaises(generate_html_events.TableError) as caught:
                    parse(text)
                self.assertIn(message, str(caught.exception))

    def test_passes_the_object_to_events_without_arguments_of_their_own(self):
        table = parse(LOAD + ERROR + f"class TWindow {IDENTIFIER} with object: onload onerror\n")
        kinds = {e.name: [kind for _, kind in e.arguments] for e in table.classes["TWindow"].events}
        self.assertEqual(kinds, {"onload": ["object"], "onerror": ["text"]})

    def test_keeps_the_events_with_and_without_object_of_one_list_apart(self):
        table = parse(
            LOAD + f"list All: onload\nclass TPlain {IDENTIFIER}: All\nclass TTwo {OTHER} with object: All\n"
        )
        plain, two = (table.bases[table.classes[name].base].events[0] for name in ("TPlain", "TTwo"))
        self.assertEqual((len(plain.arguments), len(two.arguments)), (0, 1))


if __name__ == "__main__":
    unittest.main()
