"""The faults that scripts/mutate plants: where they are possible and how the code changes."""
import re
from dataclasses import dataclass

# Strings, characters and comments. Changes apply only to code outside of them.
TEXT = re.compile(r'R"\((?:.|\n)*?\)"|"(?:[^"\\\n]|\\.)*"|//.*$|/\*(?:.|\n)*?\*/'
                  r"|(?<!\w)'(?:[^'\\\n]|\\.[^'\n]*)'", re.M)
SKIPPED = re.compile(r"\s*(#|\*|template|using|namespace|static_assert|assert\(|case\b.*:$|\w+:$)"
                     r"|.*\breserve\("  # a size that is reserved changes only the memory
                     # The style requires an initial value, and most are replaced before they are read.
                     r"|\s*(mutable )?\w[\w:<>*&, ]* \w+ = (0|0\.0|false);")

# Tokens that end the operands of an operator, to its left or right.
ASSIGNMENT = r" (?:[-+*/%&|^]|<<|>>)?=\s|,|;|\?|\s:\s|\b(?:return|throw|case|else|co_yield)\b"
SHIFT = r"|\s<<\s|\s>>\s"
LOGIC = r"|\s&&\s|\s\|\|\s"
COMPARISON = r"|\s[<>]=?\s|\s[!=]=\s"
LEVELS = {"logic": re.compile(ASSIGNMENT + SHIFT),
          "comparison": re.compile(ASSIGNMENT + SHIFT + LOGIC),
          "sum": re.compile(ASSIGNMENT + SHIFT + LOGIC + COMPARISON)}
OPEN, CLOSE = "([{", ")]}"

OPERATORS = {" <= ": " < ", " >= ": " > ", " < ": " <= ", " > ": " >= ", " == ": " != ",
             " != ": " == ", " && ": " || ", " || ": " && ", " + ": " - ", " - ": " + "}
OPERATOR = re.compile("|".join(re.escape(operator) for operator in OPERATORS))
LITERAL = re.compile(r"\b(?:true|false)\b")
# Without the exponents of tolerances.
NUMBER = re.compile(r"(?<![\w.'])(?<!\de-)\d{1,4}(?![\w.'])")
CONDITION = re.compile(r"\bif \((?!const |auto |std::|!)([^;\n]*)\)(?: \{)?$", re.M)
CHOICE = re.compile(r" \? ([^\n]*) : ([^\n]*);$", re.M)
CALL = re.compile(r"^\s+((?!return|throw|delete|using|static_assert)[\w.:>\-]+\([^;{}\n]*\));$", re.M)


@dataclass
class Fault:
    """A change of the text [begin, end) to `new`, and the same behind a number if that is possible."""
    path: object
    begin: int
    end: int
    new: str
    # The text [begin, end) and a template of its code, in which # is the number.
    switched: tuple = None

    def line(self, text):
        return text.count("\n", 0, self.begin) + 1

    def describe(self, text):
        begin = text.rfind("\n", 0, self.begin) + 1
        end = text.find("\n", self.end)
        return (f"{text[begin:end].strip()}  ->  "
                f"{(text[begin:self.begin] + self.new + text[self.end:end]).strip()}")


def mask(text):
    """The text with strings, characters and comments overwritten; positions and lines are kept."""
    def hide(found):
        fill = " " if found[0].startswith("/") else "_"
        return re.sub(r"[^\n]", fill, found[0])
    return TEXT.sub(hide, text)


def extent(code, begin, end, stops):
    """The operands around [begin, end), up to a stop or an unmatched bracket."""
    left, depth = begin, 0
    ends = {found.end(): found.start() for found in stops.finditer(code, max(0, begin - 2000), begin + 1)
            if found.start() < begin}
    while left > 0:
        if depth == 0 and left in ends:
            break
        character = code[left - 1]
        depth += (character in CLOSE) - (character in OPEN)
        if depth < 0:
            break
        left -= 1
    right, depth = end, 0
    while right < len(code):
        if depth == 0 and stops.match(code, right):
            break
        depth += (code[right] in OPEN) - (code[right] in CLOSE)
        if depth < 0:
            break
        right += 1
    while left < begin and code[left].isspace():
        left += 1
    while right > end and code[right - 1].isspace():
        right -= 1
    return left, right


