#include "settings/profile_file.h"

#include <gtest/gtest.h>

#include "tests/test_folder.h"

using namespace std::string_literals;

static std::string Value(std::string_view bytes, const char* section, const char* key) {
    const ProfileText profile = ParseProfile(bytes);
    return std::string(ProfileString(profile, section, key, "missing"));
}

static std::string AfterWriting(std::string_view bytes, const char* text, const char* section, const char* key) {
    ProfileText profile = ParseProfile(bytes);
    WriteStringKey(profile, text, section, key);
    return ProfileBytes(profile);
}

static std::string AfterRemoving(std::string_view bytes, const char* section, const char* key) {
    ProfileText profile = ParseProfile(bytes);
    RemoveProfileKey(profile, section, key);
    EXPECT_EQ(ProfileString(profile, section, key, "missing"), "missing");
    return ProfileBytes(profile);
}

TEST(ProfileReading, KeyIsFoundInItsSectionOnly) {
    const char* bytes = "[A]\r\nx=1\r\n[B]\r\nx=2\r\ny=3\r\n";
    EXPECT_EQ(Value(bytes, "A", "x"), "1");
    EXPECT_EQ(Value(bytes, "B", "x"), "2");
    EXPECT_EQ(Value(bytes, "A", "y"), "missing");
    EXPECT_EQ(Value(bytes, "C", "x"), "missing");
}

TEST(ProfileReading, NamesCompareWithoutLetterCase) {
    EXPECT_EQ(Value("[GraphSetting]\nRpmPos=7\n", "graphsetting", "RPMPOS"), "7");
}

TEST(ProfileReading, LettersOutsideAsciiCompareExactly) {
    EXPECT_EQ(Value("[\xC3\x84]\nx=1\n", "\xC3\xA4", "x"), "missing");
    EXPECT_EQ(Value("[\xC3\x84]\nx=1\n", "\xC3\x84", "x"), "1");
}

TEST(ProfileReading, BlanksAroundNamesAndValuesAreCut) {
    EXPECT_EQ(Value("  [ A ]  \r\n\t x \t=  1 2 \t\r\n", "A", "x"), "1 2");
}

TEST(ProfileReading, KeyWithALeadingBlankIsFoundUnderBothNames) {
    EXPECT_EQ(Value("[A]\n x=0\n", "A", " x"), "0");
    EXPECT_EQ(Value("[A]\n x=0\n", "A", "x"), "0");
    EXPECT_EQ(Value("[A]\nx=0\n", "A", " x"), "missing");
    EXPECT_EQ(Value("[A]\n\tx=0\n", "A", " x"), "missing");
}

TEST(ProfileReading, OnePairOfQuotesIsTakenOff) {
    EXPECT_EQ(Value("[A]\nx=\" a \"\n", "A", "x"), " a ");
    EXPECT_EQ(Value("[A]\nx='a'\n", "A", "x"), "a");
    EXPECT_EQ(Value("[A]\nx=\"\"a\"\"\n", "A", "x"), "\"a\"");
    EXPECT_EQ(Value("[A]\nx=\"a'\n", "A", "x"), "\"a'");
    EXPECT_EQ(Value("[A]\nx=\"\n", "A", "x"), "\"");
}

TEST(ProfileReading, ValueMayHoldEqualsSignsAndBrackets) {
    EXPECT_EQ(Value("[A]\nx=[b]=c;d\n", "A", "x"), "[b]=c;d");
}

TEST(ProfileReading, EmptyValueIsThereAndEmpty) { EXPECT_EQ(Value("[A]\nx=\n", "A", "x"), ""); }

TEST(ProfileReading, CommentsAndForeignLinesAreNoKeys) {
    const char* bytes = "[A]\n;x=1\n  ; y=2\nno key\n=5\n[open\nz=3\n";
    EXPECT_EQ(Value(bytes, "A", ";x"), "missing");
    EXPECT_EQ(Value(bytes, "A", "y"), "missing");
    EXPECT_EQ(Value(bytes, "A", ""), "missing");
    EXPECT_EQ(Value(bytes, "A", "z"), "3") << "a bracket that is not closed opens no section";
}

TEST(ProfileReading, FirstKeyAndFirstSectionOfANameCount) {
    const char* bytes = "[A]\nx=1\nX=2\n[B]\n[a]\nx=3\ny=4\n";
    EXPECT_EQ(Value(bytes, "A", "x"), "1");
    EXPECT_EQ(Value(bytes, "A", "y"), "missing");
}

TEST(ProfileReading, KeysBeforeTheFirstSectionBelongToNone) { EXPECT_EQ(Value("x=1\n[A]\n", "", "x"), "missing"); }

TEST(ProfileReading, SectionNameMayHoldABracket) { EXPECT_EQ(Value("[a]b]\nx=1\n", "a]b", "x"), "1"); }

