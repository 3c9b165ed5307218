#include "draw/recorder.h"

#include <cstdio>
#include <map>

#include "draw/recording.h"

std::string* recordedLines = nullptr;
static int frames;
static std::map<int, std::string> imageNames, fontNames;

void RecordOperations(std::string* out) {
    recordedLines = out;
    frames        = 0;
}

bool RecordingOperations() { return recordedLines != nullptr; }

void RecordFrame() { Record("frame", ++frames); }

static void Name(std::map<int, std::string>& names, int handle, const char* global) {
    if (handle >= 0) names[handle] = global;
}
void NameImage(int image, const char* global) { Name(imageNames, image, global); }
void NameFont(int font, const char* global) { Name(fontNames, font, global); }

void ForgetImageName(int image) { imageNames.erase(image); }
void ForgetFontNames() { fontNames.clear(); }

static void AppendFormatted(const char* format, auto value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    recordedLines->append(text);
}

void AppendArgument(int number) { AppendFormatted(" %d", number); }
void AppendArgument(double number) { AppendFormatted(" %.9g", number); }
void AppendArgument(Color color) { AppendFormatted(" #%06X", color & 0xFFFFFF); }

void AppendArgument(const char* text) {
    recordedLines->append(" \"");
    for (; *text; ++text) {
        const unsigned char byte = static_cast<unsigned char>(*text);
        if (byte >= 0x20 && byte <= 0x7E && byte != '"' && byte != '\\')
            recordedLines->push_back(*text);
        else
            AppendFormatted("\\x%02X", static_cast<unsigned>(byte));
    }
    recordedLines->push_back('"');
}

// A handle by the name of the global that holds it; the failed handle and the back buffer stay numbers.
static void AppendHandle(const std::map<int, std::string>& names, const char* kind, int handle) {
    if (handle < 0) return AppendArgument(handle);
    recordedLines->push_back(' ');
    const auto named = names.find(handle);
    recordedLines->append(named != names.end() ? named->second : kind + std::to_string(handle));
}
void AppendArgument(ImageArgument image) { AppendHandle(imageNames, "image", image.handle); }
void AppendArgument(FontArgument font) { AppendHandle(fontNames, "font", font.handle); }
