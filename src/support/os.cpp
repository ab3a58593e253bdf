// The platform-independent half of the operating-system façade: text conversion and paths.
#include "support/os.h"

#include <array>

namespace qvx::os {
namespace {

// Windows-1252's 0x80..0x9F; every other byte maps to the same code point (Latin-1).
constexpr std::array<char16_t, 32> kCp1252High = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

void AppendWide(std::wstring& out, char32_t c) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (c >= 0x10000) {
            c -= 0x10000;
            out += static_cast<wchar_t>(0xD800 + (c >> 10));
            out += static_cast<wchar_t>(0xDC00 + (c & 0x3FF));
            return;
        }
    }
    out += static_cast<wchar_t>(c);
}

}  // namespace

std::wstring WidenCp1252(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    for (unsigned char b : text) {
        out += static_cast<wchar_t>(b >= 0x80 && b < 0xA0 ? kCp1252High[b - 0x80] : b);
    }
    return out;
}

std::string NarrowCp1252(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (wchar_t w : text) {
        auto c = static_cast<char32_t>(w);
        if (c < 0x80 || (c >= 0xA0 && c < 0x100)) {
            out += static_cast<char>(c);
            continue;
        }
        char replacement = '?';
        for (std::size_t i = 0; i < kCp1252High.size(); ++i) {
            if (kCp1252High[i] == c && c != 0xFFFD) replacement = static_cast<char>(0x80 + i);
        }
        out += replacement;
    }
    return out;
}

std::wstring WidenUtf8(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        auto b = static_cast<unsigned char>(text[i]);
        int extra = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
        char32_t c = extra == 0   ? b
                     : extra == 1 ? (b & 0x1F)
                     : extra == 2 ? (b & 0x0F)
                                  : (b & 0x07);
        bool ok = extra >= 0 && i + extra < text.size();
        for (int k = 1; ok && k <= extra; ++k) {
            auto t = static_cast<unsigned char>(text[i + k]);
            ok = (t & 0xC0) == 0x80;
            c = (c << 6) | (t & 0x3F);
        }
        static constexpr char32_t kMin[] = {0, 0x80, 0x800, 0x10000};
        if (ok && (c < kMin[extra] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000))) ok = false;
        if (!ok) {
            AppendWide(out, 0xFFFD);
            ++i;
            continue;
        }
        AppendWide(out, c);
        i += extra + 1;
    }
    return out;
}

std::string NarrowUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<char32_t>(text[i]);
        if constexpr (sizeof(wchar_t) == 2) {
            c &= 0xFFFF;
            if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size()) {
                auto low = static_cast<char32_t>(text[i + 1]) & 0xFFFF;
                if (low >= 0xDC00 && low < 0xE000) {
                    c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                    ++i;
                }
            }
        }
        if ((c >= 0xD800 && c < 0xE000) || c > 0x10FFFF) c = 0xFFFD;
        AppendUtf8(out, c);
    }
    return out;
}

std::wstring JoinPath(const std::wstring& dir, const std::wstring& leaf) {
    if (dir.empty()) return leaf;
    wchar_t last = dir.back();
    if (last == L'\\' || last == L'/') return dir + leaf;
    return dir + kPathSeparator + leaf;
}

}  // namespace qvx::os
