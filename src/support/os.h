// The one door from portable code to the operating system: whole-file reads, file status,
// environment, current directory, code-page conversion and a monotonic clock. One Win32 and
// one POSIX implementation sit beside this header; nothing portable includes windows.h.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qvx::os {

/// A file's contents followed by one zero byte, so parsers may search and tokenize in place.
/// size() counts the zero byte; Length() does not.
class CFileBytes {
public:
    CFileBytes() : m_bytes(1, '\0') {}
    explicit CFileBytes(std::vector<char> bytesWithZero) : m_bytes(std::move(bytesWithZero)) {}
    char* Data() { return m_bytes.data(); }
    const char* Data() const { return m_bytes.data(); }
    std::size_t Length() const { return m_bytes.size() - 1; }

private:
    std::vector<char> m_bytes;
};

/// Reads the whole file. Empty when it cannot be opened or read to the end (a file deleted
/// or locked between status and read gives empty too).
std::optional<CFileBytes> ReadWholeFile(const std::wstring& path);

struct FileStatus {
    bool isDirectory = false;
    std::uint64_t size = 0;
    /// Last write time in 100 ns ticks; only compared for change, never shown.
    std::int64_t lastWrite = 0;
    /// Calendar times (seconds since 1970, UTC) of the last write and of the creation, for
    /// showing. Where the file system keeps no creation time, the last change of its status.
    std::int64_t lastWriteSeconds = 0;
    std::int64_t createdSeconds = 0;
};
/// Empty when the path does not exist or cannot be asked.
std::optional<FileStatus> StatFile(const std::wstring& path);

/// The value of an environment variable of the C runtime; empty optional when unset.
std::optional<std::wstring> GetEnv(const std::wstring& name);
/// Sets (or with an empty optional removes) a variable of the C runtime's environment.
void SetEnv(const std::wstring& name, const std::optional<std::wstring>& value);

std::wstring CurrentDirectory();

/// The names (not paths) in `dir` that match the wild-card `pattern` ("*" and "?", case
/// ignored), in the file system's order; natively that order is the names' order compared
/// upper-cased byte by byte, as the host's file system lists them. Empty when the folder cannot be
/// listed.
std::vector<std::wstring> FindFiles(const std::wstring& dir, const std::wstring& pattern);

/// The full path of the process's program file; empty when it cannot be had.
std::wstring ExecutablePath();

/// The system code page of the host's text files (Windows-1252 on the native build, where
/// there is no "system code page" to ask) to wide and back. Unmappable characters become '?'.
std::wstring WidenAcp(std::string_view text);
std::string NarrowAcp(std::wstring_view text);
/// Windows-1252 both ways, whatever the platform.
std::wstring WidenCp1252(std::string_view text);
std::string NarrowCp1252(std::wstring_view text);
/// UTF-8, the encoding of action identifiers. Invalid sequences become U+FFFD.
std::wstring WidenUtf8(std::string_view text);
std::string NarrowUtf8(std::wstring_view text);

/// Milliseconds of a clock that never goes back.
std::uint64_t MonotonicMs();

/// The local time of day, 24 hours, with its milliseconds.
struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};
TimeOfDay LocalTimeOfDay();

/// Appends `bytes` to the file at `path` (made when missing), opened for this call only and
/// shared with other readers and writers; false when it cannot be opened or written.
bool AppendToFile(const std::wstring& path, std::string_view bytes);

/// The separator of the platform's paths; the host's paths use '\\', the native build '/'.
inline constexpr wchar_t kPathSeparator =
#ifdef _WIN32
    L'\\';
#else
    L'/';
#endif

/// Appends `leaf` to `dir` with one separator between them.
std::wstring JoinPath(const std::wstring& dir, const std::wstring& leaf);

}  // namespace qvx::os