TEST(ProfileReading, MarkOfAnEditorBeforeTheFirstSectionIsSkippedAndKept) {
    const std::string bytes = "\xEF\xBB\xBF[A]\r\nx=1\r\n";
    EXPECT_EQ(Value(bytes, "A", "x"), "1");
    EXPECT_EQ(AfterWriting(bytes, "2", "A", "x"), "\xEF\xBB\xBF[A]\r\nx=2\r\n");
    EXPECT_EQ(AfterWriting("\xEF\xBB\xBF", "2", "A", "x"), "\xEF\xBB\xBF[A]\r\nx=2\r\n");
}

TEST(ProfileReading, LastLineNeedsNoLineEnd) {
    EXPECT_EQ(Value("[A]\nx=1", "A", "x"), "1");
    EXPECT_EQ(Value("[A]", "A", "x"), "missing");
}

TEST(ProfileNumbers, AreDecimalWithAnOptionalMinusAndIgnoreTheRest) {
    struct { const char* text; int number; } const rows[] = {
        {"0", 0},      {"12", 12},    {"-12", -12},  {"", 0},   {"-", 0},   {"x", 0},    {"12px", 12},
        {"12.9", 12},  {"0x10", 0},   {"+5", 0},     {"--5", 0}, {"- 5", 0}, {"007", 7}, {"2147483647", 2147483647},
        {"-2147483648", INT32_MIN},   {"4294967295", -1}, {"4294967296", 0}, {"99999999999999999999", 1661992959},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(DecimalInt(row.text), row.number);
        const ProfileText profile = ParseProfile(std::string("[A]\nx = ") + row.text + "\n");
        EXPECT_EQ(ProfileInt(profile, "A", "x", 77), row.number);
    }
    EXPECT_EQ(ProfileInt(ProfileText{}, "A", "x", 77), 77);
}

TEST(ProfileNumbers, AreReadThroughQuotes) { EXPECT_EQ(ProfileInt(ParseProfile("[A]\nx=\" 5\"\n"), "A", "x", 1), 0); }

TEST(ProfileWriting, NewFileGetsSectionsAndKeysInTheOrderOfWriting) {
    ProfileText profile;
    WriteStringKey(profile, "C:\\logs", "Path", "Data");
    WriteIntKey(profile, -5, "Window", "x");
    WriteStringKey(profile, "", "Path", "BMP");
    EXPECT_EQ(ProfileBytes(profile), "[Path]\r\nData=C:\\logs\r\nBMP=\r\n[Window]\r\nx=-5\r\n");
}

TEST(ProfileWriting, ChangedValueLeavesEverythingElseAsItStands) {
    const char* bytes = "; mine\r\n\r\n[A]\r\n  RpmPos \t=  360  \r\nforeign\r\n\r\n; end";
    EXPECT_EQ(AfterWriting(bytes, "5", "a", "rpmpos"), "; mine\r\n\r\n[A]\r\n  RpmPos \t=  5  \r\nforeign\r\n\r\n; end");
}

TEST(ProfileWriting, EmptyValueIsFilledInAndAFullOneEmptied) {
    EXPECT_EQ(AfterWriting("[A]\nx=  \n", "7", "A", "x"), "[A]\nx=7  \n");
    EXPECT_EQ(AfterWriting("[A]\nx= 7\n", "", "A", "x"), "[A]\nx= \n");
}

TEST(ProfileWriting, NewKeyGoesBehindTheLastLineOfItsSection) {
    EXPECT_EQ(AfterWriting("[A]\r\nx=1\r\n; c\r\n\r\n[B]\r\n", "2", "A", "y"), "[A]\r\nx=1\r\n; c\r\ny=2\r\n\r\n[B]\r\n");
}

TEST(ProfileWriting, LineEndsFollowTheFile) {
    EXPECT_EQ(AfterWriting("[A]\nx=1\n", "2", "A", "y"), "[A]\nx=1\ny=2\n");
    EXPECT_EQ(AfterWriting("\n[A]", "2", "A", "y"), "\n[A]\ny=2\n");
    EXPECT_EQ(AfterWriting("[A]", "2", "A", "y"), "[A]\r\ny=2\r\n");
    EXPECT_EQ(AfterWriting("junk", "2", "A", "y"), "junk\r\n[A]\r\ny=2\r\n");
}

TEST(ProfileWriting, ValueThatReadingWouldCutIsPutInQuotes) {
    for (const char* text : {" a", "a\t", "'a'", "\"a\"", "\"\"", " ", "\v"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Value(AfterWriting("", text, "A", "x"), "A", "x"), text);
    }
}

TEST(ProfileWriting, TextEndsAtItsFirstLineBreak) {
    EXPECT_EQ(AfterWriting("", "a\n[B]\ny=1", "A", "x"), "[A]\r\nx=a\r\n");
    EXPECT_EQ(AfterWriting("[A]\r\nx=1\r\n", "a\r", "A", "x"), "[A]\r\nx=a\r\n");
}

TEST(ProfileWriting, NamesThatCouldNotBeReadBackAreNotWritten) {
    struct { const char *section, *key; } const rows[] = {{"A\nB", "x"}, {"A", "x\ny"}, {"A", ""}, {"A", "x=y"},
                                                         {"A", ";x"},   {"A", "[x"},   {"A\r", "x\r"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.section) + '/' + row.key);
        EXPECT_EQ(AfterWriting("; c\n", "1", row.section, row.key), "; c\n");
    }
}

