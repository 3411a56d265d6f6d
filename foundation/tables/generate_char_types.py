#!/usr/bin/env python3
"""Writes char_type_table.inc, the classes of Unicode characters for foundation/char_type.cpp.

    foundation/tables/generate_char_types.py        writes the table beside this script

The rules are those at the top of foundation/char_type.h; what characters there are, and what
they are, is as Python's unicodedata has it. The table holds the ranges of equal class in
ascending order, each as its first code point x 1024 + class.
"""

import pathlib
import unicodedata

SPACE, OTHER, WORD, HIRAGANA, KATAKANA, KANJI = 0x01, 0x02, 0x04, 0x08, 0x10, 0x20
BOTH_KANA = HIRAGANA | KATAKANA
SINGLE, DOUBLE = 0x100, 0x200

SPACES = {*range(0x09, 0x0E), 0x20, 0x85, 0xA0, 0x1680, *range(0x2000, 0x200B), 0x2028, 0x2029,
          0x202F, 0x205F, 0x3000}
KANJI_BLOCKS = [
    (0x2E80, 0x2FDF),    # radicals
    (0x3005, 0x3007),    # iteration mark, closing mark, zero
    (0x3021, 0x3029),    # Hangzhou numerals
    (0x3038, 0x303B),    # more of them, vertical iteration mark
    (0x3400, 0x4DBF),    # extension A
    (0x4E00, 0x9FFF),
    (0xE000, 0xF8FF),    # private use: gaiji
    (0xF900, 0xFAFF),    # compatibility ideographs
    (0x20000, 0x3FFFF),  # planes 2 and 3
    (0xE0100, 0xE01EF),  # selectors of ideographic variants
]
BOTH_KANA_BLOCKS = [
    (0x3031, 0x3035),  # vertical repeat marks
    (0x3099, 0x309C),  # voicing marks
    (0x30FC, 0x30FC),  # prolonged-sound mark
]
KANA_BY_NAME = {"HIRAGANA LETTER": HIRAGANA, "HIRAGANA ITERATION MARK": HIRAGANA,
                "HIRAGANA VOICED ITERATION MARK": HIRAGANA, "HIRAGANA DIGRAPH": HIRAGANA,
                "HENTAIGANA LETTER": HIRAGANA,
                "KATAKANA LETTER": KATAKANA, "KATAKANA ITERATION MARK": KATAKANA,
                "KATAKANA VOICED ITERATION MARK": KATAKANA, "KATAKANA DIGRAPH": KATAKANA}
HALFWIDTH_KATAKANA = (0xFF61, 0xFF9F)
JOINERS = (0x200C, 0x200D)


def within(code, blocks):
    return any(first <= code <= last for first, last in blocks)


def class_of(code):
    char = chr(code)
    name = unicodedata.name(char, "")
    if code in SPACES:
        return SPACE | (SINGLE if code < 0x100 else DOUBLE)
    if within(code, [HALFWIDTH_KATAKANA]):
        return KATAKANA | SINGLE
    if within(code, KANJI_BLOCKS):
        return KANJI | DOUBLE
    if within(code, BOTH_KANA_BLOCKS):
        return BOTH_KANA | DOUBLE
    for start, kind in KANA_BY_NAME.items():
        if name.startswith(start):
            return kind | DOUBLE

    category = unicodedata.category(char)
    word = category[0] in "LM" or category in ("Nd", "Nl", "Pc") or code in JOINERS
    # Signs of ambiguous width are double-byte characters in the East Asian codes; letters of
    # ambiguous width must not differ from their neighbours in the alphabet.
    widths = "WF" if word or code < 0x100 else "WFA"
    wide = unicodedata.east_asian_width(char) in widths or name.startswith("HANGUL")
    return (WORD if word else OTHER) | (DOUBLE if wide else SINGLE)


def main():
    ranges = []
    for code in range(0x110000):
        kind = class_of(code)
        if not ranges or ranges[-1][1] != kind:
            ranges.append((code, kind))
    here = pathlib.Path(__file__).resolve().parent
    with open(here / "char_type_table.inc", "w", encoding="ascii", newline="\n") as out:
        out.write("// Written by generate_char_types.py, from the Unicode Character Database "
                  f"{unicodedata.unidata_version}.\n\n"
                  f"constexpr std::uint32_t kCharTypeRanges[{len(ranges)}] = {{\n")
        texts = [f"0x{code << 10 | kind:08X}," for code, kind in ranges]
        for i in range(0, len(texts), 8):
            out.write("    " + " ".join(texts[i:i + 8]) + "\n")
        out.write("};\n")


if __name__ == "__main__":
    main()
