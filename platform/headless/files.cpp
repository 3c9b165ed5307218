#include "platform/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

#include "platform/system_files.h"

std::FILE* OpenToRead(const char* path, int64_t* length) {
    // Without O_NONBLOCK a pipe of that name would hold the program until somebody writes to it.
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return nullptr;
    struct stat status;
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        return nullptr;
    }
    *length = status.st_size;
    return fdopen(descriptor, "rb");
}

std::FILE* CreateNewFile(const char* path) {
    const int descriptor = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    return descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
}

bool FlushToDisk(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }

std::string LinkTarget(const char* path) {
    char target[PATH_MAX];
    return realpath(path, target) ? target : path;
}

// The name of a new file is only safe once its folder has reached the disk too.
static void FlushFolderOf(const std::string& path) {
    const std::string folder = "./" + path.substr(0, NameStart(path));
    const int descriptor = open(path[0] == '/' ? folder.c_str() + 2 : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

bool MoveOver(const char* from, const char* to) {
    struct stat old;
    if (stat(to, &old) == 0) {
        // A rename would also replace a file that its owner protected against writing.
        if (!S_ISREG(old.st_mode) || access(to, W_OK) != 0) return false;
        if (chmod(from, old.st_mode & 07777) != 0) return false;
    }
    if (rename(from, to) != 0) return false;
    FlushFolderOf(to);
    return true;
}

void RemoveFile(const char* path) { unlink(path); }

int RenameFile(const char* from, const char* to) {
    // rename() would replace the target; link() refuses one that exists. Not every file system knows links.
    if (link(from, to) == 0) {
        if (unlink(from) == 0) return 0;
        unlink(to);
        return 1;
    }
    struct stat status;
    if (lstat(to, &status) == 0) return 1;
    return rename(from, to) == 0 ? 0 : 1;
}

bool FileExists(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

std::vector<std::string> FolderEntries(const char* folder) {
    std::vector<std::string> names;
    DIR* entries = opendir(folder);
    if (!entries) return names;
    while (const dirent* entry = readdir(entries)) names.emplace_back(entry->d_name);
    closedir(entries);
    return names;
}

size_t NameStart(const std::string& path) { return path.rfind('/') + 1; }  // npos + 1 is 0

std::string CurrentFolder() {
    char folder[PATH_MAX];
    return getcwd(folder, sizeof folder) ? folder : "/";
}

bool EnterFolder(const char* folder) { return chdir(folder) == 0; }

std::string AbsolutePath(const char* path) {
    char resolved[PATH_MAX];
    if (realpath(path, resolved)) return resolved;
    return path[0] == '/' ? path : CurrentFolder() + "/" + path;
}

static std::string programFolder;  // with a closing separator; empty until first asked for

const char* ProgramFolder() {
    if (programFolder.empty()) {
        const std::string program = AbsolutePath("/proc/self/exe");
        programFolder = program.substr(0, NameStart(program));
    }
    return programFolder.c_str();
}

void SetProgramFolder(const char* folder) {
    programFolder = AbsolutePath(folder);
    if (programFolder.back() != '/') programFolder += '/';
}

void EnterProgramFolder() { EnterFolder(ProgramFolder()); }
