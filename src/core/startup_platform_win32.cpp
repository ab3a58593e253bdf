// The start-up steps on Windows.
#include "core/startup_platform.h"
#include "support/win32_handles.h"

#include <shellapi.h>

#include <cwchar>

namespace qvx::core {
namespace {

std::wstring LongPath(const std::wstring& path) {
    wchar_t buffer[260] = {};
    DWORD n = GetLongPathNameW(path.c_str(), buffer, 260);
    if (n == 0 || n >= 260) return {};
    return buffer;
}

std::wstring Join(const std::wstring& dir, const wchar_t* leaf) {
    if (!dir.empty() && dir.back() != L'\\' && dir.back() != L'/') return dir + L'\\' + leaf;
    return dir + leaf;
}

void DeleteTree(const std::wstring& dir) {
    // The shell wants the path in a buffer with a double terminator.
    wchar_t from[262] = {};
    wcsncpy(from, dir.c_str(), 259);
    SHFILEOPSTRUCTW op{};
    op.wFunc = FO_DELETE;  // 3
    op.pFrom = from;
    op.fFlags = /*FOF_SILENT|FOF_NOCONFIRMATION|FOF_NOERRORUI=*/0x0414;
    SHFileOperationW(&op);
}

// Copies every entry of `from` into `to`; `to` is made when the first entry is met.
void CopyTree(const std::wstring& from, const std::wstring& to) {
    WIN32_FIND_DATAW data{};
    ovklib::CFindHandle find(FindFirstFileW(Join(from, L"*").c_str(), &data));
    if (!find) return;
    bool made = false;
    do {
        if (!wcscmp(data.cFileName, L".") || !wcscmp(data.cFileName, L"..")) continue;
        if (!made) {
            CreateDirectoryW(to.c_str(), nullptr);
            made = true;
        }
        std::wstring source = Join(from, data.cFileName);
        std::wstring target = Join(to, data.cFileName);
        if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            CopyTree(source, target);
        } else {
            CopyFileW(source.c_str(), target.c_str(), /*bFailIfExists=*/FALSE);
        }
    } while (FindNextFileW(find.Get(), &data));
}

}  // namespace

std::uint32_t SystemThreadUiLanguage() { return GetThreadUILanguage(); }

std::wstring PrepareTextDirectory(const std::wstring& appTextDirectory,
                                  const std::wstring& homeDirectory) {
    std::wstring textDirectory = LongPath(appTextDirectory);
    if (textDirectory.empty()) {
        CreateDirectoryW(appTextDirectory.c_str(), nullptr);
        textDirectory = LongPath(appTextDirectory);
    }
    if (textDirectory.empty()) return textDirectory;
    DeleteTree(textDirectory);
    CreateDirectoryW(textDirectory.c_str(), nullptr);
    textDirectory = Join(textDirectory, L"text");
    CreateDirectoryW(textDirectory.c_str(), nullptr);
    if (!homeDirectory.empty()) CopyTree(Join(homeDirectory, L"text"), textDirectory);
    return textDirectory;
}

}  // namespace qvx::core
