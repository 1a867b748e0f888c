#!/usr/bin/env python3
"""Writes what each fuzzer starts from: FOLDER/NAME/* and, of words that its inputs hold, FOLDER/NAME.dict."""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FONTS = ROOT / "Fonts"

PLIST = '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">\n%s\n</plist>\n'
DESIGNSPACE = """<?xml version='1.0' encoding='utf-8'?>\r
<designspace format="5.0">\r
\t<axes>\r
\t\t%s\r
\t</axes>\r
\t<sources>
<source filename="A.ufo" name="a" familyname="F" stylename="Thin"><location>
<dimension name="w" xvalue="1"/></location></source><!-- <source/> -->
<source filename="B.ufo" layer="half"/>
\t</sources>\r
\t<instances><instance><location><dimension uservalue='5' name="w" /></location></instance></instances>
<lib><dict/></lib></designspace>"""
GLIF = """<?xml version="1.0" encoding="UTF-8"?>
<glyph name="A" format="%d">
  <unicode hex="0041"/> <advance width="500.5" height="-1"/>
  <outline>
    <contour identifier="x"><point x="1" y="2" type="move" name="top"/></contour>
    <contour><point x="0" y="1e3"/><point x="-.5" y="2" type="curve" smooth="yes" name="&lt;&#65;"/></contour>
    <component base="B" xScale="-1" yxScale="0.25" xOffset="3"/>
  </outline>
  <anchor x="1" y="2" name="top"/><guideline y="4" angle="90"/><note><![CDATA[<x>]]></note>
  <lib><dict>%s<key>other</key><data>AA==</data></dict></lib>
</glyph>
"""
VARIABLE = """<key>com.black-foundry.glyph-designspace</key><dict><key>axes</key><array>
<dict><key>name</key><string>flip*1</string><key>minimum</key><integer>0</integer><key>default</key><real>1.5</real>
<key>maximum</key><integer>100</integer></dict><dict><key>name</key><string>flip*2</string><key>minimum</key><real>0</real>
<key>default</key><real>1.5</real><key>maximum</key><integer>100</integer></dict></array><key>sources</key><array><dict><key>name</key>
<string>s</string><key>layername</key><string>half</string><key>location</key><dict><key>flip*1</key><real>9</real></dict></dict></array></dict>
<key>com.black-foundry.variable-components</key><array><dict><key>base</key><string>C</string><key>location</key>
<dict><key>w</key><real>70.5</real></dict><key>transformation</key><dict><key>rotation</key><integer>9</integer>
<key>skewX</key><real>0.5</real><key>tCenterY</key><integer>3</integer></dict></dict></array>"""

AXES = [
    '<axis tag="wght" name="w" minimum="0" maximum="10" default="1"/>',
    '<axis tag="wght" name="w" minimum="0" maximum="10" default="1"><map input="0" output="5"/><map input="10" output="-1"/></axis>'
    '<axis tag="ital" name="i" values="0 1" default="0"/>',
    '<axis name="w" minimum="-1e15" maximum="1e15" default="0" hidden="1"/><axis name="w"/>',
]
INTERFACE = """<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0"><class>F</class><widget class="%s" name="top">
<property name="geometry"><rect><x>0</x><y>0</y><width>9</width><height>9</height></rect></property>
<layout class="QVBoxLayout" name="l"><property name="spacing"><number>2</number></property><item><widget class="QLabel" name="n">
<property name="text"><string>Name</string></property><property name="outlet" stdset="0"><string>nameLabel</string></property></widget></item>
<item><widget class="QLineEdit" name="f"><property name="formatter" stdset="0"><string>number</string></property>
<property name="maximumFractionDigits" stdset="0"><number>2</number></property></widget></item>
<item><widget class="NSSlider" name="s" native="1"/></item><item><spacer name="z"><property name="orientation"><enum>Qt::Horizontal</enum>
</property></spacer></item><item><widget class="QPushButton" name="b"><property name="symbol" stdset="0"><string>plus</string></property>
<property name="action" stdset="0"><string>press:</string></property></widget></item></layout></widget></ui>
"""


