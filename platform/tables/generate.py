#!/usr/bin/env python3
"""Writes the code tables of platform/codepage_*.cpp: cp932_table.inc, single_byte_table.inc.

    platform/tables/generate.py        writes the tables beside this script

The mappings are those of Python's codecs, completed to what Windows has:

- Code page 932: where several codes decode to one unit, encoding prefers JIS X 0208, then
  NEC row 13, then the IBM extensions, then the NEC-selected IBM extensions. The user-defined
  area F040-F9FC is U+E000-E757. Bytes 80, A0, FD, FE and FF are U+0080 and U+F8F0-F8F3.
- Single-byte pages: a byte without a character decodes to the C1 control of its value when it
  is below A0, else to a private-use unit; 28597 has the characters of the standard's first
  edition. US-ASCII (20127) drops the high bit.
"""

import pathlib

HERE = pathlib.Path(__file__).resolve().parent
BLOCK = 256

LEADS = list(range(0x81, 0xA0)) + list(range(0xE0, 0xFD))
TRAILS = range(0x40, 0x100)

SINGLE_BYTE_PAGES = {
    1250: "cp1250", 1251: "cp1251", 1252: "cp1252", 1253: "cp1253", 1254: "cp1254",
    1257: "cp1257", 20127: "ascii", 20866: "koi8_r", 28591: "iso8859_1", 28592: "iso8859_2",
    28594: "iso8859_4", 28595: "iso8859_5", 28597: "iso8859_7", 28599: "iso8859_9",
}
# What Windows puts in the holes at A0 and above.
SINGLE_BYTE_HOLES = {
    1253: {0xAA: 0xF8F9, 0xD2: 0xF8FA, 0xFF: 0xF8FB},
    1257: {0xA1: 0xF8FC, 0xA5: 0xF8FD},
    28597: {0xA1: 0x02BD, 0xA2: 0x02BC, 0xA4: 0xF7C2, 0xA5: 0xF7C3, 0xAA: 0xF7C4,
            0xAE: 0xF7C5, 0xD2: 0xF7C6, 0xFF: 0xF7C7},
}


def rows(values, width, per_line):
    """The values as hexadecimal constants, so many to a line."""
    texts = [f"0x{value:0{width}X}," for value in values]
    return ["    " + " ".join(texts[i:i + per_line]) for i in range(0, len(texts), per_line)]


def two_stage(mapping):
    """(block number by high byte, blocks); block 0 is the empty one."""
    blocks = [[0] * BLOCK]
    numbers = []
    for high in range(256):
        block = [mapping.get(high * BLOCK + low, 0) for low in range(BLOCK)]
        if block not in blocks:
            blocks.append(block)
        numbers.append(blocks.index(block))
    return numbers, blocks


def decode_932(code):
    lead, trail = code >> 8, code & 0xFF
    if 0xF0 <= lead <= 0xF9:
        if trail == 0x7F or trail > 0xFC:
            return 0
        return 0xE000 + (lead - 0xF0) * 188 + trail - (0x41 if trail > 0x7F else 0x40)
    try:
        text = bytes([lead, trail]).decode("cp932")
    except UnicodeDecodeError:
        return 0
    return ord(text) if len(text) == 1 else 0


def rank_932(code):
    """Position of a code among those that decode to the same unit; the lowest is encoded."""
    lead = code >> 8
    if 0x81 <= lead <= 0x84 or 0x88 <= lead <= 0xEA:
        return 0
    if lead == 0x87:
        return 1
    if 0xFA <= lead <= 0xFC:
        return 2
    return 3


def write_932():
    decode = []
    encode = {0x80: 0x80, 0xF8F0: 0xA0, 0xF8F1: 0xFD, 0xF8F2: 0xFE, 0xF8F3: 0xFF}
    for byte in range(0xA1, 0xE0):
        encode[0xFF61 + byte - 0xA1] = byte
    for lead in LEADS:
        for trail in TRAILS:
            code = lead << 8 | trail
            unit = decode_932(code)
            decode.append(unit)
            if unit and (unit not in encode or rank_932(code) < rank_932(encode[unit])):
                encode[unit] = code
    # As the bytes stand in the text, the first one low.
    encode = {unit: code if code < 0x100 else code >> 8 | (code & 0xFF) << 8
              for unit, code in encode.items()}
    numbers, blocks = two_stage(encode)
    lines = ["// Made by platform/tables/generate.py.", "",
             f"constexpr std::uint16_t kDecode932[{len(LEADS)} * {len(TRAILS)}] = {{"]
    lines += rows(decode, 4, 12)
    lines += ["};", "", "constexpr BYTE kEncodeBlock932[256] = {"]
    lines += rows(numbers, 2, 16)
    lines += ["};", "", f"constexpr std::uint16_t kEncode932[{len(blocks)} * {BLOCK}] = {{"]
    for block in blocks:
        lines += rows(block, 4, 12)
    lines += ["};", ""]
    (HERE / "cp932_table.inc").write_text("\n".join(lines))


def decode_single(page, codec, byte):
    hole = SINGLE_BYTE_HOLES.get(page, {}).get(byte)
    if hole:
        return hole
    if codec == "ascii":
        return byte & 0x7F
    try:
        return ord(bytes([byte]).decode(codec))
    except UnicodeDecodeError:
        return byte


def write_single():
    lines = ["// Made by platform/tables/generate.py.", ""]
    pages = []
    for page, codec in SINGLE_BYTE_PAGES.items():
        decode = [decode_single(page, codec, byte) for byte in range(0x80, 0x100)]
        encode = {unit: byte for byte, unit in enumerate(decode, 0x80) if unit >= 0x80}
        numbers, blocks = two_stage(encode)
        lines += [f"constexpr WCHAR kDecode{page}[128] = {{"] + rows(decode, 4, 12) + ["};", ""]
        lines += [f"constexpr BYTE kEncodeBlock{page}[256] = {{"] + rows(numbers, 2, 16)
        lines += ["};", "", f"constexpr BYTE kEncode{page}[{len(blocks)} * {BLOCK}] = {{"]
        for block in blocks:
            lines += rows(block, 2, 16)
        lines += ["};", ""]
        pages.append(f"    {{{page}, kDecode{page}, kEncodeBlock{page}, kEncode{page}}},")
    lines += ["constexpr SingleBytePage kSingleBytePages[] = {"] + pages + ["};", ""]
    (HERE / "single_byte_table.inc").write_text("\n".join(lines))


if __name__ == "__main__":
    write_932()
    write_single()
