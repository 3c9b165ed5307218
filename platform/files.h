// files.h -- whole files, replaced atomically. Paths are UTF-8 everywhere.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/memory.h"

// Length of a file in bytes, -1 when it cannot be opened. Opens read-only and exclusively.
int64_t FileLength(const char* path);
// Bytes of a file followed by `margin` zero bytes. 0 done; 1 not readable, or longer than `limit`. Reads in one go into
// memory that was never cleared, but for the margin.
struct MemoryOf {
    size_t bytes = 0;
    void operator()(uint8_t* data) const { GiveMemory(data, bytes); }
};
struct FileBytes {
    std::unique_ptr<uint8_t[], MemoryOf> data;
    int64_t length = 0;
};
int ReadWholeFile(const char* path, int64_t limit, int margin, FileBytes& out);
// Writes to a file beside `path`, flushes it and puts it in place. 0 done; 1 failed, the old file stands and nothing is
// left beside it.
int ReplaceFile(const char* path, const void* data, size_t length);
// A file written piece by piece beside `path`; Commit puts it in place, otherwise it goes away.
struct FileReplacement {
    void* file = nullptr;
    std::string path, temporary;
};
int BeginReplacement(FileReplacement& replacement, const char* path);
int WritePiece(FileReplacement& replacement, const void* data, size_t length);
int CommitReplacement(FileReplacement& replacement);
void AbandonReplacement(FileReplacement& replacement);
// 0 done, 1 failed (a target that exists counts as failed).
int RenameFile(const char* from, const char* to);
bool FileExists(const char* path);
// Names (not paths) of the files of a folder that end in `extension` (".crs", letter case ignored), sorted.
std::vector<std::string> ListFiles(const char* folder, const char* extension);
// The program's folder with a closing separator; the headless half takes it from SetProgramFolder (--home).
const char* ProgramFolder();
void SetProgramFolder(const char* folder);
// Makes the program's folder current.
void EnterProgramFolder();
// The current folder, UTF-8.
std::string CurrentFolder();
