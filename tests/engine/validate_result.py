#!/usr/bin/env python3
"""Validates result documents: validate_result.py SCHEMA DOCUMENT...

With --documentation FILE in place of documents, the first JSON example of the file has to be
valid, and has to become invalid by each of some slips of the pen, so that the schema does not
accept everything.
"""
import copy
import json
import pathlib
import re
import sys
import warnings

import jsonschema

TABLE = ("frequencies", "tables", "sex")
CELLS = (*TABLE, "cells", 0, "cells", "compactCells")
SLIPS = {
    "a field without a name": (("dataModel", "fields", 0, "id"), None),
    "a value label with a fraction": (("dataModel", "fields", 0, "valueLabels", "values", 0), 1.5),
    "an invalid text": ((*TABLE, "title", "text"), "Sex"),
    "a text item one level short": (
        (*TABLE, "dimensions", 0, "text"), {"variableText": {"variable": "sex"}}),
    "a severity of its own": (("frequencies", "notifications", 0, "severity"), "Bad"),
    "a key that is misspelt": ((*TABLE, "footnote"), []),
    "no table id": ((*TABLE, "tableId"), ""),
    "a cell key with a quotation mark": ((*CELLS, "index"), '"0'),
    "a cell that is an object": ((*CELLS, "value", 0), {}),
    "decimals in words": ((*TABLE, "formats", 0, "format", "decimals"), "two"),
    "an invalid role": ((*TABLE, "dimensions", 0, "role"), "rows"),
}


def strict(text):
    def refuse(word):
        raise ValueError(f"{word} is not JSON")

    return json.loads(text, parse_constant=refuse)


def with_slip(document, path, value):
    changed = copy.deepcopy(document)
    place = changed
    for key in path[:-1]:
        place = place[key]
    if value is None:
        del place[path[-1]]
    else:
        place[path[-1]] = value
    return changed


def validator_of(schema_path):
    """References between schemas are names of files in the same folder."""
    schema = json.loads(schema_path.read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    with warnings.catch_warnings():
        # The replacement of RefResolver is missing in older versions.
        warnings.simplefilter("ignore", DeprecationWarning)
        resolver = jsonschema.RefResolver(schema_path.resolve().as_uri(), schema)
        return jsonschema.Draft202012Validator(schema, resolver=resolver)


def documentation_faults(validator, text):
    example = strict(re.search(r"```json\n(.*?)```", text, re.S).group(1))
    yield from (f"the example: {error.message}" for error in validator.iter_errors(example))
    for name, (path, value) in SLIPS.items():
        if validator.is_valid(with_slip(example, path, value)):
            yield f"the schema lets pass {name}"


def document_faults(validator, path):
    for error in validator.iter_errors(strict(path.read_text(encoding="utf-8"))):
        yield f"{path.name}: /{'/'.join(map(str, error.absolute_path))}: {error.message[:300]}"


def main():
    schema_path, *rest = sys.argv[1:]
    validator = validator_of(pathlib.Path(schema_path))
    if rest[0] == "--documentation":
        text = pathlib.Path(rest[1]).read_text(encoding="utf-8")
        faults = list(documentation_faults(validator, text))
    else:
        paths = map(pathlib.Path, rest)
        faults = [fault for path in paths for fault in document_faults(validator, path)]
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
