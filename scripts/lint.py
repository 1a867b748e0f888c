#!/usr/bin/env python3
"""Rules that no compiler checks. Prints each offence with file and line; status 1 when there is one.

lint.py numbers   no function that reads or writes numbers by the process's locale
lint.py strings   each text of the plug-in's code and interface descriptions is in its table, with that English
                  text, and the other way round
"""

import html
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
# A locale of the user's would turn 1.5 into 1 or "1,5". Numbers go through NSNumberFromText,
# NSNumberDescription or <charconv>.
NUMBERS = re.compile(
    r"\b(strto(d|f|ld)|sto(d|f|ld)|atof|as_(double|float)|sscanf|istringstream)\s*\("
    r"|\bset_value\s*\(\s*[0-9]*\.[0-9]"
    r"|printf[^;]*%[-+ #0-9.*]*l?[aefgAEFG]\b"
    r"|std::to_string\s*\([^)]*(double|float)")
LITERALS = r'((?:"(?:[^"\\]|\\.)*"\s*)+)'
# The plug-in's own look-up gives the bundle by itself; both take key, English text and comment.
# What is looked up in the program's own table is not the plug-in's.
LOOKUP = re.compile(r"\b(?:Moravel|NS)LocalizedString\s*\(\s*" + LITERALS + r",\s*(?:(?!\s*NSBundle::mainBundle)[^\",]+,\s*)?" + LITERALS + r",\s*" + LITERALS)
INTERFACE_TEXT = re.compile(r"<string\b([^>/]*)>(.*?)</string>", re.S)
ENTRY = re.compile(r'/\*(.*?)\*/|"((?:[^"\\]|\\.)*)"\s*=\s*"((?:[^"\\]|\\.)*)"\s*;', re.S)


def sources(*folders, endings=(".h", ".cpp")):
    names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z", "--", *folders],
                           cwd=ROOT, check=True, capture_output=True, text=True).stdout.split("\0")
    return [ROOT / name for name in names if name.endswith(endings) and (ROOT / name).exists()]


def line_of(text, position):
    return text.count("\n", 0, position) + 1


def number_offences(text):
    """(line, what) of each use; a comment is no use."""
    bare = re.sub(r"//[^\n]*", lambda m: " " * len(m.group()), text)
    return [(line_of(bare, m.start()), m.group().split("\n")[0]) for m in NUMBERS.finditer(bare)]


def joined(literals):
    """C++ literals side by side as one text, as they stand between the quotes."""
    return "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', literals))


def lookups(text):
    """(line, key, English text) of each look-up whose arguments are literals."""
    return [(line_of(text, m.start()), joined(m.group(1)), joined(m.group(2))) for m in LOOKUP.finditer(text)]


def interface_texts(text):
    """(line, key, English text) of each text of an interface description that is not marked as no text: it is its own key."""
    texts = ((line_of(text, m.start()), m.group(1), html.unescape(m.group(2))) for m in INTERFACE_TEXT.finditer(text))
    return [(line, escaped(one), escaped(one)) for line, attributes, one in texts
            if one and not re.search(r"""\bnotr\s*=\s*["']true["']""", attributes)]


def escaped(text):
    """As it stands between the quotes of a table."""
    return text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")


def entries(text):
    return {m.group(2): m.group(3) for m in ENTRY.finditer(text) if m.group(2) is not None}


def compare(found, table):
    """Offences of `found`, (place, key, English), against a table of key to English."""
    out, keys = [], set()
    for place, key, english in found:
        keys.add(key)
        if key not in table:
            out.append(f'{place}: "{key}" is not in the table')
        elif table[key] != english:
            out.append(f'{place}: "{key}" is "{english}" here and "{table[key]}" in the table')
    return out + [f'"{key}" of the table is looked up nowhere' for key in table if key not in keys]


def numbers():
    out = []
    for path in sources("Platform", "Typloom", "Moravel"):
        name = str(path.relative_to(ROOT))
        out += [f"{name}:{line}: {what}" for line, what in number_offences(path.read_text(encoding="utf-8"))]
    return out


def strings():
    found, calls = [], 0
    for path in sources("Moravel"):
        text = path.read_text(encoding="utf-8")
        calls += len(re.findall(r"\bMoravelLocalizedString\s*\(\s*\"", text))
        found += [(f"{path.relative_to(ROOT)}:{line}", key, english) for line, key, english in lookups(text)]
    read = len(found)
    for path in sources("Moravel", endings=(".ui",)):
        texts = interface_texts(path.read_text(encoding="utf-8"))
        found += [(f"{path.relative_to(ROOT)}:{line}", key, english) for line, key, english in texts]
    table = entries((ROOT / "Moravel/Resources/en.lproj/Localizable.strings").read_text(encoding="utf-8"))
    out = compare(found, table)
    if calls > read:
        out.append(f"{calls - read} look-ups are written in a form that this check cannot read")
    if not read or read == len(found):
        out.append("No look-up found, or no text of an interface description")
    return out


def self_test():
    """The rules find what they are for, and nothing else."""
    for bad in ("double x = std::strtod(s, nullptr);", "node.attribute(\"x\").as_double()", "printf(\"%.2f\", x)",
                "std::stod(text)", "fprintf(f, \"%s %g\\n\", a, b)"):
        assert number_offences(bad), bad
    for good in ("// never strtod()", "std::from_chars(a, b, x)", "std::fprintf(stderr, \"%s\\n\", a)", "printf(\"%d\", 1)"):
        assert not number_offences(good), good
    call = 'return MoravelLocalizedString(\n "a.key", "One "\n "text.", "For translators");'
    assert lookups(call) == [(1, "a.key", "One text.")]
    assert lookups('NSLocalizedString("K", bundle, "K", "c")') == [(1, "K", "K")]
    assert not lookups('NSLocalizedString("K", NSBundle::mainBundle(), "K", "c")')
    interface = '<string notr="true">outlet</string>\n<string>Say "A &amp; B"</string><string/><string comment="c">C</string>'
    assert interface_texts(interface) == [(2, r'Say \"A & B\"', r'Say \"A & B\"'), (2, "C", "C")], interface_texts(interface)
    assert compare([("f", key, english) for _, key, english in interface_texts(interface)], {"C": "C"})
    table = entries('/* "No" = "entry"; */\n"a.key" = "One text.";')
    assert table == {"a.key": "One text."} and not compare([("f", "a.key", "One text.")], table)
    assert compare([("f", "a.key", "Other")], table) and compare([("f", "b", "B")], {}) and compare([], table)


def main(arguments):
    if arguments == ["--self-test"]:
        self_test()
        return 0
    rules = {"numbers": numbers, "strings": strings}
    if len(arguments) != 1 or arguments[0] not in rules:
        print(__doc__)
        return 2
    offences = rules[arguments[0]]()
    for offence in offences:
        print(offence)
    return 1 if offences else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
