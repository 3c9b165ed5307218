#include "run_data/csv_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/run_data/csv_lines.h"

namespace {

CsvLines AllLines(const std::string& bytes, int most = csvColumnLimit) {
    const PaddedCsv padded(bytes);
    CsvText text = padded.Start();
    CsvLines lines;
    for (CsvLine line; ReadLine(text, line, most);) {
        lines.emplace_back();
        for (int k = 0; k < line.fields; k++) lines.back().emplace_back(line.field[k].text, line.field[k].length);
    }
    return lines;
}

TEST(CsvText, CommasAndQuotesSeparateFields) {
    EXPECT_EQ(AllLines("Time,\"Ne (rpm)\",TH\n0.005,100,2"), (CsvLines{{"Time", "Ne (rpm)", "TH"}, {"0.005", "100", "2"}}));
}

TEST(CsvText, EmptyFieldDoesNotCountAndTheNextOnesMoveLeft) {
    EXPECT_EQ(AllLines("a,,b\n,\"\",c,\n,,,\n"), (CsvLines{{"a", "b"}, {"c"}, {}}));
}

TEST(CsvText, BlanksBelongToTheField) { EXPECT_EQ(AllLines(" a , ,b \n"), (CsvLines{{" a ", " ", "b "}})); }

TEST(CsvText, EveryLineEndCountsOnceAndDoubleOnesAreOne) {
    EXPECT_EQ(AllLines("a\nb\rc\r\nd\n\re"), (CsvLines{{"a"}, {"b"}, {"c"}, {"d"}, {"e"}}));
    EXPECT_EQ(AllLines("a\n\nb\r\rc\r\n\r\nd"), (CsvLines{{"a"}, {}, {"b"}, {}, {"c"}, {}, {"d"}}));
}

TEST(CsvText, LastLineNeedsNoEnd) {
    EXPECT_EQ(AllLines("a\nb"), AllLines("a\nb\n"));
    EXPECT_EQ(AllLines("a\nb"), AllLines("a\nb\r\n"));
}

TEST(CsvText, ZeroByteEndsALineAndTwoEndTheText) {
    EXPECT_EQ(AllLines(std::string("a,b\0c\nd", 7)), (CsvLines{{"a", "b"}, {"c"}, {"d"}}));
    EXPECT_EQ(AllLines(std::string("a\0\0b\n", 5)), (CsvLines{{"a"}}));
    EXPECT_EQ(AllLines(std::string("\0a\n", 3)), CsvLines{});
    EXPECT_EQ(AllLines(std::string("a\n\0b\n", 5)), (CsvLines{{"a"}}));
}

TEST(CsvText, EmptyTextHasNoLine) { EXPECT_EQ(AllLines(""), CsvLines{}); }

TEST(CsvText, LineOf2044BytesIsReadAndOneOf2045EndsTheText) {
    const std::string fits(2044, 'x'), longer(2045, 'x'), much(70000, 'x');
    EXPECT_EQ(AllLines("a\n" + fits + "\nb\n").size(), 3u);
    EXPECT_EQ(AllLines("a\n" + longer + "\nb\n").size(), 1u);
    EXPECT_EQ(AllLines("a\n" + much + "\nb\n").size(), 1u);
    EXPECT_EQ(AllLines(fits).size(), 1u);
    EXPECT_EQ(AllLines(longer).size(), 0u);
}

TEST(CsvText, FieldIsCutTo127Bytes) {
    EXPECT_EQ(AllLines(std::string(127, 'x') + "," + std::string(128, 'y') + ",z\n"),
              (CsvLines{{std::string(127, 'x'), std::string(127, 'y'), "z"}}));
}

TEST(CsvText, FieldsBehindTheWantedOnesAreLeftOut) {
    std::string text;
    for (int k = 0; k < 101; k++) text += std::to_string(k) + ",";
    EXPECT_EQ(AllLines(text + "\nb\n")[0].size(), 100u);
    EXPECT_EQ(AllLines(text + "\nb\n")[0][99], "99");
    EXPECT_EQ(AllLines("a,b,c\nd\n", 2), (CsvLines{{"a", "b"}, {"d"}}));
    EXPECT_EQ(AllLines("a,b,c\nd\n", 0), (CsvLines{{}, {}}));
}

TEST(CsvText, CursorPastTheEndGoesBackToTheStart) {
    const PaddedCsv padded("a");
    CsvText text = padded.Start();
    CsvLine line;
    EXPECT_TRUE(ReadLine(text, line));
    EXPECT_EQ(text.cursor, 2);
    EXPECT_FALSE(ReadLine(text, line));
    EXPECT_EQ(text.cursor, 0);
}

// Against a reader that copies every byte.
TEST(CsvText, AnyBytesGiveTheLinesOfThePlainReader) {
    std::mt19937 random(7);
    const std::string letters = "ab12.-,,,\"\n\r";
    for (int round = 0; round < 3000; round++) {
        std::string text(random() % 400, ' ');
        for (char& c : text) c = random() % 97 == 0 ? '\0' : letters[random() % letters.size()];
        if (round % 50 == 0) text.insert(random() % (text.size() + 1), std::string(random() % 2100, 'x'));
        const int most = round % 3 == 0 ? 3 : csvColumnLimit;
        ASSERT_EQ(AllLines(text, most), PlainCsvLines(text, most)) << text;
    }
}

}  // namespace
