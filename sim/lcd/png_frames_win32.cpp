// Frames as PNG files: "frame-0001.png" and on in the frame folder, RGB, through
// stb_image_write.
#include "lcd_state_win32.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#include <stb/stb_image_write.h>

#include <cstdio>
#include <vector>

namespace qvx::simlcd {
namespace {

void AppendBytes(void* context, void* data, int size) {
    auto* out = static_cast<std::vector<unsigned char>*>(context);
    auto* bytes = static_cast<unsigned char*>(data);
    out->insert(out->end(), bytes, bytes + size);
}

}  // namespace

std::wstring WriteFramePng(const std::wstring& folder, std::uint32_t number,
                           const lcd::LmBitmapHeader& bitmap) {
    if (folder.empty()) return {};
    int width = 0;
    int height = 0;
    std::vector<unsigned char> rgb;
    if (bitmap.format == lcd::kLmBitmapColor) {
        const auto& color = reinterpret_cast<const lcd::LmBitmapColor&>(bitmap);
        width = lcd::kColorWidth;
        height = lcd::kColorHeight;
        rgb.resize(static_cast<std::size_t>(width) * height * 3);
        for (std::size_t i = 0, n = static_cast<std::size_t>(width) * height; i < n; ++i) {
            rgb[i * 3 + 0] = color.pixels[i * 4 + 2];
            rgb[i * 3 + 1] = color.pixels[i * 4 + 1];
            rgb[i * 3 + 2] = color.pixels[i * 4 + 0];
        }
    } else {
        const auto& mono = reinterpret_cast<const lcd::LmBitmapMono&>(bitmap);
        width = lcd::kMonoWidth;
        height = lcd::kMonoHeight;
        rgb.resize(static_cast<std::size_t>(width) * height * 3);
        for (std::size_t i = 0, n = static_cast<std::size_t>(width) * height; i < n; ++i) {
            unsigned char lit = mono.pixels[i] >= 128 ? 255 : 0;
            rgb[i * 3 + 0] = rgb[i * 3 + 1] = rgb[i * 3 + 2] = lit;
        }
    }
    std::vector<unsigned char> png;
    if (!stbi_write_png_to_func(&AppendBytes, &png, width, height, 3, rgb.data(), width * 3)) {
        return {};
    }
    wchar_t name[32];
    std::swprintf(name, 32, L"frame-%04u.png", number);
    std::wstring path = folder + L"\\" + name;
    std::FILE* file = _wfopen(path.c_str(), L"wb");
    if (!file) return {};
    std::fwrite(png.data(), 1, png.size(), file);
    std::fclose(file);
    return path;
}

}  // namespace qvx::simlcd
