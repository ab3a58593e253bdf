// The start-up steps on Windows.
#include "core/startup_platform.h"
#include "support/os.h"
#include "support/win32_handles.h"

#include <shellapi.h>

#include <cwchar>

namespace qvx::core {
namespace {

using os::JoinPath;

std::wstring LongPath(const std::wstring& path) {
    wchar_t buffer[MAX_PATH] = {};
    DWORD n = GetLongPathNameW(path.c_str(), buffer, MAX_PATH);
    if (n == 0 || n >= MAX_PATH) return {};
    return buffer;
}

void DeleteTree(const std::wstring& dir) {
    // The shell wants the path in a buffer with a double terminator.
    wchar_t from[MAX_PATH + 2] = {};
    wcsncpy(from, dir.c_str(), MAX_PATH - 1);
    SHFILEOPSTRUCTW op{};
    op.wFunc = FO_DELETE;
    op.pFrom = from;
    op.fFlags = FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI;
    SHFileOperationW(&op);
}

// Copies every entry of `from` into `to`; `to` is made when the first entry is met.
void CopyTree(const std::wstring& from, const std::wstring& to) {
    WIN32_FIND_DATAW data{};
    ovklib::CFindHandle find(FindFirstFileW(JoinPath(from, L"*").c_str(), &data));
    if (!find) return;
    bool made = false;
    do {
        if (!wcscmp(data.cFileName, L".") || !wcscmp(data.cFileName, L"..")) continue;
        if (!made) {
            CreateDirectoryW(to.c_str(), nullptr);
            made = true;
        }
        std::wstring source = JoinPath(from, data.cFileName);
        std::wstring target = JoinPath(to, data.cFileName);
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
    textDirectory = JoinPath(textDirectory, L"text");
    CreateDirectoryW(textDirectory.c_str(), nullptr);
    if (!homeDirectory.empty()) CopyTree(JoinPath(homeDirectory, L"text"), textDirectory);
    return textDirectory;
}

}  // namespace qvx::core
