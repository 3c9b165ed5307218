#include "platform/file_dialogs.h"

#include <windows.h>

#include <commdlg.h>

#include <cstring>

#include "platform/system_files.h"
#include "platform/win32/owners.h"
#include "platform/win32/wide.h"

// Pairs of name and pattern, each ended by a zero, and one more zero at the end.
static std::wstring FilterText(const FileDialog& dialog) {
    std::wstring text;
    for (int i = 0; i < dialog.filterCount; ++i)
        for (const char* part : {dialog.filters[i].name, dialog.filters[i].pattern}) (text += Wide(part)) += L'\0';
    return text;
}

// Loaded when it is first wanted: it brings the whole shell with it, which start-up should not wait for.
using AskFunction = BOOL(WINAPI*)(OPENFILENAMEW*);
static AskFunction CommonDialog(const char* name) {
    const HMODULE library = LoadLibraryW(L"comdlg32.dll");
    return reinterpret_cast<AskFunction>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

static int Ask(const FileDialog& dialog, DWORD flags, const char* function, char path[pathSize]) {
    const AskFunction ask = CommonDialog(function);
    const std::wstring filters   = FilterText(dialog);
    const std::wstring folder    = Wide(dialog.startFolder ? dialog.startFolder : "");
    const std::wstring extension = Wide(dialog.defaultExtension ? dialog.defaultExtension : "");
    wchar_t name[pathSize] = L"";
    if (dialog.defaultName) lstrcpynW(name, Wide(dialog.defaultName).c_str(), pathSize);

    OPENFILENAMEW options   = {};
    options.lStructSize     = sizeof options;
    options.hwndOwner       = DialogOwner();
    options.lpstrFilter     = filters.c_str();
    options.nFilterIndex    = 1;
    options.lpstrFile       = name;
    options.nMaxFile        = pathSize;
    options.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    options.lpstrDefExt     = extension.empty() ? nullptr : extension.c_str();
    // Without OFN_NOCHANGEDIR a mere look into folders would already move the current one.
    options.Flags = flags | OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
    if (!ask || !ask(&options)) return 0;

    const std::string choice = Utf8(name);
    if (choice.size() >= pathSize) return 0;
    std::memcpy(path, choice.c_str(), choice.size() + 1);
    EnterFolder(choice.substr(0, NameStart(choice)).c_str());
    return 1;
}

int AskOpenFile(const FileDialog& dialog, char path[pathSize]) {
    return Ask(dialog, OFN_FILEMUSTEXIST, "GetOpenFileNameW", path);
}

int AskSaveFile(const FileDialog& dialog, char path[pathSize]) {
    return Ask(dialog, dialog.overwritePrompt ? OFN_OVERWRITEPROMPT : 0, "GetSaveFileNameW", path);
}
