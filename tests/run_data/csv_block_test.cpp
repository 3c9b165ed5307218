#include "run_data/csv_block.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/run_data/csv_lines.h"

namespace {

// All lines, with `columns` fields each, taken in hand by `wanted()` at a time.
template <class Wanted>
CsvLines AllLines(void (*readBlock)(CsvBlock&, int), const std::string& bytes, int columns, Wanted wanted) {
    static CsvBlock block;
    const PaddedCsv padded(bytes);
    StartBlocks(block, padded.Start(), columns);
    CsvLines lines;
    for (bool over = false; !over;) {
        const int most = wanted();
        readBlock(block, most);
        EXPECT_LE(block.lines, most);
        EXPECT_EQ(block.text.cursor, block.start[block.lines]);
        for (int k = 0; k < block.lines; k++) {
            lines.emplace_back();
            for (int column = 0; column < columns; column++) {
                const CsvField field = FieldOf(block, k, column);
                lines.back().emplace_back(field.text, field.length);
            }
        }
        over = block.lines < most;
    }
    return lines;
}

CsvLines AllLines(const std::string& bytes, int columns) {
    return AllLines(ReadBlock, bytes, columns, [] { return csvBlockLines; });
}

// As the plain reader has them, with empty fields where a line lacks some.
CsvLines WantedLines(const std::string& bytes, int columns) {
    CsvLines lines = PlainCsvLines(bytes, columns);
    for (auto& line : lines) line.resize(static_cast<size_t>(columns));
    return lines;
}

// Both ways of reading against the plain reader, with blocks of all sizes.
void ExpectPlainLines(const std::string& text, int columns, std::mt19937& random) {
    const CsvLines wanted = WantedLines(text, columns);
    const auto some = [&] { return 1 + static_cast<int>(random() % csvBlockLines); };
    ASSERT_EQ(AllLines(ReadBlock, text, columns, some), wanted) << text;
    ASSERT_EQ(AllLines(ReadBlockPlain, text, columns, some), wanted) << text;
}

TEST(CsvBlock, FieldThatALineLacksIsEmpty) {
    EXPECT_EQ(AllLines("a,b,c\nd\n\n,,e,f\n", 3), (CsvLines{{"a", "b", "c"}, {"d", "", ""}, {"", "", ""}, {"e", "f", ""}}));
}

TEST(CsvBlock, LinesEndWhereTheTextDoesAndStayThere) {
    static CsvBlock block;
    const PaddedCsv padded("a\nb\nc");
    StartBlocks(block, padded.Start(), 1);
    ReadBlock(block, 2);
    EXPECT_EQ(block.lines, 2);
    ReadBlock(block, 2);
    EXPECT_EQ(block.lines, 1);
    for (int turn = 0; turn < 3; turn++) {
        ReadBlock(block, 2);
        EXPECT_EQ(block.lines, 0);
    }
}

TEST(CsvBlock, StartsAreThoseOfTheLines) {
    static CsvBlock block;
    const PaddedCsv padded("ab\r\nc\n\nd");
    StartBlocks(block, padded.Start(), 1);
    ReadBlock(block, csvBlockLines);
    EXPECT_EQ(std::vector<int64_t>(block.start, block.start + block.lines + 1), (std::vector<int64_t>{0, 4, 6, 7, 9}));
}

TEST(CsvBlock, LineOf2044BytesIsReadAndOneOf2045EndsTheText) {
    const std::string regular = "1,2,3\n1,2,3\n";
    for (const char byte : {'x', ','}) {
        EXPECT_EQ(AllLines(regular + std::string(2044, byte) + "\nb\n", 2).size(), 4u);
        EXPECT_EQ(AllLines(regular + std::string(2045, byte) + "\nb\n", 2).size(), 2u);
        EXPECT_EQ(AllLines(regular + std::string(70000, byte) + "\nb\n", 2).size(), 2u);
        EXPECT_EQ(AllLines(std::string(2045, byte), 2).size(), 0u);
    }
}

TEST(CsvBlock, FieldIsCutTo127BytesInALineLikeTheOthers) {
    std::string text;
    for (const int length : {1, 126, 127, 128, 129, 300}) text += "a," + std::string(length, 'x') + ",b\n";
    EXPECT_EQ(AllLines(text, 3), WantedLines(text, 3));
}

// The last two lines are a piece of their own with fewer separators than one line before has. What is left of the piece
// before them has a separator where the first one ends.
TEST(CsvBlock, SeparatorsOfThePieceBeforeDoNotCount) {
    std::string text;
    for (int line = 0; line < csvPieceBytes / 24; line++) text += "1,2,3,4,5,6,7,8,9,a,b,c\n";
    text += std::string(11, 'x') + ',' + std::string(11, 'y') + '\n' + std::string(19, 'z') + ',' + std::string(18, 'w') + '\n';
    EXPECT_EQ(AllLines(text, 2), WantedLines(text, 2));
}

TEST(CsvBlock, AnyBytesGiveTheLinesOfThePlainReader) {
    std::mt19937 random(7);
    const std::string letters = "ab12.-,,,\"\n\r";
    for (int round = 0; round < 2000; round++) {
        std::string text(random() % 600, ' ');
        for (char& c : text) c = random() % 97 == 0 ? '\0' : letters[random() % letters.size()];
        if (round % 50 == 0) text.insert(random() % (text.size() + 1), std::string(random() % 2100, 'x'));
        ExpectPlainLines(text, static_cast<int>(random() % (round % 2 ? 8 : csvColumnLimit + 1)), random);
        if (HasFailure()) break;
    }
}

// Lines of the same form with odd ones among them, long enough that every form meets the end of a piece.
TEST(CsvBlock, LinesLikeTheOneBeforeAreThoseOfThePlainReader) {
    std::mt19937 random(12);
    const char* const ends[] = {"\n", "\r\n", "\n\r", "\r"};
    for (int round = 0; round < 400; round++) {
        const int fields = 1 + static_cast<int>(random() % 20), columns = static_cast<int>(random() % (fields + 3));
        const char* const end = ends[random() % 4];
        std::string text;
        for (int line = 0; line < 600; line++) {
            const int odd = static_cast<int>(random() % 60);
            for (int k = 0; k < fields + (odd == 1) - (odd == 2); k++) {
                if (k > 0) text += odd == 3 ? "\",\"" : odd == 4 && k == 2 ? ",," : ",";
                text.append(1 + random() % (odd == 5 ? 140 : 6), static_cast<char>('a' + k));
            }
            text += odd == 6 ? ends[random() % 4] : odd == 7 ? ",\n" : end;
        }
        ExpectPlainLines(text, columns, random);
        if (HasFailure()) break;
    }
}

}  // namespace
