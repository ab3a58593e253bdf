#include "support/logfile.h"

#include "support/halvane_folders.h"

#include <atomic>
#include <cstdio>
#include <filesystem>

namespace qvx {
namespace {

std::atomic<LogClock> g_clock{nullptr};

bool AppendLine(const std::wstring& path, const std::string& message) {
    try {
        LogClock clock = g_clock.load();
        os::TimeOfDay now = clock ? clock() : os::LocalTimeOfDay();
        return os::AppendToFile(path, FormatLogLine(now, message));
    } catch (...) {
        return false;
    }
}

}  // namespace

void SetLogClock(LogClock clock) { g_clock = clock; }

std::string FormatLogLine(const os::TimeOfDay& time, std::string_view message) {
    char stamp[16];
    std::snprintf(stamp, sizeof stamp, "%02d:%02d:%02d", time.hour, time.minute, time.second);
    std::string line = stamp;
    line += '.' + std::to_string(time.millisecond) + ": ";
    line += message;
    // What a text-mode stream makes of "\r\n": the double CR is the file's own form.
    line += "\r\r\n";
    return line;
}

}  // namespace qvx

class CQvxLogfile::CQvxLogfileImpl {
public:
    virtual ~CQvxLogfileImpl() = default;
    std::wstring m_path;
};

CQvxLogfile::CQvxLogfile(const std::wstring& fileName)
    : m_impl(std::make_unique<CQvxLogfileImpl>()) {
    m_impl->m_path = qvx::os::JoinPath(ovklib::GetQuorvexRoamingFolder(), fileName);
}

CQvxLogfile::~CQvxLogfile() = default;

bool CQvxLogfile::Write(const std::string& message) {
    return qvx::AppendLine(m_impl->m_path, message);
}

const std::wstring& CQvxLogfile::Path() const { return m_impl->m_path; }

namespace ovklib {

namespace detail {
class CLogfileImpl {
public:
    virtual ~CLogfileImpl() = default;
    std::wstring m_path;
};
}  // namespace detail

CLogfile::CLogfile(const std::wstring& name, bool deleteOnClose)
    : m_impl(std::make_unique<detail::CLogfileImpl>()), m_deleteOnClose(deleteOnClose) {
    m_impl->m_path = qvx::os::JoinPath(GetHalvaneLocalAppDataFolder(), name);
}

CLogfile::~CLogfile() {
    if (m_deleteOnClose) Delete();
}

bool CLogfile::Write(const std::string& message) {
    return qvx::AppendLine(m_impl->m_path, message);
}

bool CLogfile::Delete() {
    std::error_code ec;
#ifdef _WIN32
    std::filesystem::path path(m_impl->m_path);
#else
    std::filesystem::path path(qvx::os::NarrowUtf8(m_impl->m_path));
#endif
    std::filesystem::remove(path, ec);
    return !ec;
}

const std::wstring& CLogfile::Path() const { return m_impl->m_path; }

}  // namespace ovklib
