// number_key.h -- one key of a profile and the variable it stands for, as a row of a table.
#pragma once
#include <variant>

#include "settings/profile_file.h"

// How a float or double stands in the file; an int stands as it is.
enum class NumberForm {
    thousandths,  // a scale times 1000, read unsigned. Kept: a negative number becomes a very large scale.
    hundredths,   // a value times 100
};

struct NumberKey {
    const char *section, *key;
    std::variant<int*, float*, double*> variable;
    int standard;                    // what a missing key reads as, in the file's form
    bool saved;                      // false: only edited by hand
    int (*hold)(int) = nullptr;      // takes an int from outside into its range
    NumberForm form = NumberForm::thousandths;
};

void ReadNumber(const ProfileText& profile, const NumberKey& row);
// Scaled values are cut, not rounded: a scale such as 1.001 may lose one unit at each run.
void WriteNumber(ProfileText& profile, const NumberKey& row);

// What `hold` can be.
template <int low, int high>
int Clamped(int value) { return value < low ? low : value > high ? high : value; }
template <int low, int high, int other>
int WithinOr(int value) { return value < low || value > high ? other : value; }
inline int AsFlag(int value) { return value != 0; }
