#include "cli/arguments.h"

#include <charconv>
#include <filesystem>

#include "cli/console.h"

static const OptionInfo globalOptions[] = {
    {"--home", "DIR", "the program's folder: settings, course files and pictures; without it the executable's folder",
     "zrka_cli --home demo dump out run.zrk"},
    {"--set", "SECTION.KEY=VALUE", "a setting in place of the file's, repeatable",
     "zrka_cli --set SPLConfig.Debug=1 --set ModeSetting.ExpertMode=2 dump out run.zrk"},
    {"--hold", "shift,ctrl", "keys held down while files load", "zrka_cli --hold ctrl dump out run.zrk"},
    {"--save-settings", nullptr, "write \"ZRKA.ini\" at the end; otherwise nothing is written there",
     "zrka_cli --home demo --save-settings --set ModeSetting.colortype=1 render run.bmp run.zrk"},
    {"--help", nullptr, "this text, or a command's own behind the command", "zrka_cli dump --help"},
};

static std::filesystem::path Utf8Path(const std::string& text) { return std::u8string(text.begin(), text.end()); }

std::string FullPath(const std::string& path) {
    std::error_code error;
    const std::u8string full = std::filesystem::absolute(Utf8Path(path), error).u8string();
    return error ? path : std::string(full.begin(), full.end());
}

int MakeFolder(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(Utf8Path(path), error);
    return std::filesystem::is_directory(Utf8Path(path), error) ? 0 : 1;
}

bool ReadNumber(std::string_view text, int low, int high, int& number) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && number >= low && number <= high;
}

bool ReadHeldKeys(std::string_view text, bool& shift, bool& ctrl) {
    while (true) {
        const size_t comma = text.find(',');
        const std::string_view key = text.substr(0, comma);
        if (key == "shift") shift = true;
        else if (key == "ctrl") ctrl = true;
        else return false;
        if (comma == std::string_view::npos) return true;
        text.remove_prefix(comma + 1);
    }
}

static bool ReadSetting(const std::string& text, SettingOverride& setting) {
    const size_t equals = text.find('=');
    const size_t point = text.substr(0, equals).find('.');
    if (equals == std::string::npos || point == std::string::npos || point == 0 || point + 1 == equals) return false;
    setting = {text.substr(0, point), text.substr(point + 1, equals - point - 1), text.substr(equals + 1)};
    return true;
}

static std::string OptionText(const OptionInfo& option) {
    return option.value ? std::string(option.name) + " " + option.value : option.name;
}

static std::string NamesOf(std::span<const OptionInfo> options) {
    std::string names;
    for (const OptionInfo& option : options) names += (names.empty() ? "" : ", ") + OptionText(option);
    return names;
}

static std::string NamesOf(std::span<const Command> commands) {
    std::string names;
    for (const Command& command : commands) names += (names.empty() ? "" : ", ") + std::string(command.name);
    return names;
}

static const OptionInfo* FindOption(std::span<const OptionInfo> options, const std::string& name) {
    for (const OptionInfo& option : options)
        if (name == option.name) return &option;
    return nullptr;
}

static void PrintOptions(std::span<const OptionInfo> options) {
    for (const OptionInfo& option : options)
        Print("  " + OptionText(option) + "\n      " + option.meaning + "\n      Example: " + option.example + "\n");
}

static int PrintHelp(std::span<const Command> commands) {
    Print("zrka_cli: the run viewer without its window.\n\n"
          "Usage: zrka_cli [OPTION]... COMMAND [ARGUMENT]...\n\nCommands:\n");
    for (const Command& command : commands)
        Print("  " + std::string(command.name) + " " + command.operands + "\n      " + command.summary +
              "\n      Example: " + command.example + "\n");
    Print("\nOptions before the command:\n");
    PrintOptions(globalOptions);
    Print("\nExit status: 0 done; 1 the operation failed, message boxes are on standard error as `box TITLE | TEXT`;\n"
          "2 unusable arguments.\n");
    return exitDone;
}

