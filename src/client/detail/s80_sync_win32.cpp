// CS80ClientImpl: the sync exchange, by which the client learns the driver's state for this
// application, and the driver's sync functions.
#include "client/detail/s80_client_win32.h"

#include "client/detail/oxapp_shim.h"
#include "client/detail/registered_messages_win32.h"
#include "support/boundary.h"

#include <psapi.h>

#include <atomic>
#include <cwctype>

namespace oxapp::detail {

namespace {

// The driver's three filters, numbered from 1.
constexpr std::int32_t kFirstFilter = 1;
constexpr std::int32_t kLastFilter = 3;
/// What the overall scale reads when the driver does not say.
constexpr float kDefaultScaleOverall = 0.25f;
/// The room given to a function's name when the driver is first asked.
constexpr std::uint32_t kFunctionNameSize = 50;

// The timers' settings, shared by every client and changed only by tests.
const CS80ClientImpl::TimerPeriods kDefaultPeriods;
std::atomic<DWORD> g_syncQueryMs{kDefaultPeriods.syncQuery};
std::atomic<DWORD> g_nextFunctionMs{kDefaultPeriods.nextFunction};
std::atomic<DWORD> g_motionEndMs{kDefaultPeriods.motionEnd};
std::atomic<void (*)()> g_timerProbe{nullptr};

/// One function of the driver's list, as the sync exchange reads it.
#pragma pack(push, 2)
struct SyncFunctionRecord {
    std::int32_t id = 0;
    char kind[542] = {};
};
#pragma pack(pop)
static_assert(sizeof(SyncFunctionRecord) == 546);

}  // namespace

void CS80ClientImpl::SetTimersForTest(const TimerPeriods& periods, void (*probe)()) {
    g_syncQueryMs = periods.syncQuery;
    g_nextFunctionMs = periods.nextFunction;
    g_motionEndMs = periods.motionEnd;
    g_timerProbe = probe;
}

CS80ClientImpl::TimerPeriods CS80ClientImpl::TimerPeriodsInForce() {
    return TimerPeriods{g_syncQueryMs.load(), g_nextFunctionMs.load(), g_motionEndMs.load()};
}

void CS80ClientImpl::RunTimerProbe() {
    if (auto probe = g_timerProbe.load()) probe();
}

void CS80ClientImpl::StartSyncExchange() {
    if (!Has(kFlagSyncState | kFlagSyncFunctions) || m_handle == 0) return;
    OxSyncSendQuery(m_handle);
    // A driver that does not answer is given a while; then the client goes ahead by itself.
    m_syncTimer.Start(m_timers, &CS80ClientImpl::OnSyncTimer, m_timerWindow.load(),
                      TimerPeriodsInForce().syncQuery, /*periodMs=*/0, WT_EXECUTEONLYONCE);
}

void CALLBACK CS80ClientImpl::OnSyncTimer(void* window, BOOLEAN) {
    qvx::CallAtBoundary("CS80ClientImpl::OnSyncTimer", [&] {
        RunTimerProbe();
        // Handled ahead of posted messages, as a sent one is, but the timer's thread does not
        // wait: the window's thread may be deleting the timer queue just then, which waits
        // for running callbacks. A window that is gone makes the call fail at once.
        if (window) {
            SendNotifyMessageW(static_cast<HWND>(window), kSyncQueryUnansweredMessage, 0, 0);
        }
    });
}

void CALLBACK CS80ClientImpl::OnSyncAnswerTimer(void*, BOOLEAN) {
    // The pause between two function answers ends with nothing to do: the fired timer stays
    // held until the slot is started again or cancelled.
    qvx::CallAtBoundary("CS80ClientImpl::OnSyncAnswerTimer", [] { RunTimerProbe(); });
}

std::int32_t CS80ClientImpl::SyncQueryUnanswered() {
    m_syncTimer.Cancel();
    std::uint32_t sum = ModuleNameSum();
    return HandleSyncMessage(static_cast<WPARAM>(sum << 16 | kOxSyncFull));
}

std::uint32_t CS80ClientImpl::ModuleNameSum() {
    if (m_syncId != 0) return m_syncId;
    wchar_t name[MAX_PATH] = {};
    GetModuleBaseNameW(GetCurrentProcess(), nullptr, name, MAX_PATH);
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < MAX_PATH; ++i) {
        if (name[i] == 0) {
            m_syncId = sum;
            return m_syncId;
        }
        sum += static_cast<std::uint32_t>(std::towupper(name[i]));
    }
    // No terminator within the buffer: the sum is not kept.
    return m_syncId;
}

