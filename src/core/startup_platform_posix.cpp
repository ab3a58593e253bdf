// The start-up steps on the native build: the text directory with std::filesystem.
#include "core/startup_platform.h"
#include "support/os.h"

#include <filesystem>

namespace qvx::core {
namespace {

namespace fs = std::filesystem;

fs::path PathOf(const std::wstring& text) { return fs::path(os::NarrowUtf8(text)); }

void CopyTree(const fs::path& from, const fs::path& to) {
    std::error_code ec;
    bool made = false;
    for (fs::directory_iterator it(from, ec), end; !ec && it != end; it.increment(ec)) {
        if (!made) {
            fs::create_directory(to, ec);
            made = true;
        }
        fs::path target = to / it->path().filename();
        if (it->is_directory(ec)) {
            CopyTree(it->path(), target);
        } else {
            fs::copy_file(it->path(), target, fs::copy_options::overwrite_existing, ec);
        }
    }
}

}  // namespace

std::uint32_t SystemThreadUiLanguage() { return 0x0409; }

std::wstring PrepareTextDirectory(const std::wstring& appTextDirectory,
                                  const std::wstring& homeDirectory) {
    if (appTextDirectory.empty()) return {};
    std::error_code ec;
    fs::path dir = PathOf(appTextDirectory);
    // Made one level deep only, as on Windows: a missing parent means no text directory.
    if (!fs::is_directory(dir, ec)) fs::create_directory(dir, ec);
    if (!fs::is_directory(dir, ec)) return {};
    fs::remove_all(dir, ec);
    fs::create_directory(dir, ec);
    fs::path text = dir / "text";
    fs::create_directory(text, ec);
    if (!homeDirectory.empty()) CopyTree(PathOf(homeDirectory) / "text", text);
    return os::WidenUtf8(text.string());
}

}  // namespace qvx::core
