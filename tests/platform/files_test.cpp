#include "platform/files.h"

#include <gtest/gtest.h>

#include "platform/system_files.h"
#include "tests/test_folder.h"

namespace {

constexpr int64_t noLimit = INT64_MAX;

struct Files : testing::Test {
    TestFolder folder;
    std::string startFolder = CurrentFolder();
    void TearDown() override { EnterFolder(startFolder.c_str()); }
};

TEST_F(Files, LengthIsThatOfTheFile) {
    EXPECT_EQ(FileLength(folder.Write("a.bin", "12345").c_str()), 5);
    EXPECT_EQ(FileLength(folder.Write("empty", "").c_str()), 0);
}

TEST_F(Files, LengthOfWhatIsNoFileIsMinusOne) {
    EXPECT_EQ(FileLength(folder.Path("missing").c_str()), -1);
    EXPECT_EQ(FileLength(folder.Path("no/such/folder").c_str()), -1);
    EXPECT_EQ(FileLength(folder.Path().c_str()), -1);  // the folder itself
    EXPECT_EQ(FileLength(""), -1);
}

TEST_F(Files, ReadingEndsInAMarginOfZeros) {
    const std::string path = folder.Write("a.bin", std::string("a\r\n\0\x1a" "b", 6));
    FileBytes bytes;
    ASSERT_EQ(ReadWholeFile(path.c_str(), noLimit, 1024, bytes), 0);
    ASSERT_EQ(bytes.length, 6);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(bytes.data.get()), 6), std::string("a\r\n\0\x1a" "b", 6));
    for (int i = 0; i < 1024; ++i) ASSERT_EQ(bytes.data[6 + i], 0) << i;
}

TEST_F(Files, ReadingAnEmptyFileGivesTheMarginAlone) {
    FileBytes bytes;
    ASSERT_EQ(ReadWholeFile(folder.Write("empty", "").c_str(), noLimit, 4, bytes), 0);
    EXPECT_EQ(bytes.length, 0);
    EXPECT_EQ(bytes.data[3], 0);
}

TEST_F(Files, AFileAtTheLimitIsReadAndOneByteMoreIsNot) {
    const std::string path = folder.Write("a.bin", "12345");
    FileBytes bytes;
    EXPECT_EQ(ReadWholeFile(path.c_str(), 5, 0, bytes), 0);
    EXPECT_EQ(ReadWholeFile(path.c_str(), 4, 0, bytes), 1);
    EXPECT_EQ(bytes.length, 0);
    EXPECT_FALSE(bytes.data);
}

TEST_F(Files, ReadingWhatIsNoFileFailsAndLeavesNothing) {
    FileBytes bytes;
    EXPECT_EQ(ReadWholeFile(folder.Path("missing").c_str(), noLimit, 8, bytes), 1);
    EXPECT_EQ(ReadWholeFile(folder.Path().c_str(), noLimit, 8, bytes), 1);
    EXPECT_FALSE(bytes.data);
}

TEST_F(Files, ReplacingMakesAFileAndThenChangesIt) {
    const std::string path = folder.Path("a.ini");
    EXPECT_EQ(ReplaceFile(path.c_str(), "first\n", 6), 0);
    EXPECT_EQ(folder.Read("a.ini"), "first\n");
    EXPECT_EQ(ReplaceFile(path.c_str(), "2", 1), 0);
    EXPECT_EQ(folder.Read("a.ini"), "2");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST_F(Files, ReplacingInAMissingFolderFails) {
    EXPECT_EQ(ReplaceFile(folder.Path("missing/a.ini").c_str(), "x", 1), 1);
    EXPECT_EQ(folder.EntryCount(), 0);
}

TEST_F(Files, ReplacingAFolderOfThatNameFailsAndLeavesNothingBeside) {
    std::filesystem::create_directory(folder.path / "a.ini");
    EXPECT_EQ(ReplaceFile(folder.Path("a.ini").c_str(), "x", 1), 1);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path / "a.ini"));
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST_F(Files, ATemporaryFileLeftByAKilledRunIsNoHindrance) {
    folder.Write("a.ini.new0", "half a fi");
    EXPECT_EQ(ReplaceFile(folder.Path("a.ini").c_str(), "whole", 5), 0);
    EXPECT_EQ(folder.Read("a.ini"), "whole");
    EXPECT_EQ(folder.Read("a.ini.new0"), "half a fi");
}

