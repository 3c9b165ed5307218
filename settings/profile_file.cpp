#include "settings/profile_file.h"

#include <algorithm>

#include "platform/files.h"

static constexpr std::string_view blanks = " \t\r\n\v\f";
static constexpr std::string_view lineBreaks = "\r\n";
static constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

static std::string_view TrimLeft(std::string_view text) { return text.substr(std::min(text.find_first_not_of(blanks), text.size())); }
static std::string_view TrimRight(std::string_view text) { return text.substr(0, text.find_last_not_of(blanks) + 1); }
static std::string_view Trim(std::string_view text) { return TrimRight(TrimLeft(text)); }

// What a line says.
struct LineMeaning {
    enum { other, section, key } kind = other;
    std::string_view name;          // without blanks
    std::string_view indentedName;  // a key's, with the blanks before it
    std::string_view value;         // as written: without the blanks around it, but with its quotes
    size_t valueAt = 0;             // offset in the line
};

static LineMeaning ReadLine(std::string_view line) {
    const std::string_view text = Trim(line);
    LineMeaning meaning;
    if (text.empty() || text[0] == ';') return meaning;
    if (text[0] == '[') {
        // The last bracket ends the name, for a name may hold one itself.
        const size_t close = text.rfind(']');
        if (close == std::string_view::npos) return meaning;
        meaning.kind = LineMeaning::section;
        meaning.name = Trim(text.substr(1, close - 1));
        return meaning;
    }
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos || text[0] == '=') return meaning;
    meaning.kind = LineMeaning::key;
    meaning.indentedName = TrimRight(line.substr(0, equals));
    meaning.name = TrimLeft(meaning.indentedName);
    const std::string_view behind = line.substr(equals + 1);
    meaning.value = Trim(behind);
    meaning.valueAt = meaning.value.empty() ? equals + 1 : static_cast<size_t>(meaning.value.data() - line.data());
    return meaning;
}

static bool InQuotes(std::string_view value) {
    return value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
}

static std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower;
}

static std::string SectionName(std::string_view section) { return LowerCase(Trim(section)); }

// No name holds a line break, so none can be taken for another.
static std::string KeyName(std::string_view section, std::string_view key) { return SectionName(section) + '\n' + LowerCase(key); }

static void EnterKey(ProfileText& profile, std::string_view section, const LineMeaning& key, int line) {
    profile.keys.emplace(KeyName(section, key.name), line);
    if (key.indentedName != key.name) profile.keys.emplace(KeyName(section, key.indentedName), line);
}

// Chains a new line behind line `before` and returns its number.
static int InsertLine(ProfileText& profile, int before, std::string_view text) {
    const int line = static_cast<int>(profile.lines.size());
    profile.lines.push_back({std::string(text), profile.lines[before].next});
    profile.lines[before].next = line;
    if (profile.last == before) profile.last = line;
    return line;
}

ProfileText ParseProfile(std::string_view bytes) {
    ProfileText profile;
    if (bytes.substr(0, utf8Mark.size()) == utf8Mark) {
        profile.lines[0].text = utf8Mark;
        bytes.remove_prefix(utf8Mark.size());
    }
    const size_t firstBreak = bytes.find('\n');
    if (firstBreak != std::string_view::npos && (firstBreak == 0 || bytes[firstBreak - 1] != '\r')) profile.lineEnd = "\n";

    ProfileSection* section = nullptr;  // nullptr before the first, and in one whose name was there before
    std::string sectionName;
    while (!bytes.empty()) {
        const std::string_view text = bytes.substr(0, std::min(bytes.find('\n'), bytes.size() - 1) + 1);
        bytes.remove_prefix(text.size());
        const int line = InsertLine(profile, profile.last, text);
        const LineMeaning meaning = ReadLine(text);
        if (meaning.kind == LineMeaning::section) {
            sectionName = SectionName(meaning.name);
            const auto [place, isNew] = profile.sections.try_emplace(sectionName, ProfileSection{line, line});
            section = isNew ? &place->second : nullptr;
        }
        if (!section) continue;
        if (!Trim(text).empty()) section->last = line;
        if (meaning.kind == LineMeaning::key) EnterKey(profile, sectionName, meaning, line);
    }
    return profile;
}

std::string ProfileBytes(const ProfileText& profile) {
    std::string bytes;
    for (int line = 0; line >= 0; line = profile.lines[line].next) bytes += profile.lines[line].text;
    return bytes;
}

