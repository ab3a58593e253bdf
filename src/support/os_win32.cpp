// The operating-system façade on Windows.
#include "support/os.h"
#include "support/win32_handles.h"

#include <cstdio>
#include <cstdlib>
#include <share.h>

namespace qvx::os {

std::optional<CFileBytes> ReadWholeFile(const std::wstring& path) {
    ovklib::CFileHandle file(CreateFileW(path.c_str(), GENERIC_READ,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                         nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return std::nullopt;
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.Get(), &size) || size.QuadPart < 0 ||
        size.QuadPart > static_cast<LONGLONG>(0x7FFFFFF0)) {
        return std::nullopt;
    }
    std::vector<char> bytes(static_cast<std::size_t>(size.QuadPart) + 1, '\0');
    std::size_t done = 0;
    while (done < bytes.size() - 1) {
        DWORD got = 0;
        DWORD want = static_cast<DWORD>(bytes.size() - 1 - done);
        if (!ReadFile(file.Get(), bytes.data() + done, want, &got, nullptr) || got == 0) {
            return std::nullopt;
        }
        done += got;
    }
    return CFileBytes(std::move(bytes));
}

std::optional<FileStatus> StatFile(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    FileStatus status;
    status.isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    status.size = (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    auto ticks = [](const FILETIME& t) {
        return static_cast<std::int64_t>((static_cast<std::uint64_t>(t.dwHighDateTime) << 32) |
                                         t.dwLowDateTime);
    };
    // File times count 100 ns ticks from 1601; calendar time counts seconds from 1970.
    constexpr std::int64_t kTicksTo1970 = 116444736000000000;
    status.lastWrite = ticks(data.ftLastWriteTime);
    status.lastWriteSeconds = (status.lastWrite - kTicksTo1970) / 10'000'000;
    status.createdSeconds = (ticks(data.ftCreationTime) - kTicksTo1970) / 10'000'000;
    return status;
}

std::optional<std::wstring> GetEnv(const std::wstring& name) {
    // The C runtime's copy of the environment, which is what _wputenv_s changes.
    const wchar_t* value = _wgetenv(name.c_str());
    if (!value) return std::nullopt;
    return std::wstring(value);
}

void SetEnv(const std::wstring& name, const std::optional<std::wstring>& value) {
    _wputenv_s(name.c_str(), value ? value->c_str() : L"");
    SetEnvironmentVariableW(name.c_str(), value ? value->c_str() : nullptr);
}

std::wstring CurrentDirectory() {
    DWORD needed = GetCurrentDirectoryW(0, nullptr);
    if (needed == 0) return {};
    std::wstring dir(needed, L'\0');
    DWORD got = GetCurrentDirectoryW(needed, dir.data());
    dir.resize(got < needed ? got : 0);
    return dir;
}

std::vector<std::wstring> FindFiles(const std::wstring& dir, const std::wstring& pattern) {
    std::vector<std::wstring> out;
    WIN32_FIND_DATAW data{};
    ovklib::CFindHandle find(FindFirstFileW(JoinPath(dir, pattern).c_str(), &data));
    if (!find) return out;
    do {
        out.emplace_back(data.cFileName);
    } while (FindNextFileW(find.Get(), &data));
    return out;
}

std::wstring ExecutablePath() {
    wchar_t buffer[MAX_PATH] = {};
    DWORD n = GetModuleFileNameW(nullptr, buffer, MAX_PATH);
    return n > 0 && n < MAX_PATH ? std::wstring(buffer, n) : std::wstring();
}

std::wstring WidenAcp(std::string_view text) {
    if (text.empty()) return {};
    int n = MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring out(static_cast<std::size_t>(n), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), out.data(), n);
    return out;
}

std::string NarrowAcp(std::wstring_view text) {
    if (text.empty()) return {};
    int n = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                nullptr, nullptr);
    std::string out(static_cast<std::size_t>(n), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), out.data(), n,
                        nullptr, nullptr);
    return out;
}

std::uint64_t MonotonicMs() {
    // The performance counter: the tick count moves in steps of up to 16 ms.
    static const LONGLONG frequency = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return f.QuadPart;
    }();
    LARGE_INTEGER c;
    QueryPerformanceCounter(&c);
    return static_cast<std::uint64_t>(c.QuadPart / frequency * 1000 +
                                      c.QuadPart % frequency * 1000 / frequency);
}

}  // namespace qvx::os

namespace qvx::os {

TimeOfDay LocalTimeOfDay() {
    SYSTEMTIME local{};
    GetLocalTime(&local);
    return {local.wHour, local.wMinute, local.wSecond, local.wMilliseconds};
}

bool AppendToFile(const std::wstring& path, std::string_view bytes) {
    // Binary, so the bytes land as given; shared so that other writers and readers get in.
    std::FILE* file = _wfsopen(path.c_str(), L"ab", _SH_DENYNO);
    if (!file) return false;
    bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
}

}  // namespace qvx::os
