// The two append-only logs: CQvxLogfile, the plug-in's own in the user's roaming folder
// (%APPDATA%\Quorvex), and ovklib::CLogfile in the device software's local folder. No levels,
// no rotation: a line is written when some code asks, which is rare. Each line is the local
// time "hh:mm:ss", ".", the milliseconds without leading zeros, ": ", the message, and
// CR CR LF (the line end a text-mode stream makes of "\r\n"). The file is opened and closed
// for each line, shared with other readers and writers.
#pragma once

#include "support/os.h"

#include <memory>
#include <string>
#include <string_view>

namespace qvx {

/// The clock of log lines; tests replace it. Null puts the system's local time back.
using LogClock = os::TimeOfDay (*)();
void SetLogClock(LogClock clock);

/// One line as it stands in the file.
std::string FormatLogLine(const os::TimeOfDay& time, std::string_view message);

}  // namespace qvx

class CQvxLogfile {
public:
    /// The log `fileName` in the roaming application-data folder's "Quorvex" (made when
    /// missing). Throws the low 16 bits of the error as a `long` when the folder cannot be had.
    explicit CQvxLogfile(const std::wstring& fileName);
    CQvxLogfile(const CQvxLogfile&) = delete;
    CQvxLogfile& operator=(const CQvxLogfile&) = delete;
    virtual ~CQvxLogfile();

    /// Appends one line; false when the file could not be opened or written. Never throws.
    bool Write(const std::string& message);
    const std::wstring& Path() const;

private:
    class CQvxLogfileImpl;
    std::unique_ptr<CQvxLogfileImpl> m_impl;
};

namespace ovklib {

namespace detail {
class CLogfileImpl;
}

class CLogfile {
public:
    /// The log `name` in the device software's local application-data folder; that folder's
    /// look-up throws as it does for every caller.
    CLogfile(const std::wstring& name, bool deleteOnClose);
    CLogfile(const CLogfile&) = delete;
    CLogfile& operator=(const CLogfile&) = delete;
    /// Removes the file first when it was made to be deleted on close.
    virtual ~CLogfile();

    bool Write(const std::string& message);
    /// Removes the file; true when that raised no error (also when there was no file).
    bool Delete();
    const std::wstring& Path() const;

private:
    std::unique_ptr<detail::CLogfileImpl> m_impl;
    bool m_deleteOnClose = false;
};

}  // namespace ovklib
