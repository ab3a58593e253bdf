// The small value types of the LCD widgets: points, sizes, rectangles, colours and fonts,
// without any platform header, so that layout arithmetic is tested natively.
#pragma once

#include <cstdint>
#include <string>

namespace qvx::lcd {

struct LcdPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const LcdPoint&, const LcdPoint&) = default;
};

struct LcdSize {
    int cx = 0;
    int cy = 0;
    friend bool operator==(const LcdSize&, const LcdSize&) = default;
};

struct LcdRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool Empty() const { return right <= left || bottom <= top; }
    friend bool operator==(const LcdRect&, const LcdRect&) = default;
};

/// The common part of two rectangles; empty (all zero) when they do not meet.
LcdRect Intersect(const LcdRect& a, const LcdRect& b);

/// A colour as the platform's COLORREF: 0x00BBGGRR.
using LcdColor = std::uint32_t;

/// Background modes, with the platform's values: the background shows through, or is filled.
constexpr int kBackgroundTransparent = 1;
constexpr int kBackgroundOpaque = 2;

/// Text format flags, with the platform's values.
constexpr unsigned kFormatCenter = 0x1;
constexpr unsigned kFormatWordBreak = 0x10;
constexpr unsigned kFormatSingleLine = 0x20;
constexpr unsigned kFormatCalcRect = 0x400;
constexpr unsigned kFormatNoPrefix = 0x800;
constexpr unsigned kFormatEndEllipsis = 0x8000;

/// What a text object asks of a font: its face, its logical height (negative: the character
/// height) and its weight. The drawing side makes the font from this when it draws.
struct LcdFont {
    std::wstring face;
    int height = 0;
    int weight = 400;
    friend bool operator==(const LcdFont&, const LcdFont&) = default;
};

/// a * b / c, rounded to the nearest, -1 when c is 0: the platform's MulDiv.
int MulDiv(int a, int b, int c);

/// The logical height of a font of `points` points on the panel's 96 dots an inch.
inline int FontHeightForPoints(int points) { return -MulDiv(points, 96, 72); }

}  // namespace qvx::lcd
