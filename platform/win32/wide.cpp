#include "platform/win32/wide.h"

#include <windows.h>

std::wstring Wide(std::string_view utf8) {
    const int bytes = static_cast<int>(utf8.size());
    std::wstring wide(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string Utf8(std::wstring_view wide) {
    const int units = static_cast<int>(wide.size());
    std::string utf8(WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr);
    return utf8;
}
