// The driver's notices, recorded instead of shown, for as long as the recorder lives.
#pragma once

#include "nav/driver_notice.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qvx::testing {

struct CDriverNotice {
    std::wstring text;
    std::string caption;
    std::uint32_t type;
};

class CRecordedNotices {
public:
    CRecordedNotices() {
        nav::SetDriverNoticeSink(
            [this](const std::wstring& text, const char* caption, std::uint32_t type) {
                m_notices.push_back({text, caption ? caption : "", type});
            });
    }
    ~CRecordedNotices() { nav::SetDriverNoticeSink(nullptr); }
    CRecordedNotices(const CRecordedNotices&) = delete;
    CRecordedNotices& operator=(const CRecordedNotices&) = delete;

    /// The notices shown so far; the list is emptied.
    std::vector<CDriverNotice> Take() { return std::exchange(m_notices, {}); }

private:
    std::vector<CDriverNotice> m_notices;
};

}  // namespace qvx::testing
