// profile_file.h -- files of sections in square brackets and lines key=value, as Windows keeps its private profiles.
//
// A file is read whole into a ProfileText, asked and changed there, and written whole by replacing.
// Names    of sections and keys compare without letter case (ASCII). The first section of a name and the first key of a
//          name in it count; blanks around a name are cut. A key written with blanks before it is found under that name
//          too: see " VRW_View_Green" in graph_layout.cpp.
// Values   lose the blanks around them and one pair of quotes.
// Lines    that are neither a section nor a key, those that start with ';' among them, and the line ends of the file are
//          kept as they stand, as is everything else that is not set. Bytes of any code page come back unchanged.
// Input    any bytes, up to profileSizeLimit of them.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

constexpr int profileSizeLimit = 1 << 20;  // bytes; the files of the program have about ten thousand

struct ProfileLine {
    std::string text;  // as it stands, line end included; empty once removed
    int next;          // in file order, -1 behind the last
};
struct ProfileSection {
    int header;  // line of the name
    int last;    // last line that is not blank: a new key goes behind it
};
struct ProfileText {
    // Lines are chained, so that a new one moves no other. The first holds what stands before all lines: nothing, or the
    // UTF-8 mark that some editors put there.
    std::vector<ProfileLine> lines = {{"", -1}};
    int last = 0;
    const char* lineEnd = "\r\n";                              // of new lines
    std::unordered_map<std::string, ProfileSection> sections;  // by lower case name
    std::unordered_map<std::string, int> keys;                 // line, by lower case section, '\n', name
};

ProfileText ParseProfile(std::string_view bytes);
std::string ProfileBytes(const ProfileText& profile);
// 0 read, or there is no such file; 1 it is there and cannot be read. Without a file the profile is empty.
int LoadProfile(const char* path, ProfileText& profile);
// Writes beside the file and puts it in place. 0 done, 1 failed and the old file stands.
int SaveProfile(const char* path, const ProfileText& profile);

// The text of a key, or `missing`. Valid until the profile changes.
std::string_view ProfileString(const ProfileText& profile, std::string_view section, std::string_view key, std::string_view missing);
int ProfileInt(const ProfileText& profile, std::string_view section, std::string_view key, int missing);
// Decimal with an optional minus sign; what follows the digits is ignored; without digits 0; wraps at 32 bits.
int DecimalInt(std::string_view text);

// Set a key, "%d" or "%s", adding it and its section where they are missing. A text ends at its first line break; a name
// that could not be read back is not written.
void WriteIntKey(ProfileText& profile, int value, std::string_view section, std::string_view key);
void WriteStringKey(ProfileText& profile, std::string_view text, std::string_view section, std::string_view key);
// Deletes every line of the key.
void RemoveProfileKey(ProfileText& profile, std::string_view section, std::string_view key);