def operator_fault(path, text, code, found):
    operator = found[0]
    level = "sum" if operator in (" + ", " - ") else \
        "logic" if operator in (" && ", " || ") else "comparison"
    # The ends of the operator itself may be the space of a stop.
    left, right = extent(code, found.start(), found.end(), LEVELS[level])
    new = OPERATORS[operator]
    if level == "sum" and '"' in text[left:right]:
        return None  # texts are joined
    first = text[left:found.start()] + new + text[found.end():right]
    if "//" in text[left:right]:
        return Fault(path, found.start(), found.end(), new)
    first = first.replace("\n", " ")
    return Fault(path, found.start(), found.end(), new,
                 (left, right, f"(isPlanted(#) ? ({first}) : ({text[left:right]}))"))


def literal_fault(path, found):
    new, switched = ("false", "(!isPlanted(#))") if found[0] == "true" else ("true", "isPlanted(#)")
    return Fault(path, *found.span(), new, (*found.span(), switched))


def number_fault(path, found):
    return Fault(path, *found.span(), str(int(found[0]) + 1),
                 (*found.span(), f"({found[0]} + isPlanted(#))"))


def condition_fault(path, text, found):
    condition = text[found.start(1):found.end(1)]
    return Fault(path, *found.span(1), f"!({condition})",
                 (*found.span(1), f"isPlanted(#) != static_cast<bool>({condition})"))


def choice_fault(path, text, code, found):
    new = f" ? {text[slice(*found.span(2))]} : {text[slice(*found.span(1))]};"
    left, _ = extent(code, found.start(), found.start(), LEVELS["logic"])
    condition = text[left:found.start()]
    if not condition or "//" in condition:
        return Fault(path, *found.span(), new)
    return Fault(path, *found.span(), new,
                 (left, found.start(), f"(isPlanted(#) != static_cast<bool>({condition}))"))


def call_fault(path, text, found):
    call = text[slice(*found.span(1))]
    return Fault(path, *found.span(1), "", (*found.span(1), f"isPlanted(#) ? (void)0 : (void)({call})"))


def faults_of(path, text):
    """All faults of a source, by line: {line: [fault, ...]}."""
    code = mask(text)
    skipped = {number for number, line in enumerate(code.split("\n"), 1) if SKIPPED.match(line)}
    faults = [
        *(operator_fault(path, text, code, found) for found in OPERATOR.finditer(code)),
        *(literal_fault(path, found) for found in LITERAL.finditer(code)),
        *(number_fault(path, found) for found in NUMBER.finditer(code)),
        *(condition_fault(path, text, found) for found in CONDITION.finditer(code)),
        *(choice_fault(path, text, code, found) for found in CHOICE.finditer(code)),
        *(call_fault(path, text, found) for found in CALL.finditer(code)),
    ]
    result = {}
    for fault in faults:
        if fault is not None and (line := fault.line(text)) not in skipped:
            result.setdefault(line, []).append(fault)
    return result


def switch_on(text, numbered, header):
    """The text with all faults of the list [(number, fault)], each behind its number.

    Returns the text and the numbers of the faults that overlap with others and are not planted.
    """
    planted, left_out, end = [], [], -1
    for number, fault in sorted(numbered, key=lambda item: item[1].switched[0]):
        if fault.switched[0] < end:
            left_out.append(number)
            continue
        end = fault.switched[1]
        planted.append((number, fault))
    for number, fault in reversed(planted):
        begin, end, template = fault.switched
        text = text[:begin] + template.replace("isPlanted(#)", f"isPlanted({number})") + text[end:]
    return f'#include "{header}"\n#line 1\n{text}', left_out
