// file_dialogs.h -- the system's open and save dialogs.
#pragma once

struct FileFilter { const char *name, *pattern; };  // {"zrk(*.zrk)", "*.zrk"}
struct FileDialog {
    const FileFilter* filters;
    int filterCount;
    const char* defaultExtension;  // nullptr for none
    const char* startFolder;       // UTF-8, may be empty
    const char* defaultName;       // nullptr for none
    bool overwritePrompt;          // save dialogs only
};
constexpr int pathSize = 260;
// 1 and the chosen path in UTF-8 (full, at most pathSize - 1 bytes); 0 on cancel. Opening: the file must exist, the
// read-only box is hidden. On OK the file's folder becomes the current one.
int AskOpenFile(const FileDialog& dialog, char path[pathSize]);
int AskSaveFile(const FileDialog& dialog, char path[pathSize]);
