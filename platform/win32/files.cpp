#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "platform/system_files.h"
#include "platform/win32/wide.h"

// A stream over a handle; the handle goes with the stream, or at once when there is none.
static std::FILE* StreamOver(HANDLE handle, int flags, const char* mode) {
    if (handle == INVALID_HANDLE_VALUE) return nullptr;
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), flags | _O_BINARY);
    if (descriptor < 0) {
        CloseHandle(handle);
        return nullptr;
    }
    std::FILE* file = _fdopen(descriptor, mode);
    if (!file) _close(descriptor);
    return file;
}

std::FILE* OpenToRead(const char* path, int64_t* length) {
    // Sharing nothing makes it exclusive. A folder does not open without backup semantics.
    HANDLE handle = CreateFileW(Wide(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    LARGE_INTEGER size;
    if (handle == INVALID_HANDLE_VALUE) return nullptr;
    if (GetFileType(handle) != FILE_TYPE_DISK || !GetFileSizeEx(handle, &size)) {
        CloseHandle(handle);
        return nullptr;
    }
    *length = size.QuadPart;
    return StreamOver(handle, _O_RDONLY, "rb");
}

std::FILE* CreateNewFile(const char* path) {
    return StreamOver(CreateFileW(Wide(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr),
                      _O_WRONLY, "wb");
}

bool FlushToDisk(std::FILE* file) {
    return std::fflush(file) == 0 && FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))));
}

std::string LinkTarget(const char* path) { return path; }  // links to files are rare here, and need extra rights

bool MoveOver(const char* from, const char* to) {
    return MoveFileExW(Wide(from).c_str(), Wide(to).c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

void RemoveFile(const char* path) { DeleteFileW(Wide(path).c_str()); }

int RenameFile(const char* from, const char* to) {
    return MoveFileExW(Wide(from).c_str(), Wide(to).c_str(), 0) ? 0 : 1;  // without the flag a target is refused
}

bool FileExists(const char* path) {
    const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::vector<std::string> FolderEntries(const char* folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry;
    HANDLE search = FindFirstFileW(Wide(std::string(folder) + "\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    do names.push_back(Utf8(entry.cFileName));
    while (FindNextFileW(search, &entry));
    FindClose(search);
    return names;
}

size_t NameStart(const std::string& path) { return path.find_last_of("\\/:") + 1; }  // npos + 1 is 0

std::string CurrentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return Utf8(folder);
}

bool EnterFolder(const char* folder) { return SetCurrentDirectoryW(Wide(folder).c_str()); }

std::string AbsolutePath(const char* path) {
    const std::wstring wide = Wide(path);
    std::wstring full(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return Utf8(full);
}

static std::string programFolder;  // with a closing separator; empty until first asked for

const char* ProgramFolder() {
    if (programFolder.empty()) {
        constexpr DWORD longestPath = 32768;  // UTF-16 units, the system's limit
        std::wstring program(longestPath, L'\0');
        program.resize(GetModuleFileNameW(nullptr, program.data(), longestPath));
        programFolder = Utf8(program);
        programFolder.resize(NameStart(programFolder));
    }
    return programFolder.c_str();
}

void SetProgramFolder(const char* folder) {
    programFolder = AbsolutePath(folder);
    if (NameStart(programFolder) != programFolder.size()) programFolder += '\\';
}

void EnterProgramFolder() { EnterFolder(ProgramFolder()); }