std::int32_t CS80ClientImpl::HandleSyncMessage(WPARAM wParam) {
    auto self = m_weakSelf.lock();
    if (!self) return 0;
    OxKvwEvent event{};
    event.type = kOxEventSync;
    event.sync.syncId = static_cast<std::uint32_t>(wParam >> 16 & 0xFFFF);
    event.sync.kind = kOxSyncCommand;
    event.sync.code = static_cast<std::uint32_t>(wParam & 0xFFFF);
    // Sent from another thread and not yet replied to: let the sender go on at once.
    if ((InSendMessageEx(nullptr) & (ISMEX_REPLIED | ISMEX_SEND)) == ISMEX_SEND) ReplyMessage(1);
    return HandleSync(event);
}

std::int32_t CS80ClientImpl::HandleSync(const OxKvwEvent& event) {
    if (event.sync.kind == kOxSyncCommand) {
        return event.sync.code == kOxSyncFull ? FullSync(event) : 0;
    }
    if (event.sync.kind == kOxSyncAnswer) return SyncAnswer(event);
    return 0;
}

std::int32_t CS80ClientImpl::FullSync(const OxKvwEvent& event) {
    m_syncTimer.Cancel();
    m_syncId = event.sync.syncId;
    if (!Has(kFlagSyncState | kFlagSyncFunctions)) return 0;
    std::int32_t result = 0;
    std::int32_t major = 0;
    std::int32_t minor = 0;
    OxSyncGetVersion(m_handle, &major, &minor);
    if (Has(kFlagSyncState)) {
        for (std::int32_t filter = kFirstFilter; filter <= kLastFilter; ++filter) {
            std::int32_t state = 0;
            if (OxSyncGetFilter(m_handle, filter, &state) == kOxNoError) {
                SyncEvents().OnFilter(&state);
                result |= 1;
            }
        }
    }
    // The overall scale goes with motion, not with the sync state.
    if (Has(kFlagMotion)) {
        float scale = kDefaultScaleOverall;
        if (OxSyncGetScaleOverall(m_handle, &scale) == kOxNoError) {
            SyncEvents().OnScaleOverall(scale);
            result |= 1;
        }
    }
    if (Has(kFlagSyncState)) {
        std::int32_t state = 0;
        if (OxSyncGetAxesState(m_handle, &state) == kOxNoError) {
            SyncEvents().OnAxesState(state);
            result |= 1;
        }
    }
    if (ReportDevice()) result |= 1;
    if (Has(kFlagSyncFunctions)) {
        std::int32_t count = 0;
        if (OxSyncGetNumberOfFunctions(m_handle, &count) == kOxNoError) {
            m_functionCount = count;
            SyncEvents().OnFunctionCount(count);
            result |= 1;
        } else {
            m_syncTimer.Cancel();
        }
        SyncFunctionRecord record;
        for (std::int32_t index = 1; index <= m_functionCount; ++index) {
            std::uint32_t size = kFunctionNameSize;
            std::int32_t error = OxSyncGetFunction(m_handle, index, &record.id, record.kind, &size);
            if (error == kOxNotEnoughMemory) {
                error = OxSyncGetFunction(m_handle, index, &record.id, record.kind, &size);
            }
            if (error == kOxNoError) {
                SyncEvents().OnFunction(&record);
                result |= 1;
            }
        }
        SyncEvents().OnSyncDone();
    }
    return result;
}

std::int32_t CS80ClientImpl::SyncAnswer(const OxKvwEvent& event) {
    if (!Has(kFlagSyncState | kFlagSyncFunctions)) return 0;
    const std::uint32_t value = event.sync.value;
    const bool functions = Has(kFlagSyncFunctions);
    const bool state = Has(kFlagSyncState);
    switch (event.sync.code) {
        case kOxSyncFunctionCount:
            if (!functions) return 0;
            m_functionCount = static_cast<std::int32_t>(value);
            SyncEvents().OnFunctionCount(m_functionCount);
            return 1;
        case kOxSyncFunction:
            if (!functions) return 0;
            m_syncTimer.Cancel();
            SyncEvents().OnFunction(&event);
            if (static_cast<std::int32_t>(value) == m_functionCount) {
                ReportDevice();
            } else {
                m_syncTimer.Start(m_timers, &CS80ClientImpl::OnSyncAnswerTimer, nullptr,
                                  TimerPeriodsInForce().nextFunction, /*periodMs=*/0,
                                  WT_EXECUTEONLYONCE);
            }
            return 1;
        case kOxSyncButtonAssignment:
            if (!functions) return 0;
            SyncEvents().OnButtonAssignment(&event);
            return 1;
        case kOxSyncOrientation:
            if (!state) return 0;
            SyncEvents().OnOrientation(&event);
            return 1;
        case kOxSyncFilter:
            if (!state) return 0;
            SyncEvents().OnFilter(&event);
            return 1;
        case kOxSyncAxesState:
            if (!state) return 0;
            SyncEvents().OnAxesState(static_cast<std::int32_t>(value));
            return 1;
        case kOxSyncScaleOverall:
            if (!state) return 0;
            SyncEvents().OnScaleOverall(static_cast<double>(value));
            return 1;
        default:
            return 0;
    }
}

}  // namespace oxapp::detail
