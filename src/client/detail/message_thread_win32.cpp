#include "client/detail/message_thread_win32.h"

#include "client/detail/registered_messages_win32.h"
#include "support/boundary.h"

#include <stdexcept>

namespace oxapp::detail {

CS80ProxyWindow::~CS80ProxyWindow() {
    // A window left behind (its thread was let go under the loader lock) goes with the object.
    ovklib::CWindowHandle left(TakeHandle());
}

bool CS80ProxyWindow::ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           LRESULT& result, DWORD mapId) {
    if (mapId != 0) return false;
    ++m_inMessage;
    if (message == WM_NCCREATE || message == WM_NCDESTROY) {
        result = 0;
        return true;
    }
    const CRegisteredMessages& messages = ProxyMessages();
    if (message == messages.event || message == messages.command || message == messages.sync) {
        if (HWND target = m_target.load()) SendMessageW(target, message, wParam, lParam);
        result = 0;
        return true;
    }
    --m_inMessage;
    return CClientWindowImpl::ProcessWindowMessage(window, message, wParam, lParam, result, mapId);
}

CS80MessageThread::CS80MessageThread() {
    m_proxy = boost::shared_ptr<CS80ProxyWindow>(new CS80ProxyWindow());
    m_thread = std::thread(&CS80MessageThread::Run, boost::weak_ptr<CS80ProxyWindow>(m_proxy));
}

CS80MessageThread::~CS80MessageThread() {
    if (m_thread.joinable()) {
        if (HoldsLoaderLock()) {
            // A thread can neither start nor end while its joiner holds the loader's lock.
            // Letting go of the proxy makes the thread end on its own once it runs: it finds
            // no proxy, or its window is destroyed with it.
            if (m_proxy) m_proxy->Destroy();
            m_proxy.reset();
            m_thread.detach();
        } else {
            // The window may not exist yet; destroying it before the thread made it would
            // leave the thread pumping for ever.
            WaitSettled();
            if (m_proxy) m_proxy->Destroy();
            try {
                m_thread.join();
            } catch (const std::runtime_error&) {
            }
        }
    }
}

bool CS80MessageThread::SetTarget(HWND window) {
    if (!m_proxy || !IsWindow(window)) return false;
    m_proxy->m_target = window;
    return true;
}

void CS80MessageThread::ClearTarget() {
    if (m_proxy) m_proxy->m_target = nullptr;
}

HWND CS80MessageThread::ProxyWindow() {
    WaitSettled();
    return m_proxy ? m_proxy->Handle() : nullptr;
}

void CS80MessageThread::WaitSettled() {
    boost::shared_ptr<CS80ProxyWindow> proxy = m_proxy;
    if (!proxy) return;
    std::unique_lock<std::mutex> lock(proxy->m_mutex);
    proxy->m_ready.wait(lock, [&]() { return proxy->m_settled; });
}

void CS80MessageThread::Run(boost::weak_ptr<CS80ProxyWindow> weakProxy) {
    // Both failures end the thread; the boundary reports them.
    qvx::CallAtBoundary("CS80MessageThread::Run", [&] {
        {
            boost::shared_ptr<CS80ProxyWindow> proxy = weakProxy.lock();
            if (!proxy) throw std::runtime_error("Proxy* is NULL");
            bool created = false;
            {
                std::lock_guard<std::mutex> lock(proxy->m_mutex);
                created = proxy->Create(L"s80_proxy", nullptr);
                proxy->m_settled = true;
            }
            proxy->m_ready.notify_all();
            if (!created) throw std::runtime_error("Cannot create ProxyWindow");
        }
        for (;;) {
            DWORD wait = MsgWaitForMultipleObjectsEx(/*nCount=*/0, nullptr, INFINITE, QS_ALLINPUT,
                                                     MWMO_ALERTABLE | MWMO_INPUTAVAILABLE);
            if (wait != WAIT_OBJECT_0) continue;
            MSG message;
            BOOL got = GetMessageW(&message, nullptr, 0, 0);
            if (got == 0 || got == -1) break;
            TranslateMessage(&message);
            DispatchMessageW(&message);
            if (message.message == kEndThreadMessage) break;
        }
    });
    // Nobody is left waiting for a window that will not come.
    if (boost::shared_ptr<CS80ProxyWindow> proxy = weakProxy.lock()) {
        {
            std::lock_guard<std::mutex> lock(proxy->m_mutex);
            proxy->m_settled = true;
        }
        proxy->m_ready.notify_all();
    }
}

bool HoldsLoaderLock() {
    // The process environment block keeps a pointer to the loader's critical section, whose
    // owner is a thread identifier.
    struct BasicInformation {
        LONG_PTR exitStatus;
        char* peb;
        ULONG_PTR affinity;
        LONG_PTR priority;
        ULONG_PTR processId;
        ULONG_PTR parentId;
    };
    using QueryFn = LONG(WINAPI*)(HANDLE, int, void*, ULONG, ULONG*);
    HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    auto query = reinterpret_cast<QueryFn>(
        reinterpret_cast<void (*)()>(GetProcAddress(ntdll, "NtQueryInformationProcess")));
    BasicInformation basic{};
    if (!query || query(GetCurrentProcess(), 0, &basic, sizeof(basic), nullptr) < 0 || !basic.peb) {
        return false;
    }
    constexpr std::size_t kLoaderLockOffset = sizeof(void*) == 8 ? 0x110 : 0xA0;
    auto* lock = *reinterpret_cast<RTL_CRITICAL_SECTION**>(basic.peb + kLoaderLockOffset);
    return lock && reinterpret_cast<DWORD_PTR>(lock->OwningThread) == GetCurrentThreadId();
}

}  // namespace oxapp::detail
