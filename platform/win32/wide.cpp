#include "platform/win32/wide.h"

#include <windows.h>

static std::wstring Convert(UINT codePage, DWORD flags, std::string_view bytes) {
    const int count = static_cast<int>(bytes.size());
    std::wstring wide(MultiByteToWideChar(codePage, flags, bytes.data(), count, nullptr, 0), L'\0');
    MultiByteToWideChar(codePage, flags, bytes.data(), count, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::wstring Wide(std::string_view utf8) { return Convert(CP_UTF8, 0, utf8); }

std::wstring WideOfUnknown(std::string_view bytes) {
    constexpr UINT shiftJis = 932;
    const std::wstring wide = Convert(CP_UTF8, MB_ERR_INVALID_CHARS, bytes);
    return wide.empty() ? Convert(shiftJis, 0, bytes) : wide;
}

std::string Utf8(std::wstring_view wide) {
    const int units = static_cast<int>(wide.size());
    std::string utf8(WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr);
    return utf8;
}
