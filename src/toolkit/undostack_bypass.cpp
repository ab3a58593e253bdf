#include "toolkit/undostack_bypass.h"

#include <atomic>
#include <cstdint>

class CQvxUndostackClearBypass::CQvxUndostackClearBypassImpl {
public:
    virtual ~CQvxUndostackClearBypassImpl() {
        // An event handle would be closed here; none is ever made.
        m_handle.exchange(nullptr);
    }
    void Begin() {}
    void End() {}
    bool IsActive() const { return false; }

private:
    unsigned char m_flags[5] = {};
    std::int32_t m_value = 0;
    std::atomic<void*> m_handle{nullptr};
};

CQvxUndostackClearBypass::CQvxUndostackClearBypass(bool begin)
    : m_impl(std::make_unique<CQvxUndostackClearBypassImpl>()) {
    if (begin) Begin();
}

CQvxUndostackClearBypass::~CQvxUndostackClearBypass() = default;

void CQvxUndostackClearBypass::Begin() { m_impl->Begin(); }
void CQvxUndostackClearBypass::End() { m_impl->End(); }
bool CQvxUndostackClearBypass::IsActive() const { return m_impl->IsActive(); }
