// system_files.h -- the few steps on files that differ between systems; files.cpp builds files.h on them.
//
// Two halves: platform/win32/files.cpp and platform/headless/files.cpp. Paths are UTF-8.
#pragma once
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

// An ordinary file, read-only and, where the system can, exclusively. nullptr when it is none or cannot be opened.
std::FILE* OpenToRead(const char* path, int64_t* length);
// nullptr when the file is already there or cannot be made.
std::FILE* CreateNewFile(const char* path);
// Everything written so far reaches the disk. False when that failed.
bool FlushToDisk(std::FILE* file);
// The file that stands at `path` in the end, where `path` is a link to it; `path` itself where it is none.
std::string LinkTarget(const char* path);
// Puts the file `from` in the place of the file `to`, in one step. False when that failed; both stand as they were.
bool MoveOver(const char* from, const char* to);
void RemoveFile(const char* path);
// Names of everything in a folder, unsorted; empty when it cannot be read.
std::vector<std::string> FolderEntries(const char* folder);
// False when there is no such folder.
bool EnterFolder(const char* folder);
// A path that stays right when the current folder changes. It need not exist.
std::string AbsolutePath(const char* path);
// Position behind the last separator of a path, 0 without one.
size_t NameStart(const std::string& path);
