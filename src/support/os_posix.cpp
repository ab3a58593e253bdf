// The operating-system façade on the native build.
#include "support/os.h"

#include <fnmatch.h>
#include <sys/stat.h>

#include <algorithm>

#include <chrono>
#include <ctime>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace qvx::os {
namespace {

std::string PathBytes(const std::wstring& path) { return NarrowUtf8(path); }

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

}  // namespace

std::optional<CFileBytes> ReadWholeFile(const std::wstring& path) {
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(PathBytes(path).c_str(), "rb"));
    if (!file) return std::nullopt;
    struct stat st {};
    if (fstat(fileno(file.get()), &st) != 0 || !S_ISREG(st.st_mode)) return std::nullopt;
    std::vector<char> bytes(static_cast<std::size_t>(st.st_size) + 1, '\0');
    std::size_t got = std::fread(bytes.data(), 1, bytes.size() - 1, file.get());
    if (got != bytes.size() - 1) return std::nullopt;
    return CFileBytes(std::move(bytes));
}

std::optional<FileStatus> StatFile(const std::wstring& path) {
    struct stat st {};
    if (stat(PathBytes(path).c_str(), &st) != 0) return std::nullopt;
    FileStatus status;
    status.isDirectory = S_ISDIR(st.st_mode);
    status.size = static_cast<std::uint64_t>(st.st_size);
    status.lastWrite =
        static_cast<std::int64_t>(st.st_mtim.tv_sec) * 10'000'000 + st.st_mtim.tv_nsec / 100;
    status.lastWriteSeconds = st.st_mtim.tv_sec;
    status.createdSeconds = st.st_ctim.tv_sec;
    return status;
}

std::optional<std::wstring> GetEnv(const std::wstring& name) {
    const char* value = std::getenv(NarrowUtf8(name).c_str());
    if (!value) return std::nullopt;
    return WidenUtf8(value);
}

void SetEnv(const std::wstring& name, const std::optional<std::wstring>& value) {
    if (value) {
        setenv(NarrowUtf8(name).c_str(), NarrowUtf8(*value).c_str(), 1);
    } else {
        unsetenv(NarrowUtf8(name).c_str());
    }
}

std::wstring CurrentDirectory() {
    std::error_code ec;
    auto dir = std::filesystem::current_path(ec);
    return ec ? std::wstring() : WidenUtf8(dir.string());
}

std::vector<std::wstring> FindFiles(const std::wstring& dir, const std::wstring& pattern) {
    std::vector<std::string> names;
    std::error_code ec;
    std::string glob = NarrowUtf8(pattern);
    for (std::filesystem::directory_iterator it(PathBytes(dir), ec), end; !ec && it != end;
         it.increment(ec)) {
        std::string name = it->path().filename().string();
        if (fnmatch(glob.c_str(), name.c_str(), FNM_CASEFOLD) == 0) names.push_back(name);
    }
    // The host's file system lists a folder by the names upper-cased, byte by byte.
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) {
        std::string upper = name;
        for (char& c : upper) {
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        }
        keyed.emplace_back(std::move(upper), std::move(name));
    }
    std::sort(keyed.begin(), keyed.end());
    names.clear();
    for (auto& entry : keyed) names.push_back(std::move(entry.second));
    std::vector<std::wstring> out;
    for (const std::string& name : names) out.push_back(WidenUtf8(name));
    return out;
}

std::wstring ExecutablePath() {
    std::error_code ec;
    auto path = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::wstring() : WidenUtf8(path.string());
}

std::wstring WidenAcp(std::string_view text) { return WidenCp1252(text); }
std::string NarrowAcp(std::wstring_view text) { return NarrowCp1252(text); }

std::uint64_t MonotonicMs() {
    using namespace std::chrono;
    return static_cast<std::uint64_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

}  // namespace qvx::os

namespace qvx::os {

TimeOfDay LocalTimeOfDay() {
    auto now = std::chrono::system_clock::now();
    std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
    localtime_r(&seconds, &local);
    auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()) % 1000;
    return {local.tm_hour, local.tm_min, local.tm_sec, static_cast<int>(ms.count())};
}

bool AppendToFile(const std::wstring& path, std::string_view bytes) {
    std::FILE* file = std::fopen(NarrowUtf8(path).c_str(), "ab");
    if (!file) return false;
    bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
}

}  // namespace qvx::os
