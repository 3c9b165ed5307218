// recording.h -- how the operations of this folder hand themselves to the recorder.
#pragma once
#include <string>

#include "draw/draw_layer.h"

extern std::string* recordedLines;  // nullptr while nothing is recorded

struct ImageArgument {
    int handle;
};
struct FontArgument {
    int handle;
};
void AppendArgument(int number);
void AppendArgument(double number);
void AppendArgument(Color color);
void AppendArgument(const char* text);
void AppendArgument(ImageArgument image);
void AppendArgument(FontArgument font);

template <class... Arguments>
[[gnu::noinline, gnu::cold]] void AppendLine(const char* operation, Arguments... arguments) {
    recordedLines->append(operation);
    (AppendArgument(arguments), ...);
    recordedLines->push_back('\n');
}
// One line: the operation's name and its arguments.
template <class... Arguments>
inline void Record(const char* operation, Arguments... arguments) {
    if (recordedLines) [[unlikely]]
        AppendLine(operation, arguments...);
}

// The names of handles that are gone.
void ForgetImageName(int image);
void ForgetFontNames();
