"""Plants includes that break an order of folders: scripts/check-layers must report each of them."""
import importlib.machinery
import importlib.util
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
LOADER = importlib.machinery.SourceFileLoader("layers", str(ROOT / "scripts" / "check-layers"))
SPEC = importlib.util.spec_from_loader("layers", LOADER)
layers = importlib.util.module_from_spec(SPEC)
LOADER.exec_module(layers)

# A file, and an include that its folder must not have.
PLANTED = [
    ("contracts/metadata/CFField.h", "VexaJVM.h"),
    ("contracts/host/Attention.h", "Journal.h"),
    ("hvinteg/support/ReplacementFile.cpp", "bridge/JNIObjectManager.h"),
    ("hvinteg/geo/MapSource.cpp", "tcm/HVInteractiveTSR.h"),
    ("hvinteg/dialog/HVInteractive.cpp", "geo/MapSource.h"),
    ("hvinteg/runner/HVRunner.cpp", "datafile/Duck.h"),
    ("platform/base/NativePath.cpp", "datafile/Duck.h"),
    ("platform/datafile/Duck.cpp", "VexaCases.h"),
    ("platform/host/src/output/OutputTree.cpp", "runner/HVRunner.h"),
    ("platform/host/src/text/CodePage.cpp", "data/CaseText.h"),
    ("platform/host/src/data/CaseCopy.cpp", "HVServiceManager.h"),
    ("platform/host/src/output/OutputTree.cpp", "report/page/OutputPage.h"),
    ("platform/engine/src/language/Parser.cpp", "expression/Operand.h"),
    ("platform/engine/src/runtime/Database.cpp", "steps/Plan.h"),
    ("platform/engine/src/steps/StepTable.cpp", "components/table/ComponentTable.h"),
    ("platform/engine/src/steps/JobContext.h", "duckdb/DuckSession.h"),
    ("platform/engine/src/components/descriptives/Descriptives.cpp",
     "components/temporal/preparation/Tsdp.h"),
    ("platform/engine/src/components/temporal/base/SeriesTable.cpp",
     "components/temporal/training/Train.h"),
    ("platform/scoring/src/functions/TextFunctions.cpp", "pmml/Literal.h"),
    ("report/text/OutputText.cpp", "report/page/OutputPage.h"),
    ("hvhost/base/Text.cpp", "hvhost/job/HostSession.h"),
    ("hvhost/map/MapInfo.cpp", "hvhost/score/ScoringModel.h"),
    ("hvhost/describe/Info.cpp", "hvhost/cli/Completion.h"),
]


class LayersTest(unittest.TestCase):
    def setUp(self):
        text = (ROOT / "docs" / "architecture.md").read_text(encoding="utf-8")
        self.rules = layers.Layers(layers.BLOCK.search(text).group(1))
        self.tree = layers.Tree(ROOT)

    def fault(self, file, include):
        target = self.tree.target(file, include)
        self.assertIsNotNone(target, f"{include} of {file} is not a file of the tree")
        return self.rules.fault(file.rpartition("/")[0], target.rpartition("/")[0])

    def test_reports_planted_includes(self):
        for file, include in PLANTED:
            with self.subTest(file=file, include=include):
                self.assertTrue((ROOT / file).exists(), file)
                self.assertIsNotNone(self.fault(file, include))

    def test_reports_a_folder_that_the_block_does_not_name(self):
        for folder in ("hvinteg/planted", "report/planted", "hvhost/planted", "planted",
                       "platform/engine/src/planted"):
            self.assertIsNotNone(self.rules.fault(folder, "contracts/host"), folder)

    def test_reports_headers_and_sql_of_the_database(self):
        for folder, line, is_fault in (
                ("steps", '#include "datafile/Duck.h"', True),
                ("expression", '#include <duckdb.h>', True),
                ("duckdb", '#include <duckdb.h>', False),
                ("steps", 'return "CAST(" + x + " AS VARCHAR)";', True),
                ("steps", "int count(); // no VARCHAR", False),
                ("duckdb", '"VARCHAR"', False)):
            fault = self.rules.line_fault("platform/engine/src/" + folder, line)
            self.assertEqual(fault is not None, is_fault, f"{folder}: {line}")

    def test_allows_each_pair_of_folders_in_one_direction_at_most(self):
        folders = self.tree.folders()
        for source in folders:
            for target in folders:
                if source < target and not self.rules.fault(source, target):
                    self.assertIsNotNone(self.rules.fault(target, source), f"{source}, {target}")


if __name__ == "__main__":
    unittest.main()
