// wide.h -- UTF-8 to and from the system's UTF-16. Bytes that are no UTF-8 become the replacement character.
#pragma once
#include <string>
#include <string_view>

std::wstring Wide(std::string_view utf8);
std::string Utf8(std::wstring_view wide);
// Bytes of a text file that does not tell its code page: UTF-8 if they can be that, else Shift-JIS.
std::wstring WideOfUnknown(std::string_view bytes);
