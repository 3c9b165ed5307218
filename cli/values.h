// values.h -- every value of the program that can be printed by name: one table for `slotN.txt` and for `state`.
//
// A line is `name value value ...`: integers in decimal, doubles and floats as %.17g, texts in double quotes with \xNN
// for every byte outside 0x20..0x7E and for " and \; arrays as one line, slot after slot. A value that the settings file
// or a header calls by another name than the code stands under both.
#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

struct Value {
    const char* name;
    int slots;                                    // elements of the first dimension that are file slots; 1: no slots
    void (*append)(std::string& line, int slot);  // appends a blank and each value
};

std::span<const Value> AllValues();
// nullptr when there is none of that name.
const Value* FindValue(std::string_view name);
// Appends the line of a value, all slots of it.
void AppendValueLine(std::string& text, const Value& value);
// Appends what slotN.txt holds, slot 0 to 2.
void AppendSlotText(std::string& text, int slot);
// Appends a text in quotes.
void AppendQuoted(std::string& text, std::string_view bytes);
