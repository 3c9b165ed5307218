// profile_file.h -- files of sections in square brackets and lines key=value, as Windows keeps its private profiles.
//
// A file is read whole into a ProfileText, asked and changed there, and written whole by replacing.
// Rules    section and key names compare without letter case; blanks around a stored name and value are cut; a value in
//          a pair of quotes loses them; a line that starts with ';' is a comment; what is not a section or a key line is
//          kept as it stands. Bytes of any code page come back unchanged. A key asked for with a leading blank is not
//          found, see " VRW_View_Green" in graph_layout.cpp.
// Input    any bytes.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

struct ProfileText {
    std::string bytes;  // the file as it stands, CR LF or LF
};

// 0 read; 1 missing or unreadable, the text is then empty.
int LoadProfile(const char* path, ProfileText& profile);
// Writes beside the file and puts it in place. 0 done, 1 failed and the old file stands.
int SaveProfile(const char* path, const ProfileText& profile);
// The text of a key, or `missing`.
std::string_view ProfileString(const ProfileText& profile, std::string_view section, std::string_view key, std::string_view missing);
// Decimal with an optional minus sign; what follows the digits is ignored; an empty value is 0; wraps at 32 bits.
int ProfileInt(const ProfileText& profile, std::string_view section, std::string_view key, int missing);
// Sets a key, adding it and its section where they are missing; the other deletes it.
void SetProfileString(ProfileText& profile, std::string_view section, std::string_view key, std::string_view value);
void RemoveProfileKey(ProfileText& profile, std::string_view section, std::string_view key);