static int PrintCommandHelp(const Command& command) {
    Print("Usage: zrka_cli [OPTION]... " + std::string(command.name) + " " + command.operands + "\n\n" + command.summary +
          ".\n" + command.details() + "\nExample: " + command.example + "\n");
    if (!command.options.empty()) Print("\nOptions:\n");
    PrintOptions(command.options);
    return exitDone;
}

// Puts one of globalOptions into effect.
static int TakeGlobalOption(const std::string& name, const std::string& value, Invocation& invocation) {
    if (name == "--save-settings") invocation.saveSettings = true;
    if (name == "--home") {
        std::error_code error;
        if (!std::filesystem::is_directory(Utf8Path(value), error))
            return Refuse("--home %s is not a folder; --home DIR names the program's folder", value.c_str());
        invocation.home = FullPath(value);
    }
    if (name == "--hold" && !ReadHeldKeys(value, invocation.holdShift, invocation.holdCtrl))
        return Refuse("--hold %s: the keys are shift, ctrl or shift,ctrl", value.c_str());
    if (name == "--set") {
        SettingOverride setting;
        if (!ReadSetting(value, setting))
            return Refuse("--set %s: a setting is SECTION.KEY=VALUE, as in SPLConfig.Debug=1", value.c_str());
        invocation.settings.push_back(setting);
    }
    return -1;
}

static bool LooksLikeOption(const std::string& word) { return word.size() > 1 && word[0] == '-'; }

// Reads the words from `at` to the command's name, which is left at `at`.
static int ParseGlobalOptions(std::span<const std::string> words, std::span<const Command> commands, size_t& at,
                              Invocation& invocation) {
    for (; at < words.size() && LooksLikeOption(words[at]); at++) {
        const OptionInfo* option = FindOption(globalOptions, words[at]);
        if (!option) return Refuse("unknown option %s before the command; accepted are %s", words[at].c_str(), NamesOf(globalOptions).c_str());
        if (words[at] == "--help") return PrintHelp(commands);
        if (option->value && ++at == words.size()) return Refuse("%s is missing behind %s", option->value, option->name);
        if (int status = TakeGlobalOption(option->name, words[at], invocation); status >= 0) return status;
    }
    return -1;
}

static int ParseCommandWords(std::span<const std::string> words, Invocation& invocation) {
    const Command& command = *invocation.command;
    for (size_t at = 0; at < words.size(); at++) {
        if (words[at] == "--help") return PrintCommandHelp(command);
        if (!LooksLikeOption(words[at])) {
            invocation.operands.push_back(words[at]);
            continue;
        }
        const OptionInfo* option = FindOption(command.options, words[at]);
        if (!option && command.options.empty())
            return Refuse("unknown option %s; %s takes none behind it, only %s", words[at].c_str(), command.name, command.operands);
        if (!option)
            return Refuse("unknown option %s; %s takes %s", words[at].c_str(), command.name, NamesOf(command.options).c_str());
        if (option->value && ++at == words.size()) return Refuse("%s is missing behind %s", option->value, option->name);
        invocation.options.push_back({option, words[at]});
    }
    if (invocation.operands.size() < command.fewest || invocation.operands.size() > command.most)
        return Refuse("%s takes %s", command.name, command.operands);
    return -1;
}

int ParseArguments(std::span<const std::string> words, std::span<const Command> commands, Invocation& invocation) {
    size_t at = 0;
    if (int status = ParseGlobalOptions(words, commands, at, invocation); status >= 0) return status;
    if (at == words.size()) return Refuse("no command; the commands are %s", NamesOf(commands).c_str());
    for (const Command& command : commands)
        if (words[at] == command.name) invocation.command = &command;
    if (!invocation.command)
        return Refuse("unknown command %s; the commands are %s", words[at].c_str(), NamesOf(commands).c_str());
    return ParseCommandWords(words.subspan(at + 1), invocation);
}

const std::string* GivenValue(const Invocation& invocation, const char* option) {
    const std::string* value = nullptr;
    for (const Invocation::Given& given : invocation.options)
        if (std::string_view(given.option->name) == option) value = &given.value;
    return value;
}
