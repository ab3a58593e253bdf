// CS80ClientImpl: the sync exchange, by which the client learns the driver's state for this
// application, and the driver's sync functions.
#include "client/detail/s80_client_win32.h"

#include "client/detail/oxapp_shim.h"
#include "client/detail/registered_messages_win32.h"

#include <psapi.h>

#include <cwctype>

namespace oxapp::detail {

namespace {

constexpr DWORD kSyncQueryMs = 2000;
constexpr DWORD kNextFunctionMs = 1000;
constexpr std::uint32_t kSyncCommand = 1;
constexpr std::uint32_t kSyncAnswer = 3;
constexpr std::uint32_t kFullSync = 2;

/// One function of the driver's list, as the sync exchange reads it.
#pragma pack(push, 2)
struct SyncFunctionRecord {
    std::int32_t id = 0;
    char kind[542] = {};
};
#pragma pack(pop)
static_assert(sizeof(SyncFunctionRecord) == 546);

}  // namespace

void CS80ClientImpl::StartSyncExchange() {
    if (!Has(kFlagSyncState | kFlagSyncFunctions) || m_handle == 0) return;
    OxSyncSendQuery(m_handle);
    // A driver that does not answer is given 2 s; then the client goes ahead by itself.
    m_timers.CreateTimer(m_syncTimer, &CS80ClientImpl::OnSyncTimer, this, kSyncQueryMs, 0,
                         WT_EXECUTEONLYONCE);
}

void CALLBACK CS80ClientImpl::OnSyncTimer(void* context, BOOLEAN) {
    auto* self = static_cast<CS80ClientImpl*>(context);
    self->m_timers.DeleteTimer(self->m_syncTimer);
    std::uint32_t sum = self->ModuleNameSum();
    if (HWND window = self->Window()) {
        SendMessageW(window, ClientMessages().sync, static_cast<WPARAM>(sum << 16 | kFullSync), 0);
    }
}

void CALLBACK CS80ClientImpl::OnSyncAnswerTimer(void* context, BOOLEAN) {
    auto* self = static_cast<CS80ClientImpl*>(context);
    self->m_timers.DeleteTimer(self->m_syncTimer);
}

std::uint32_t CS80ClientImpl::ModuleNameSum() {
    if (m_syncId != 0) return m_syncId;
    wchar_t name[260] = {};
    GetModuleBaseNameW(GetCurrentProcess(), nullptr, name, 260);
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < 260; ++i) {
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
    event.type = 11;
    event.sync.syncId = static_cast<std::uint32_t>(wParam >> 16 & 0xFFFF);
    event.sync.kind = kSyncCommand;
    event.sync.code = static_cast<std::uint32_t>(wParam & 0xFFFF);
    // Sent from another thread and not yet replied to: let the sender go on at once.
    if ((InSendMessageEx(nullptr) & (ISMEX_REPLIED | ISMEX_SEND)) == ISMEX_SEND) ReplyMessage(1);
    return HandleSync(event);
}

std::int32_t CS80ClientImpl::HandleSync(const OxKvwEvent& event) {
    if (event.sync.kind == kSyncCommand) {
        return event.sync.code == kFullSync ? FullSync(event) : 0;
    }
    if (event.sync.kind == kSyncAnswer) return SyncAnswer(event);
    return 0;
}

std::int32_t CS80ClientImpl::FullSync(const OxKvwEvent& event) {
    m_timers.DeleteTimer(m_syncTimer);
    m_syncId = event.sync.syncId;
    if (!Has(kFlagSyncState | kFlagSyncFunctions)) return 0;
    std::int32_t result = 0;
    std::int32_t major = 0;
    std::int32_t minor = 0;
    OxSyncGetVersion(m_handle, &major, &minor);
    if (Has(kFlagSyncState)) {
        for (std::int32_t filter = 1; filter <= 3; ++filter) {
            std::int32_t state = 0;
            if (OxSyncGetFilter(m_handle, filter, &state) == kOxNoError) {
                SyncEvents().OnFilter(&state);
                result |= 1;
            }
        }
    }
    // The overall scale goes with motion, not with the sync state.
    if (Has(kFlagMotion)) {
        float scale = 0.25f;
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
            m_timers.DeleteTimer(m_syncTimer);
        }
        SyncFunctionRecord record;
        for (std::int32_t index = 1; index <= m_functionCount; ++index) {
            std::uint32_t size = 50;
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
        case 4:
            if (!functions) return 0;
            m_functionCount = static_cast<std::int32_t>(value);
            SyncEvents().OnFunctionCount(m_functionCount);
            return 1;
        case 5:
            if (!functions) return 0;
            m_timers.DeleteTimer(m_syncTimer);
            SyncEvents().OnFunction(&event);
            if (static_cast<std::int32_t>(value) == m_functionCount) {
                ReportDevice();
            } else {
                m_timers.CreateTimer(m_syncTimer, &CS80ClientImpl::OnSyncAnswerTimer, this,
                                     kNextFunctionMs, 0, WT_EXECUTEONLYONCE);
            }
            return 1;
        case 6:
            if (!functions) return 0;
            SyncEvents().OnButtonAssignment(&event);
            return 1;
        case 10:
            if (!state) return 0;
            SyncEvents().OnOrientation(&event);
            return 1;
        case 11:
            if (!state) return 0;
            SyncEvents().OnFilter(&event);
            return 1;
        case 12:
            if (!state) return 0;
            SyncEvents().OnAxesState(static_cast<std::int32_t>(value));
            return 1;
        case 14:
            if (!state) return 0;
            SyncEvents().OnScaleOverall(static_cast<double>(value));
            return 1;
        default:
            return 0;
    }
}

}  // namespace oxapp::detail