int LoadProfile(const char* path, ProfileText& profile) {
    FileBytes file;
    if (ReadWholeFile(path, profileSizeLimit, 0, file) != 0) {
        profile = {};
        return FileExists(path) ? 1 : 0;
    }
    profile = ParseProfile({reinterpret_cast<const char*>(file.data.get()), static_cast<size_t>(file.length)});
    return 0;
}

int SaveProfile(const char* path, const ProfileText& profile) {
    const std::string bytes = ProfileBytes(profile);
    return ReplaceFile(path, bytes.data(), bytes.size());
}

std::string_view ProfileString(const ProfileText& profile, std::string_view section, std::string_view key, std::string_view missing) {
    const auto found = profile.keys.find(KeyName(section, key));
    if (found == profile.keys.end()) return missing;
    const std::string_view value = ReadLine(profile.lines[found->second].text).value;
    return InQuotes(value) ? value.substr(1, value.size() - 2) : value;
}

int DecimalInt(std::string_view text) {
    const bool negative = !text.empty() && text[0] == '-';
    uint32_t number = 0;
    for (char c : text.substr(negative)) {
        if (c < '0' || c > '9') break;
        number = number * 10 + static_cast<uint32_t>(c - '0');
    }
    return static_cast<int>(negative ? 0 - number : number);
}

int ProfileInt(const ProfileText& profile, std::string_view section, std::string_view key, int missing) {
    const auto found = profile.keys.find(KeyName(section, key));
    return found == profile.keys.end() ? missing : DecimalInt(ProfileString(profile, section, key, ""));
}

void WriteIntKey(ProfileText& profile, int value, std::string_view section, std::string_view key) {
    WriteStringKey(profile, std::to_string(value), section, key);
}

// A line behind which another one comes must have an end.
static void EndLine(ProfileText& profile, int line) {
    std::string& text = profile.lines[line].text;
    if (line != 0 && !text.empty() && text.back() != '\n') text += profile.lineEnd;
}

static bool ReadsBackAs(std::string_view line, decltype(LineMeaning::kind) kind, std::string_view name) {
    const LineMeaning meaning = ReadLine(line);
    return meaning.kind == kind && (meaning.name == name || meaning.indentedName == name) &&
           line.find_first_of(lineBreaks) == std::string_view::npos;
}

static void AddKey(ProfileText& profile, std::string_view section, std::string_view key, std::string_view value) {
    const std::string header = '[' + std::string(section) + ']';
    std::string text = std::string(key) + '=' + std::string(value);
    if (!ReadsBackAs(header, LineMeaning::section, Trim(section)) || !ReadsBackAs(text, LineMeaning::key, key)) return;
    auto place = profile.sections.find(SectionName(section));
    if (place == profile.sections.end()) {
        EndLine(profile, profile.last);
        const int line = InsertLine(profile, profile.last, header + profile.lineEnd);
        place = profile.sections.emplace(SectionName(section), ProfileSection{line, line}).first;
    }
    EndLine(profile, place->second.last);
    text += profile.lineEnd;
    const int line = InsertLine(profile, place->second.last, text);
    place->second.last = line;
    EnterKey(profile, section, ReadLine(profile.lines[line].text), line);
}

void WriteStringKey(ProfileText& profile, std::string_view text, std::string_view section, std::string_view key) {
    text = text.substr(0, text.find_first_of(lineBreaks));
    std::string value(text);
    if (InQuotes(text) || Trim(text) != text) value = '"' + value + '"';  // else reading would cut it
    const auto found = profile.keys.find(KeyName(section, key));
    if (found == profile.keys.end()) return AddKey(profile, section, key, value);
    // The spelling of the name and the blanks around the value stay the user's.
    std::string& line = profile.lines[found->second].text;
    const LineMeaning meaning = ReadLine(line);
    line.replace(meaning.valueAt, meaning.value.size(), value);
}

void RemoveProfileKey(ProfileText& profile, std::string_view section, std::string_view key) {
    const auto place = profile.sections.find(SectionName(section));
    const auto found = profile.keys.find(KeyName(section, key));
    if (place == profile.sections.end() || found == profile.keys.end()) return;
    const std::string wanted = LowerCase(Trim(key));
    for (int line = profile.lines[place->second.header].next; line >= 0; line = profile.lines[line].next) {
        const LineMeaning meaning = ReadLine(profile.lines[line].text);
        if (meaning.kind == LineMeaning::section) break;
        if (meaning.kind != LineMeaning::key || LowerCase(meaning.name) != wanted) continue;
        profile.keys.erase(KeyName(section, meaning.name));
        profile.keys.erase(KeyName(section, meaning.indentedName));
        profile.lines[line].text.clear();
    }
}
