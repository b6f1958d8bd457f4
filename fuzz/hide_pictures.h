// Pictures have a fuzzer of their own, and need a window: a skin's key for one becomes a key that nothing
// reads.
#pragma once

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

inline void HidePictures(std::string& text) {
    constexpr std::string_view Key = "image";
    const auto same = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; };
    for (auto at = text.begin();
         (at = std::search(at, text.end(), Key.begin(), Key.end(), same)) != text.end();)
        *at++ = '-';
}
