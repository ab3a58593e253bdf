#include "sim/driver/driver_messages_win32.h"

#include "support/win32_handles.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace qvx::simdriver {
namespace {

struct Sending {
    HMODULE module;
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

DWORD WINAPI SendAndLetGo(void* parameter) {
    Sending sending = *static_cast<Sending*>(parameter);
    delete static_cast<Sending*>(parameter);
    SendMessageW(sending.window, sending.message, sending.wParam, sending.lParam);
    // The last reference may be this thread's: the library must not be freed under its feet.
    FreeLibraryAndExitThread(sending.module, 0);
}

std::mutex& SendersLock() {
    static std::mutex lock;
    return lock;
}

std::vector<ovklib::CKernelHandle>& Senders() {
    static std::vector<ovklib::CKernelHandle> senders;
    return senders;
}

bool HasEnded(const ovklib::CKernelHandle& thread) {
    return WaitForSingleObject(thread.Get(), 0) == WAIT_OBJECT_0;
}

}  // namespace

const DriverMessages& Messages() {
    static const DriverMessages messages{RegisterWindowMessageW(L"KelvaroMessage00"),
                                         RegisterWindowMessageW(L"CommandEvent"),
                                         RegisterWindowMessageW(L"SyncCommandEvent")};
    return messages;
}

bool SendFromThread(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                            reinterpret_cast<LPCWSTR>(&SendAndLetGo), &module)) {
        return false;
    }
    auto* sending = new Sending{module, window, message, wParam, lParam};
    ovklib::CKernelHandle thread(CreateThread(nullptr, 0, &SendAndLetGo, sending, 0, nullptr));
    if (!thread) {
        delete sending;
        FreeLibrary(module);
        return false;
    }
    std::lock_guard<std::mutex> guard(SendersLock());
    auto& senders = Senders();
    senders.erase(std::remove_if(senders.begin(), senders.end(), HasEnded), senders.end());
    senders.push_back(std::move(thread));
    return true;
}

void JoinSenders(DWORD timeoutMs) {
    std::vector<ovklib::CKernelHandle> pending;
    {
        std::lock_guard<std::mutex> guard(SendersLock());
        pending.swap(Senders());
    }
    ULONGLONG deadline = GetTickCount64() + timeoutMs;
    while (!pending.empty()) {
        // Hands over messages already sent to this thread before waiting for more.
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
        ULONGLONG now = GetTickCount64();
        if (now >= deadline) break;
        std::vector<HANDLE> handles;
        for (std::size_t i = 0; i < pending.size() && i < MAXIMUM_WAIT_OBJECTS - 1; ++i) {
            handles.push_back(pending[i].Get());
        }
        DWORD count = static_cast<DWORD>(handles.size());
        DWORD woken =
            MsgWaitForMultipleObjectsEx(count, handles.data(), static_cast<DWORD>(deadline - now),
                                        QS_SENDMESSAGE, MWMO_INPUTAVAILABLE);
        if (woken < WAIT_OBJECT_0 + count) {
            pending.erase(pending.begin() + (woken - WAIT_OBJECT_0));
        } else if (woken == WAIT_FAILED) {
            break;
        }
    }
    if (pending.empty()) return;
    std::lock_guard<std::mutex> guard(SendersLock());
    for (auto& thread : pending) Senders().push_back(std::move(thread));
}

}  // namespace qvx::simdriver
