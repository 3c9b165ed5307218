#!/usr/bin/env python3
"""Writes draw/shift_jis_table.cpp: the double-byte characters of code page 932, taken from Python's codec.

Usage: tools/shift_jis_table.py > draw/shift_jis_table.cpp
"""
TRAILS = [trail for trail in range(0x40, 0xFD) if trail != 0x7F]
UNDEFINED = "\u30fb"

def character(lead, trail):
    try:
        return bytes([lead, trail]).decode("cp932")
    except UnicodeDecodeError:
        return UNDEFINED

print("""// Made by tools/shift_jis_table.py: the double-byte characters of code page 932, a row per lead byte.
#include "draw/shift_jis_table.h"

// clang-format off
const ShiftJisRow shiftJisRows[] = {""")
for lead in [*range(0x81, 0xA0), *range(0xE0, 0xFD)]:
    row = "".join(character(lead, trail) for trail in TRAILS)
    if set(row) == {UNDEFINED} or any("\ue000" <= c <= "\uf8ff" for c in row):
        continue  # nothing there, or characters of the user's own
    print(f'    {{0x{lead:02X}, u"{row}"}},')
print("""};
// clang-format on
const int shiftJisRowCount = sizeof shiftJisRows / sizeof shiftJisRows[0];""")
