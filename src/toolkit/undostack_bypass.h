// Marks, as a scope, each stretch in which the plug-in calls the host on the driver's behalf
// (menu set-up, command slots, action execution, mode evaluation, CAD data reads). The host is
// kept from clearing its undo stack by the toolkit's own start-up; this scope only names the
// places, and its operations have no effect of their own.
#pragma once

#include <memory>

class CQvxUndostackClearBypass {
public:
    explicit CQvxUndostackClearBypass(bool begin);
    CQvxUndostackClearBypass(const CQvxUndostackClearBypass&) = delete;
    CQvxUndostackClearBypass& operator=(const CQvxUndostackClearBypass&) = delete;
    virtual ~CQvxUndostackClearBypass();

    void Begin();
    void End();
    /// Always false.
    bool IsActive() const;

private:
    class CQvxUndostackClearBypassImpl;
    std::unique_ptr<CQvxUndostackClearBypassImpl> m_impl;
};
