// csv_values.h -- whole columns of CSV fields as numbers.
//
// Form     as csv_number.h has it. Nearly all fields of a column have the same number of decimals and up to eight bytes of
//          digits and a point: these are read two at a time. The others are read one by one.
// Values   the same in every bit as one by one; each loop stands twice, `...Plain` is what it does on other machines.
#pragma once
#include "run_data/csv_block.h"

// A column of the text and how it is read.
struct CsvColumn {
    int column;        // 0 to columns - 1 of the block
    bool integers;     // only the whole number that a field begins with counts
    int decimals = 0;  // of the last short decimal, 0 to 7: what is expected of the next ones
};

// The column's numbers of the lines at hand.
void ReadNumbers(const CsvBlock& block, CsvColumn& column, double* numbers);
void ReadNumbersPlain(const CsvBlock& block, CsvColumn& column, double* numbers);

// The numbers x scale / divider, each in double, truncated and held inside 32 bits; NaN is 0.
void CutProducts(const double* numbers, int count, double scale, double divider, int32_t* products);
void CutProductsPlain(const double* numbers, int count, double scale, double divider, int32_t* products);
