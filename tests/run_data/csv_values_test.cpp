#include "run_data/csv_values.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "run_data/fixed_point.h"
#include "tests/run_data/csv_lines.h"

namespace {

using Fields = std::vector<std::string>;
using Reader = void (*)(const CsvBlock&, CsvColumn&, double*);

// The numbers of a column that has these fields, between two others. In front of it stands a line of titles.
std::vector<double> Read(Reader readNumbers, const Fields& fields, bool integers, const std::string& titles = "titles,titles\n") {
    static CsvBlock block;
    std::string text = titles;
    for (const std::string& field : fields) text += "1.5," + field + ",9\n";
    const PaddedCsv padded(text);
    CsvText start = padded.Start();
    start.cursor = static_cast<int64_t>(titles.size());
    StartBlocks(block, start, 3);
    CsvColumn column = {1, integers};
    std::vector<double> numbers;
    for (ReadBlock(block, csvBlockLines); block.lines > 0; ReadBlock(block, csvBlockLines)) {
        double read[csvBlockLines];
        readNumbers(block, column, read);
        numbers.insert(numbers.end(), read, read + block.lines);
    }
    return numbers;
}

// Bit for bit; all that is no number is alike, and so are both zeros.
bool Same(double a, double b) { return a == b || (a != a && b != b); }

void ExpectLikeTheLibrary(const Fields& fields) {
    const std::vector<double> numbers = Read(ReadNumbers, fields, false), plain = Read(ReadNumbersPlain, fields, false);
    const std::vector<double> integers = Read(ReadNumbers, fields, true), plainIntegers = Read(ReadNumbersPlain, fields, true);
    ASSERT_EQ(numbers.size(), fields.size());
    for (size_t k = 0; k < fields.size(); k++) {
        SCOPED_TRACE(fields[k]);
        ASSERT_PRED2(Same, numbers[k], StandardAtof(fields[k].c_str()));
        ASSERT_PRED2(Same, plain[k], numbers[k]);
        ASSERT_EQ(TruncToInt(integers[k]), Saturate32(std::strtoll(fields[k].c_str(), nullptr, 10)));
        ASSERT_EQ(TruncToInt(plainIntegers[k]), TruncToInt(integers[k]));
    }
}

// Each form behind each other one, at both places of a pair.
TEST(CsvColumnValues, AnyFormCanFollowAnyOther) {
    const char* const forms[] = {"12.34",    "56.78",    "-2.34",   "12.3-",     "1.234",   "1234.",    ".1234",   "12345",    "12-34", "12/34",
                                 "1 .34",    "12.3\xB0", "12.34567", "1234567.",  ".1234567", "12345678", "-.5",     "-5.",      "-55",   "-555",
                                 "5",        ".",        "-",       "--5",       "-5-",     "1.2.3",    "1..2",    "1e345",    "+1.34", "-0",
                                 "123456789", "-1234567", "-12345678", "-123.4567", "-1234.567", "0x10", "inf",     "nan",      "abc",   "1e2",
                                 " 7.5",     "7.5 ",     "12:34",   "12;34"};
    Fields fields = {"1"};
    for (const char* before : forms)
        for (const char* form : forms) fields.insert(fields.end(), {before, form});
    ExpectLikeTheLibrary(fields);
    fields.insert(fields.begin(), "1");
    ExpectLikeTheLibrary(fields);
}

TEST(CsvColumnValues, ShortDecimalsAreReadAsTheLibraryReadsThem) {
    std::mt19937 random(21);
    for (int round = 0; round < 200; round++) {
        Fields fields;
        const int decimals = static_cast<int>(random() % 8);
        for (int k = 0; k < 500; k++) {
            char text[32];
            const int length = 1 + static_cast<int>(random() % 8), digits = static_cast<int>(random() % 100000000);
            std::snprintf(text, sizeof text, "%08d", digits);
            std::string field(text, static_cast<size_t>(length));
            const int behind = random() % 50 ? decimals : static_cast<int>(random() % 8);
            if (behind > 0 && behind < length) field[length - 1 - behind] = '.';
            if (random() % 4 == 0) field = '-' + field;
            fields.push_back(field);
        }
        ExpectLikeTheLibrary(fields);
        if (HasFailure()) break;
    }
}

TEST(CsvColumnValues, RandomBytesAreReadAsTheLibraryReadsThem) {
    std::mt19937 random(5);
    const std::string letters = "0123456789012345678901234567890123456789...--+eEx \t/:";
    for (int round = 0; round < 400; round++) {
        Fields fields(500);
        for (std::string& field : fields) {
            field.resize(1 + random() % 10);
            for (char& c : field) c = random() % 3 ? letters[random() % 10] : letters[random() % letters.size()];
            if (random() % 2) field.back() = '5', field[field.size() / 2] = '.';
        }
        ExpectLikeTheLibrary(fields);
        if (HasFailure()) break;
    }
}

TEST(CsvColumnValues, FieldsAtTheFrontOfTheTextAreReadToo) {
    for (const char* titles : {"", "\n", "a\n", "abc\n", "abcdef\n"})
        EXPECT_EQ(Read(ReadNumbers, {"5", "2.5", "-7"}, false, titles), (std::vector<double>{5, 2.5, -7})) << titles;
}

TEST(CsvColumnValues, FieldThatALineLacksIsZero) {
    static CsvBlock block;
    const PaddedCsv padded("0123456789\n1,2\n3\n4,5\n\n");
    CsvText text = padded.Start();
    text.cursor = 11;
    StartBlocks(block, text, 3);
    ReadBlock(block, csvBlockLines);
    CsvColumn second = {1, false}, third = {2, false};
    double numbers[csvBlockLines];
    ReadNumbers(block, second, numbers);
    EXPECT_EQ(std::vector<double>(numbers, numbers + 4), (std::vector<double>{2, 0, 5, 0}));
    ReadNumbers(block, third, numbers);
    EXPECT_EQ(std::vector<double>(numbers, numbers + 4), (std::vector<double>{0, 0, 0, 0}));
}

int Product(const char* text, double scale, double divider = 1) {
    const double numbers[2] = {StandardAtof(text), 0};
    int32_t product[2];
    CutProducts(numbers, 2, scale, divider, product);
    return product[0];
}

TEST(CsvColumnValues, ProductsAreTruncatedAsComputedInDouble) {
    EXPECT_EQ(Product("0.29", 100), 28);  // 0.29 * 100 is just below 29
    EXPECT_EQ(Product("-0.29", 100), -28);
    EXPECT_EQ(Product("12.39", 10), 123);
    EXPECT_EQ(Product("-12.39", 10), -123);
    EXPECT_EQ(Product("400.00", 100, 10), 4000);
}

TEST(CsvColumnValues, ProductsAreHeldInside32Bits) {
    EXPECT_EQ(Product("99999999", 100), INT32_MAX);
    EXPECT_EQ(Product("-9999999", 1000), INT32_MIN);
    EXPECT_EQ(Product("1e30", 1), INT32_MAX);
    EXPECT_EQ(Product("-inf", 1), INT32_MIN);
    EXPECT_EQ(Product("nan", 100), 0);
}

TEST(CsvColumnValues, ProductsAreThoseOfThePlainLoop) {
    std::mt19937_64 random(9);
    std::vector<double> numbers = {0.0, -0.0, 1e308, -1e308, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                   std::numeric_limits<double>::quiet_NaN(), 21474836.47, 21474836.48, 21474836.469999999, -21474836.48,
                                   -21474836.49, 2147483647, 2147483647.5, 2147483648, -2147483648.0, -2147483648.5, -2147483649.0, 4.9e-324};
    for (int k = 0; k < 20000; k++) numbers.push_back(std::bit_cast<double>(random()));
    for (int k = 0; k < 20000; k++) numbers.push_back((static_cast<int>(random() % 2000001) - 1000000) / 100.0);
    for (const double scale : {1.0, 10.0, 100.0})
        for (const double divider : {1.0, 10.0, 100.0})
            for (const int count : {0, 1, 2, static_cast<int>(numbers.size()) - 1, static_cast<int>(numbers.size())}) {
                std::vector<int32_t> products(numbers.size() + 2, 77), plain = products;
                CutProducts(numbers.data(), count, scale, divider, products.data());
                CutProductsPlain(numbers.data(), count, scale, divider, plain.data());
                ASSERT_EQ(products, plain) << scale << ' ' << divider << ' ' << count;
            }
}

}  // namespace
