#include "run_data/csv_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "bench/plain_csv_import.h"

namespace {

using Lines = std::vector<std::vector<std::string>>;

// The text with exactly the margin that is promised behind it.
struct Padded {
    std::vector<uint8_t> bytes;
    int length;
    explicit Padded(const std::string& text) : bytes(text.begin(), text.end()), length(static_cast<int>(text.size())) {
        bytes.resize(text.size() + 1024, 0);
        bytes.shrink_to_fit();
    }
};

Lines AllLines(const std::string& bytes, int most = csvColumnLimit) {
    const Padded padded(bytes);
    CsvText text = StartCsv(padded.bytes.data(), padded.length);
    Lines lines;
    for (CsvLine line; ReadLine(text, line, most);) {
        lines.emplace_back();
        for (int k = 0; k < line.fields; k++) lines.back().emplace_back(line.field[k].text, line.field[k].length);
    }
    return lines;
}

Lines PlainLines(const std::string& bytes, int most = csvColumnLimit) {
    const Padded padded(bytes);
    PlainCsvReader reader{reinterpret_cast<const char*>(padded.bytes.data()), padded.length};
    Lines lines;
    while (reader.ReadLine()) {
        const int fields = reader.Split(most);
        lines.emplace_back(reader.field, reader.field + fields);
    }
    return lines;
}

TEST(CsvText, CommasAndQuotesSeparateFields) {
    EXPECT_EQ(AllLines("Time,\"Ne (rpm)\",TH\n0.005,100,2"), (Lines{{"Time", "Ne (rpm)", "TH"}, {"0.005", "100", "2"}}));
}

TEST(CsvText, EmptyFieldDoesNotCountAndTheNextOnesMoveLeft) {
    EXPECT_EQ(AllLines("a,,b\n,\"\",c,\n,,,\n"), (Lines{{"a", "b"}, {"c"}, {}}));
}

TEST(CsvText, BlanksBelongToTheField) { EXPECT_EQ(AllLines(" a , ,b \n"), (Lines{{" a ", " ", "b "}})); }

TEST(CsvText, EveryLineEndCountsOnceAndDoubleOnesAreOne) {
    EXPECT_EQ(AllLines("a\nb\rc\r\nd\n\re"), (Lines{{"a"}, {"b"}, {"c"}, {"d"}, {"e"}}));
    EXPECT_EQ(AllLines("a\n\nb\r\rc\r\n\r\nd"), (Lines{{"a"}, {}, {"b"}, {}, {"c"}, {}, {"d"}}));
}

TEST(CsvText, LastLineNeedsNoEnd) {
    EXPECT_EQ(AllLines("a\nb"), AllLines("a\nb\n"));
    EXPECT_EQ(AllLines("a\nb"), AllLines("a\nb\r\n"));
}

TEST(CsvText, ZeroByteEndsALineAndTwoEndTheText) {
    EXPECT_EQ(AllLines(std::string("a,b\0c\nd", 7)), (Lines{{"a", "b"}, {"c"}, {"d"}}));
    EXPECT_EQ(AllLines(std::string("a\0\0b\n", 5)), (Lines{{"a"}}));
    EXPECT_EQ(AllLines(std::string("\0a\n", 3)), Lines{});
    EXPECT_EQ(AllLines(std::string("a\n\0b\n", 5)), (Lines{{"a"}}));
}

TEST(CsvText, EmptyTextHasNoLine) { EXPECT_EQ(AllLines(""), Lines{}); }

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
              (Lines{{std::string(127, 'x'), std::string(127, 'y'), "z"}}));
}

TEST(CsvText, FieldsBehindTheWantedOnesAreLeftOut) {
    std::string text;
    for (int k = 0; k < 101; k++) text += std::to_string(k) + ",";
    EXPECT_EQ(AllLines(text + "\nb\n")[0].size(), 100u);
    EXPECT_EQ(AllLines(text + "\nb\n")[0][99], "99");
    EXPECT_EQ(AllLines("a,b,c\nd\n", 2), (Lines{{"a", "b"}, {"d"}}));
    EXPECT_EQ(AllLines("a,b,c\nd\n", 0), (Lines{{}, {}}));
}

TEST(CsvText, FieldThatTheLineLacksIsEmpty) {
    CsvLine line;
    line.fields = 1;
    line.field[0] = {"x", 1};
    EXPECT_EQ(FieldAt(line, 0).length, 1);
    EXPECT_EQ(FieldAt(line, 1).length, 0);
    EXPECT_EQ(FieldAt(line, -1).length, 0);
}

TEST(CsvText, CursorPastTheEndGoesBackToTheStart) {
    const Padded padded("a");
    CsvText text = StartCsv(padded.bytes.data(), padded.length);
    CsvLine line;
    EXPECT_TRUE(ReadLine(text, line));
    EXPECT_EQ(text.cursor, 2);
    EXPECT_FALSE(ReadLine(text, line));
    EXPECT_EQ(text.cursor, 0);
}

// Line ends and separators at every place of a block, against a reader that goes byte by byte.
TEST(CsvText, AnyBytesGiveTheLinesOfThePlainReader) {
    std::mt19937 random(7);
    const std::string letters = "ab12.-,,,\"\n\r";
    for (int round = 0; round < 3000; round++) {
        std::string text(random() % 400, ' ');
        for (char& c : text) c = random() % 97 == 0 ? '\0' : letters[random() % letters.size()];
        if (round % 50 == 0) text.insert(random() % (text.size() + 1), std::string(random() % 2100, 'x'));
        const int most = round % 3 == 0 ? 3 : csvColumnLimit;
        ASSERT_EQ(AllLines(text, most), PlainLines(text, most)) << text;
    }
}

}  // namespace
