#include "platform/file_dialogs.h"

#include <cstring>

#include "platform/files.h"
#include "platform/headless/script_state.h"
#include "platform/system_files.h"

static void Record(const char* kind, const FileDialog& dialog) {
    std::string filters;
    for (int i = 0; i < dialog.filterCount; ++i) {
        if (i > 0) filters += '|';
        filters += std::string(dialog.filters[i].name) + '|' + dialog.filters[i].pattern;
    }
    shown.push_back({kind, "", filters});
    if (script.fileDialogHandler) script.fileDialogHandler();
}

// What the user chose as a full path, or an empty text. OK alone takes the name that the dialog offers.
static std::string Choice(const FileDialog& dialog) {
    PreparedAnswer prepared = TakeAnswer();
    if (prepared.answer == Answer::ok && dialog.defaultName) {
        prepared.path = dialog.startFolder && dialog.startFolder[0] ? std::string(dialog.startFolder) + "/" : "";
        prepared.path += dialog.defaultName;
    }
    if (prepared.answer == Answer::cancel || prepared.path.empty()) return "";
    if (dialog.defaultExtension && prepared.path.find('.', NameStart(prepared.path)) == std::string::npos)
        prepared.path += std::string(".") + dialog.defaultExtension;
    return AbsolutePath(prepared.path.c_str());
}

static int Accept(const std::string& choice, char path[pathSize]) {
    if (choice.empty() || choice.size() >= pathSize) return 0;
    std::memcpy(path, choice.c_str(), choice.size() + 1);
    EnterFolder(choice.substr(0, NameStart(choice)).c_str());
    return 1;
}

int AskOpenFile(const FileDialog& dialog, char path[pathSize]) {
    Record("open", dialog);
    const std::string choice = Choice(dialog);
    return FileExists(choice.c_str()) ? Accept(choice, path) : 0;
}

int AskSaveFile(const FileDialog& dialog, char path[pathSize]) {
    Record("save", dialog);
    return Accept(Choice(dialog), path);
}
