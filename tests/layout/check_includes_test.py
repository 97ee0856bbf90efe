#!/usr/bin/env python3
"""Tests of check_includes.py on small source trees with one include each."""

import tempfile
import unittest
from pathlib import Path

import check_includes

WRONG = [
    ("server/A.cpp", "<QString>"),
    ("server/A.h", "<QtWidgets/QWidget>"),
    ("panel/A.cpp", "<qobject.h>"),
    ("contracts/A.h", "<grpcpp/grpcpp.h>"),
    ("frames/A.cpp", '"quorane.pb.h"'),
    ("ide/A.cpp", "<sqlite3.h>"),
    ("backend/service/A.cpp", "<sqlite3.h>"),
    ("backend/store/A.cpp", "<QString>"),
    ("platform/sdk/A.cpp", "<sqlite3.h>"),
    ("platform/widgets/tree/A.cpp", "<grpcpp/channel.h>"),
    ("frames/A.cpp", '"panel/QuoraneDockForm.h"'),
    ("server/A.cpp", '"frames/UDetailsFrame.h"'),
    ("server/tlb/A.cpp", '"platform/widgets/Forms.h"'),
    ("server/tlb/A.cpp", '"server/UQuoraneSession.h"'),
    ("platform/sdk/A.cpp", '"server/UQuoraneSession.h"'),
    ("platform/widgets/A.cpp", '"server/Quorane_TLB.h"'),
    ("panel/A.cpp", '"ide/UTraceabilityFrame.h"'),
    ("panel/A.cpp", '"platform/sdk/Cache.h"'),
    ("hosts/studio/A.cpp", '"panel/QuoraneDockForm.h"'),
    ("contracts/A.cpp", '"platform/widgets/Forms.h"'),
    ("elsewhere/A.cpp", "<string>"),
]

RIGHT = [
    ("server/A.cpp", '"server/Quorane_TLB.h"'),
    ("server/A.cpp", "<string>"),
    ("panel/A.cpp", '"ide/Vantrel_Quorane_Tracing_TLB.h"'),
    ("panel/A.cpp", '"platform/widgets/tree/TreeView.h"'),
    ("platform/widgets/look/A.cpp", "<QIcon>"),
    ("platform/sdk/A.cpp", '"quorane.grpc.pb.h"'),
    ("platform/sdk/A.cpp", '"server/Quorane_TLB.h"'),
    ("backend/store/A.cpp", "<sqlite3.h>"),
    ("hosts/studio/A.cpp", "<QMainWindow>"),
    ("apps/studio/A.cpp", '"panel/QuoraneDockForm.h"'),
]


NAMED = [
    ("panel/A.cpp", "    QString text;", True),
    ("frames/A.h", "void Place(Qt::Alignment alignment);", True),
    ("server/A.cpp", '#include "platform/widgets/QtText.h"', True),
    ("panel/A.cpp", "    TQuoraneSession session; // unlike a QString", False),
    ("panel/A.cpp", '    Show("QString");', False),
    ("platform/widgets/A.cpp", "    QString text;", False),
]


class CheckIncludesTest(unittest.TestCase):
    def faults(self, name, include):
        return self.faults_of(name, f"#include <vector>\n  #  include {include}\n")

    def faults_of(self, name, text):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / name
            path.parent.mkdir(parents=True)
            path.write_text(text, encoding="utf-8")
            return check_includes.check(Path(folder))

    def test_finds_each_include_against_the_arrows(self):
        for name, include in WRONG:
            with self.subTest(name=name, include=include):
                faults = self.faults(name, include)
                self.assertEqual(len(faults), 1)
                self.assertTrue(faults[0].startswith(f"{name}:"))

    def test_lets_each_include_along_the_arrows_pass(self):
        for name, include in RIGHT:
            with self.subTest(name=name, include=include):
                self.assertEqual(self.faults(name, include), [])

    def test_finds_names_of_the_widget_library_in_the_logic(self):
        for name, line, wrong in NAMED:
            with self.subTest(line=line):
                self.assertEqual(len(self.faults_of(name, line + "\n")), 1 if wrong else 0)

    def test_takes_a_header_beside_the_file_for_the_folders_own(self):
        with tempfile.TemporaryDirectory() as folder:
            server = Path(folder) / "server"
            server.mkdir()
            (server / "QuickList.h").write_text("", encoding="utf-8")
            (server / "A.cpp").write_text('#include "QuickList.h"\n', encoding="utf-8")
            self.assertEqual(check_includes.check(Path(folder)), [])


if __name__ == "__main__":
    unittest.main()