def some(pattern, count):
    """Evenly chosen files of the families."""
    files = sorted(FONTS.glob(pattern))
    return [path.read_text() for path in files[:: max(1, len(files) // count)]]


def interfaces():
    own = [path.read_text() for path in sorted((ROOT / "Moravel/Resources").glob("*.ui"))]
    return own + [INTERFACE % name for name in ("QWidget", "Cell", "NSTableView", "QFrame")]


def numbers():
    texts = ["0", "-0", "1", "-12.5", "1e400", "1e-400", "5e-324", "1.7976931348623157e308", "nan", "-inf", "+7", " 12", "0x1p-3",
             "1,5", "999.75", "0,1", "1e15", "123456789012345678", ".5", "5.", "1\u2212", "\u0661\u0662\u066b\u0665", "10FFFF", "0041", "INFINITY",
             "\u22125", "1'000", "0x", "1e", "1e+5", "--1", "0.1000000000000000055511151231257827"]
    return [byte + text for byte in "\0\1\2\x43\x81" for text in texts]


SEEDS = {
    "CommandLineFuzzer": [
        "a.designspace", "a b.designspace\n--glyph\na", "--text=ab/c\nx", "x\n--location\nwght=550, wdth = -2.5", "--\n-x",
        "--size=1400x900\nx\n--snapshot\no.png\n--describe", "--plugin\np\n--plugin=q\nx", "--version", "--help", "--size\n0x1", "--zoom"],
    "DesignspaceFuzzer": [path.read_text() for path in sorted(FONTS.rglob("*.designspace"))] + [DESIGNSPACE % axis for axis in AXES],
    "GlifFuzzer": some("**/*.glif", 12) + [GLIF % (version, library) for version in (1, 2) for library in ("", VARIABLE)],
    "InterfaceFuzzer": interfaces(),
    "NumbersFuzzer": numbers(),
    "PlistFuzzer": some("**/*.plist", 12) + [PLIST % value for value in (
        "<dict/>", "<array><true/><false/><date>2020-01-01</date><data>AA==</data></array>", "<real>nan</real>",
        "<dict>\n\t<key>a</key>\n\t<integer> -5 </integer><!-- c -->\n\t<key>&lt;</key><string>x<![CDATA[&]]>y</string><key>a</key><dict/></dict>",
        "<dict><key>deep</key>" + 40 * "<array>" + 40 * "</array>" + "</dict>")],
    "StringsTableFuzzer": [(ROOT / "Moravel/Resources/en.lproj/Localizable.strings").read_text(), '/* c */ "a" = "b"; // d\n"\\"" = "\\u00e9\\n";',
                           '\ufeff"\\uD83D\\uDE00"="\\t\\r\\\\";'],
}
ENTITIES = ["&lt;", "&amp;", "&#65;", "&#x10FFFF;", "<!--", "-->", "<![CDATA[", "]]>", "<?", "?>", "<!DOCTYPE", "<!ENTITY", "\r\n", "\ufeff"]


def words_of(name):
    """Names of elements and attributes, values in quotes, and what begins and ends markup."""
    words = set(ENTITIES if any(text.startswith("<") for text in SEEDS[name]) else [])
    for text in SEEDS[name]:
        words.update(re.findall(r"</?[A-Za-z][\w-]*>?", text))
        words.update(re.findall(r'[\w-]+="[^"<&]{0,12}"', text))
        words.update(re.findall(r"--[a-z]+|\\[a-zA-Z\"]", text))
    return sorted(words)[:400] or [text[1:] for text in SEEDS[name]]


def escaped(word):
    return "".join(chr(byte) if 32 <= byte < 127 and byte not in b'"\\' else f"\\x{byte:02x}" for byte in word.encode())


def main(folder):
    for name, seeds in SEEDS.items():
        (folder / name).mkdir(parents=True, exist_ok=True)
        for index, text in enumerate(seeds):
            (folder / name / f"seed-{index:02}").write_bytes(text.encode())
        (folder / f"{name}.dict").write_text("".join(f'"{escaped(word)}"\n' for word in words_of(name)))


main(Path(sys.argv[1]))