TEST_F(Files, AReplacementShowsOnlyWhenItIsCommitted) {
    const std::string path = folder.Write("a.zrk", "old");
    FileReplacement replacement;
    ASSERT_EQ(BeginReplacement(replacement, path.c_str()), 0);
    EXPECT_EQ(WritePiece(replacement, "ne", 2), 0);
    EXPECT_EQ(WritePiece(replacement, "w", 1), 0);
    EXPECT_EQ(folder.Read("a.zrk"), "old");
    EXPECT_EQ(CommitReplacement(replacement), 0);
    EXPECT_EQ(folder.Read("a.zrk"), "new");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST_F(Files, AnAbandonedReplacementLeavesTheOldFileAndNothingBeside) {
    const std::string path = folder.Write("a.zrk", "old");
    FileReplacement replacement;
    ASSERT_EQ(BeginReplacement(replacement, path.c_str()), 0);
    WritePiece(replacement, "new", 3);
    AbandonReplacement(replacement);
    EXPECT_EQ(folder.Read("a.zrk"), "old");
    EXPECT_EQ(folder.EntryCount(), 1);
    AbandonReplacement(replacement);  // twice does no harm
    EXPECT_EQ(WritePiece(replacement, "x", 1), 1);
    EXPECT_EQ(CommitReplacement(replacement), 1);
}

TEST_F(Files, AReplacementThatCannotBeginTakesNothing) {
    FileReplacement replacement;
    EXPECT_EQ(BeginReplacement(replacement, folder.Path("missing/a.zrk").c_str()), 1);
    EXPECT_EQ(WritePiece(replacement, "x", 1), 1);
    EXPECT_EQ(CommitReplacement(replacement), 1);
}

TEST_F(Files, RenamingMovesAFile) {
    const std::string from = folder.Write("a.zrk", "log"), to = folder.Path("a[1'23''456(1-2)].zrk");
    EXPECT_EQ(RenameFile(from.c_str(), to.c_str()), 0);
    EXPECT_FALSE(FileExists(from.c_str()));
    EXPECT_EQ(folder.Read("a[1'23''456(1-2)].zrk"), "log");
}

TEST_F(Files, RenamingOntoAnExistingFileFailsAndLeavesBoth) {
    const std::string from = folder.Write("a.zrk", "log"), to = folder.Write("b.zrk", "other");
    EXPECT_EQ(RenameFile(from.c_str(), to.c_str()), 1);
    EXPECT_EQ(folder.Read("a.zrk"), "log");
    EXPECT_EQ(folder.Read("b.zrk"), "other");
}

TEST_F(Files, RenamingWhatIsMissingOrIntoAMissingFolderFails) {
    EXPECT_EQ(RenameFile(folder.Path("missing").c_str(), folder.Path("b").c_str()), 1);
    const std::string from = folder.Write("a.zrk", "log");
    EXPECT_EQ(RenameFile(from.c_str(), folder.Path("missing/b.zrk").c_str()), 1);
    EXPECT_EQ(folder.Read("a.zrk"), "log");
}

TEST_F(Files, ExistsMeansAFileAndNotAFolder) {
    EXPECT_TRUE(FileExists(folder.Write("a", "").c_str()));
    EXPECT_FALSE(FileExists(folder.Path("b").c_str()));
    EXPECT_FALSE(FileExists(folder.Path().c_str()));
}

TEST_F(Files, PathsAreUtf8) {
    const std::string name = "\xE3\x83\xAD\xE3\x82\xB0 \xC3\xA9.zrk";  // Japanese "rogu" and an accent
    ASSERT_EQ(ReplaceFile(folder.Path(name).c_str(), "log", 3), 0);
    EXPECT_EQ(folder.Read(name), "log");
    EXPECT_EQ(FileLength(folder.Path(name).c_str()), 3);
    EXPECT_EQ(ListFiles(folder.Path().c_str(), ".zrk"), std::vector<std::string>{name});
}

TEST_F(Files, ListingIsSortedAndLooksAtTheEndInAnyLetterCase) {
    for (const char* name : {"b.crs", "A.CRS", "c.crs.txt", "crs", "d.Crs"}) folder.Write(name, "");
    std::filesystem::create_directory(folder.path / "e.crs");
    const std::vector<std::string> expected{"A.CRS", "b.crs", "d.Crs"};
    EXPECT_EQ(ListFiles(folder.Path().c_str(), ".crs"), expected);
    EXPECT_EQ(ListFiles((folder.Path() + "/").c_str(), ".crs"), expected);
}

TEST_F(Files, ListingAMissingFolderIsEmpty) {
    EXPECT_TRUE(ListFiles(folder.Path("missing").c_str(), ".crs").empty());
}

TEST_F(Files, EnteringTheProgramFolderMakesItCurrentFromAnywhere) {
    const std::string standard = ProgramFolder();
    ASSERT_TRUE(EnterFolder(folder.Path().c_str()));
    std::filesystem::create_directory(folder.path / "home");
    SetProgramFolder("home");  // stays right when the current folder changes
    ASSERT_TRUE(EnterFolder(startFolder.c_str()));
    EnterProgramFolder();
    EXPECT_TRUE(std::filesystem::equivalent(CurrentFolder(), folder.path / "home"));
    EXPECT_EQ(NameStart(ProgramFolder()), std::string(ProgramFolder()).size()) << "ends in a separator";
    SetProgramFolder(standard.c_str());
}

TEST_F(Files, EnteringAMissingFolderLeavesTheCurrentOne) {
    EXPECT_FALSE(EnterFolder(folder.Path("missing").c_str()));
    EXPECT_EQ(CurrentFolder(), startFolder);
}

}  // namespace