TEST(ProfileWriting, KeyWithALeadingBlankIsWrittenAndFoundAgain) {
    EXPECT_EQ(AfterWriting("[A]\nx=1\n", "0", "A", " x"), "[A]\nx=1\n x=0\n");
    EXPECT_EQ(Value("[A]\nx=1\n x=0\n", "A", " x"), "0");
    EXPECT_EQ(Value("[A]\nx=1\n x=0\n", "A", "x"), "1");
}

TEST(ProfileWriting, BytesOfAnyCodePageComeBackUnchanged) {
    std::string bytes = "[A]\r\nx=";
    for (int byte = 1; byte < 256; byte++)
        if (byte != '\r' && byte != '\n') bytes += static_cast<char>(byte);
    bytes += '\0';
    EXPECT_EQ(ProfileBytes(ParseProfile(bytes)), bytes);
    EXPECT_EQ(Value("[A]\nx=\x93\xFA\x96\x7B\n", "A", "x"), "\x93\xFA\x96\x7B");
}

TEST(ProfileRemoving, EveryLineOfTheKeyGoesAndTheRestStays) {
    EXPECT_EQ(AfterRemoving("[A]\nx=1\n; c\n X =2\ny=3\n[B]\nx=4\n", "a", "x"), "[A]\n; c\ny=3\n[B]\nx=4\n");
}

TEST(ProfileRemoving, KeyOrSectionThatIsNotThereChangesNothing) {
    EXPECT_EQ(AfterRemoving("[A]\nx=1\n", "A", "y"), "[A]\nx=1\n");
    EXPECT_EQ(AfterRemoving("[A]\nx=1\n", "B", "x"), "[A]\nx=1\n");
}

TEST(ProfileRemoving, KeyCanBeSetAgain) {
    ProfileText profile = ParseProfile("[A]\nx=1\n[B]\n");
    RemoveProfileKey(profile, "A", "x");
    WriteIntKey(profile, 2, "A", "x");
    EXPECT_EQ(ProfileBytes(profile), "[A]\nx=2\n[B]\n");
    EXPECT_EQ(ProfileInt(profile, "A", "x", 0), 2);
}

TEST(ProfileFiles, MissingFileIsAnEmptyProfile) {
    const TestFolder folder;
    ProfileText profile = ParseProfile("[A]\nx=1\n");
    EXPECT_EQ(LoadProfile(folder.Path("none.ini").c_str(), profile), 0);
    EXPECT_EQ(ProfileBytes(profile), "");
    EXPECT_EQ(ProfileString(profile, "A", "x", "missing"), "missing");
}

TEST(ProfileFiles, EmptyFileIsAnEmptyProfile) {
    const TestFolder folder;
    ProfileText profile;
    EXPECT_EQ(LoadProfile(folder.Write("a.ini", "").c_str(), profile), 0);
    EXPECT_EQ(ProfileBytes(profile), "");
}

TEST(ProfileFiles, FileComesBackByteForByte) {
    const TestFolder folder;
    const std::string bytes = "\xEF\xBB\xBF; c\r\n[A]\nx = 1\r\r\n\n\n[A]\0x\xFF=\r\n\x1A"s;
    ProfileText profile;
    EXPECT_EQ(LoadProfile(folder.Write("a.ini", bytes).c_str(), profile), 0);
    EXPECT_EQ(SaveProfile(folder.Path("b.ini").c_str(), profile), 0);
    EXPECT_EQ(folder.Read("b.ini"), bytes);
}

TEST(ProfileFiles, FileAboveTheLimitIsNotRead) {
    const TestFolder folder;
    ProfileText profile;
    const std::string line = "[A]\nx=1\n";
    std::string bytes = line + std::string(profileSizeLimit - line.size(), '\n');
    EXPECT_EQ(LoadProfile(folder.Write("a.ini", bytes).c_str(), profile), 0);
    EXPECT_EQ(ProfileInt(profile, "A", "x", 0), 1);
    bytes += '\n';
    EXPECT_EQ(LoadProfile(folder.Write("a.ini", bytes).c_str(), profile), 1);
    EXPECT_EQ(ProfileInt(profile, "A", "x", 0), 0);
}

TEST(ProfileFiles, FailedSaveLeavesNothingBehind) {
    const TestFolder folder;
    ProfileText profile;
    WriteIntKey(profile, 1, "A", "x");
    EXPECT_EQ(SaveProfile(folder.Path("none/a.ini").c_str(), profile), 1);
    EXPECT_EQ(folder.EntryCount(), 0);
}

TEST(ProfileFiles, ManySectionsAreFoundWithoutWalkingThem) {
    // A scan of the text for every key would take minutes here.
    std::string bytes;
    for (int section = 0; section < 60000; section++) bytes += "[s" + std::to_string(section) + "]\nk=" + std::to_string(section) + "\n";
    const ProfileText profile = ParseProfile(bytes);
    for (int section = 0; section < 60000; section++)
        ASSERT_EQ(ProfileInt(profile, "S" + std::to_string(section), "K", -1), section);
}
