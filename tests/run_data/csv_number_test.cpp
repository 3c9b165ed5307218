#include "run_data/csv_number.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "bench/plain_csv_import.h"

namespace {

// As a field in a text: other bytes stand right behind it.
struct InText {
    std::string bytes;
    CsvField field;
    explicit InText(const std::string& text, const char* behind = ",9876543") : bytes(text + behind) {
        field = {bytes.data(), static_cast<int>(text.size())};
    }
};
double Number(const std::string& text) { return FieldNumber(InText(text).field); }
int Integer(const std::string& text) { return ReadAnyInteger(InText(text).field); }

// The same double; all that is no number is alike, and so are both zeros.
void ExpectLikeAtof(const std::string& text) {
    const double read = Number(text), wanted = StandardAtof(text.c_str());
    if (wanted != wanted) {
        EXPECT_NE(read, read) << text;
        return;
    }
    EXPECT_EQ(read, wanted) << text;
}

TEST(CsvNumber, FormsAreReadAsAtofReadsThem) {
    for (const char* text : {
             "", " ", "0", "-0", "7", "12345678", "123456789", "-12345678", "1.5", ".5", "5.", "-.5", "-5.", ".", "-", "+", "-.", "+1",
             "+1.25", "--1", "+-1", "-+1", "1.2.3", "1..2", "  12", "\t-3.5", "\v1", "\f2", "12 ", "12 km/h", "1 2", "abc", "-abc", "e5", ".e5",
             "1e3", "1E3", "1e+3", "1e-3", "-2.5e2", "1e", "1e+", "1ex", "1e400", "-1e400", "1e-400", "-1e-400", "0e999", "1e308", "4.9e-324",
             "0x10", "0X1f", "-0xA", "0x", "0xg", "0x1.8", "0x1.8p2", "0x1p-1", "0x.8", "0x1p2000", "0x1p-2000", "0x0x1", "00x1",
             "0xinf", "0xInfinity", "-0XINF", "0xnan", "0xNaN(1)", "0x1p+-8", "0x1p-+8", "0x1p", "0x1p-", "0x1p+3", "0x1p1p2",
             "inf", "-INF", "infinity", "Infinit", "nan", "NaN", "nan(7)", "in", "na", "1,5", "1;5", "1'000", "0.29", "0.57", "1.005",
             "9007199254740991", "9007199254740992", "9007199254740993", "18014398509481985", "999999999999999999999", "0.0000000000000000000001",
             "0.00000000000000000000001", "1.0000000000000000000001", "123456789.123456789", "00000000000000000000001.5", "1e22", "1e23",
             "179769313486231580793728971405303415079934132710037826936173778980444968292764750946649017977587207096330286416692887910946555547851940402630657488671505820681908902000708383676273854845811711531764475730270069855571366959622842914819860834936475292719074168444365510704342711559699508093042880",
         }) {
        const std::string whole = text;
        ExpectLikeAtof(whole.substr(0, csvFieldLimit));
    }
}

TEST(CsvNumber, LongDigitsAreReadWhole) {
    ExpectLikeAtof(std::string(127, '9'));
    ExpectLikeAtof("0." + std::string(125, '3'));
    ExpectLikeAtof(std::string(120, '0') + "1.25");
    ExpectLikeAtof("0." + std::string(110, '0') + "1e99");
}

TEST(CsvNumber, RandomNumbersAreReadAsAtofReadsThem) {
    std::mt19937_64 random(11);
    for (int round = 0; round < 300000; round++) {
        char text[64];
        const int decimals = static_cast<int>(random() % 9);
        const double value = std::ldexp(static_cast<double>(static_cast<int64_t>(random())), -static_cast<int>(random() % 64) - 16);
        std::snprintf(text, sizeof text, round % 8 == 0 ? "%.*e" : "%.*f", decimals, value);
        ExpectLikeAtof(text);
        if (HasFailure()) break;
    }
}

TEST(CsvNumber, RandomBytesAreReadAsAtofReadsThem) {
    std::mt19937 random(5);
    const std::string letters = "0123456789012345678901234567890123456789...--++eExX fiInNaA\t";
    for (int round = 0; round < 300000; round++) {
        std::string text(random() % 12, ' ');
        for (char& c : text) c = letters[random() % letters.size()];
        ExpectLikeAtof(text);
        if (HasFailure()) break;
    }
}

TEST(CsvNumber, BytesBehindTheFieldDoNotCount) {
    for (const char* behind : {"99999999", "........", "\0\0\0\0\0\0\0\0", "eeeeeeee"})
        for (const char* text : {"1", "12", "12.5", "1234567", "-3", ""}) {
            const InText field(text, std::string(behind, 8).c_str()), alone(text, "\n");
            EXPECT_EQ(FieldNumber(field.field), StandardAtof(text)) << text << behind;
        }
}

TEST(CsvNumber, IntegersEndAtTheFirstByteThatIsNoDigit) {
    for (const char* text : {"", "12", "-7", "+5", " 12", "12.9", "-12.9", ".9", "1e3", "0x10", "abc", "12abc", "--5", "2147483647", "-2147483648",
                             "0000000000000000000000012"})
        EXPECT_EQ(Integer(text), std::atoi(text)) << text;
    EXPECT_EQ(Integer("2147483648"), INT32_MAX);
    EXPECT_EQ(Integer("-99999999999999999999999"), INT32_MIN);
    EXPECT_EQ(Integer("0.99999999999999999999"), 0);
}

}  // namespace
