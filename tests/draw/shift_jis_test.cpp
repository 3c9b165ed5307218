#include "draw/shift_jis.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

struct Decoded {
    int bytes;
    char16_t unicode;
    bool operator==(const Decoded&) const = default;
};
Decoded Decode(const char* text, int count = -1) {
    Decoded result{};
    result.bytes = DecodeShiftJis(text, count < 0 ? static_cast<int>(std::strlen(text)) : count, &result.unicode);
    return result;
}

TEST(ShiftJis, AsciiStaysAndBackslashIsABackslash) {
    for (char c = 1; c < 127; ++c) {
        const char text[] = {c, 0};
        EXPECT_EQ(Decode(text), (Decoded{1, static_cast<char16_t>(c)}));
    }
    EXPECT_EQ(Decode("\\"), (Decoded{1, u'\\'}));
}

TEST(ShiftJis, HalfWidthKanaTakeOneByte) {
    EXPECT_EQ(Decode("\xA1"), (Decoded{1, 0xFF61}));
    EXPECT_EQ(Decode("\xB1"), (Decoded{1, 0xFF71}));  // a
    EXPECT_EQ(Decode("\xDF"), (Decoded{1, 0xFF9F}));
}

TEST(ShiftJis, DoubleBytesAreThoseOfCodePage932) {
    struct Row {
        const char* bytes;
        char16_t unicode;
    };
    const Row rows[] = {
        {"\x81\x40", 0x3000}, {"\x81\x60", 0xFF5E}, {"\x81\x5C", 0x2015}, {"\x82\xA0", u'あ'}, {"\x83\x41", u'ア'},
        {"\x83\x5C", u'ソ'},  {"\x88\x9F", u'亜'},  {"\x93\xFA", u'日'},  {"\x96\x7B", u'本'}, {"\x98\x72", u'腕'},
        {"\x87\x40", u'①'},  {"\xEA\xA4", u'熙'},  {"\xED\x40", u'纊'},  {"\xFA\x5C", u'纊'}, {"\xFC\x4B", u'黑'},
    };
    for (const Row& row : rows) EXPECT_EQ(Decode(row.bytes), (Decoded{2, row.unicode})) << row.bytes;
}

TEST(ShiftJis, CutOffLeadByteTakesOne) {
    EXPECT_EQ(Decode("\x93\xFA", 1), (Decoded{1, 0x30FB}));
    EXPECT_EQ(Decode("\x93"), (Decoded{1, 0x30FB}));
}

TEST(ShiftJis, LeadByteBeforeWhatIsNoTrailTakesOne) {
    for (const char* text : {"\x93 ", "\x93\x3F", "\x93\x7F", "\x93\xFD", "\x93\n"}) EXPECT_EQ(Decode(text), (Decoded{1, 0x30FB}));
}

TEST(ShiftJis, BytesThatLeadNothingTakeOne) {
    for (const char* text : {"\x80\x40", "\xA0\x40", "\xFD\x40", "\xFE\x40", "\xFF\x40"})
        EXPECT_EQ(Decode(text), (Decoded{1, 0x30FB}));
}

TEST(ShiftJis, PairWithoutACharacterTakesTwo) {
    EXPECT_EQ(Decode("\x85\x40"), (Decoded{2, 0x30FB}));
    EXPECT_EQ(Decode("\xF0\x40"), (Decoded{2, 0x30FB}));  // the user's own characters
    EXPECT_EQ(Decode("\x81\xAD"), (Decoded{2, 0x30FB}));
}

TEST(ShiftJis, EveryPairOfBytesGivesOneCharacter) {
    for (int lead = 0; lead < 256; ++lead)
        for (int trail = 0; trail < 256; ++trail) {
            const char text[] = {static_cast<char>(lead), static_cast<char>(trail)};
            const Decoded result = Decode(text, 2);
            EXPECT_TRUE(result.bytes == 1 || result.bytes == 2);
            EXPECT_TRUE(result.bytes == 1 || result.unicode >= 0xA7) << lead << ' ' << trail;
        }
}

}  // namespace
