#include "platform/files.h"

#include <algorithm>
#include <cstring>

#include "platform/system_files.h"

int64_t FileLength(const char* path) {
    int64_t length = -1;
    if (std::FILE* file = OpenToRead(path, &length)) std::fclose(file);
    return length;
}

int ReadWholeFile(const char* path, int64_t limit, int margin, FileBytes& out) {
    out = {};
    int64_t length = -1;
    std::FILE* file = OpenToRead(path, &length);
    if (!file) return 1;
    int result = 1;
    if (length <= limit) {
        const size_t bytes = static_cast<size_t>(length + margin);
        out.data = {static_cast<uint8_t*>(TakeMemory(bytes)), MemoryOf{bytes}};
        if (out.data) {
            std::setvbuf(file, nullptr, _IONBF, 0);
            // A file that shrinks meanwhile is as long as what came.
            out.length = static_cast<int64_t>(std::fread(out.data.get(), 1, static_cast<size_t>(length), file));
            std::memset(out.data.get() + out.length, 0, static_cast<size_t>(length - out.length + margin));
            result = std::ferror(file) ? 1 : 0;
        }
    }
    std::fclose(file);
    if (result != 0) out = {};
    return result;
}

static std::FILE* Stream(const FileReplacement& replacement) { return static_cast<std::FILE*>(replacement.file); }

int BeginReplacement(FileReplacement& replacement, const char* path) {
    constexpr int attempts = 100;  // left-overs of runs that were killed may hold the first names
    replacement = {nullptr, LinkTarget(path), ""};
    for (int attempt = 0; attempt < attempts && !replacement.file; ++attempt) {
        replacement.temporary = replacement.path + ".new" + std::to_string(attempt);
        replacement.file = CreateNewFile(replacement.temporary.c_str());
    }
    return replacement.file ? 0 : 1;
}

int WritePiece(FileReplacement& replacement, const void* data, size_t length) {
    if (!replacement.file) return 1;
    return std::fwrite(data, 1, length, Stream(replacement)) == length ? 0 : 1;
}

int CommitReplacement(FileReplacement& replacement) {
    if (!replacement.file) return 1;
    const bool written = !std::ferror(Stream(replacement)) && FlushToDisk(Stream(replacement));
    const bool closed  = std::fclose(Stream(replacement)) == 0;
    replacement.file   = nullptr;
    const bool placed  = written && closed && MoveOver(replacement.temporary.c_str(), replacement.path.c_str());
    if (!placed) RemoveFile(replacement.temporary.c_str());
    return placed ? 0 : 1;
}

void AbandonReplacement(FileReplacement& replacement) {
    if (!replacement.file) return;
    std::fclose(Stream(replacement));
    replacement.file = nullptr;
    RemoveFile(replacement.temporary.c_str());
}

int ReplaceFile(const char* path, const void* data, size_t length) {
    FileReplacement replacement;
    if (BeginReplacement(replacement, path) != 0) return 1;
    if (WritePiece(replacement, data, length) != 0) {
        AbandonReplacement(replacement);
        return 1;
    }
    return CommitReplacement(replacement);
}

static bool EndsIn(const std::string& name, const std::string& ending) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c; };
    return name.size() >= ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), name.rbegin(), [&](char a, char b) { return lower(a) == lower(b); });
}

std::vector<std::string> ListFiles(const char* folder, const char* extension) {
    std::string prefix = folder;
    if (!prefix.empty() && NameStart(prefix) != prefix.size()) prefix += '/';
    std::vector<std::string> names;
    for (const std::string& name : FolderEntries(folder))
        if (EndsIn(name, extension) && FileExists((prefix + name).c_str())) names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}
