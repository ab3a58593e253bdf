#include "client/detail/client_window_win32.h"

#include "client/detail/registered_messages_win32.h"
#include "support/boundary.h"
#include "support/os.h"

#include <commctrl.h>

#include <mutex>

namespace oxapp::detail {
namespace {

constexpr UINT_PTR kSubclassId = 1;
/// How long Destroy waits for a window whose thread does not answer.
constexpr UINT kHungWindowMs = 2000;
// The window exists only to receive messages: the smallest rectangle, never shown.
constexpr int kWindowSize = 1;

// The window's title: the base name of the host process's file.
std::wstring ProcessBaseName() {
    std::wstring path = qvx::os::ExecutablePath();
    return path.substr(path.find_last_of(L'\\') + 1);
}

}  // namespace

CClientWindowImpl::CClientWindowImpl() = default;

CClientWindowImpl::~CClientWindowImpl() = default;

bool CClientWindowImpl::Create(const std::wstring& className, HWND parent) {
    if (m_keepAlive) return false;
    m_keepAlive = weak_from_this().lock();
    if (!m_keepAlive) return false;

    m_className = className.empty() ? L"libovk::client_messages" : className;
    std::wstring title = ProcessBaseName();
    HINSTANCE instance = GetModuleHandleW(nullptr);
    DWORD style = WS_POPUP;
    if (parent && IsWindow(parent)) {
        style = WS_CHILD;
    } else {
        parent = nullptr;
    }
    HWND window = nullptr;
    {
        std::lock_guard<ovklib::CCriticalSection> guard(m_lock);
        // Each window registers its class afresh; a class of that name that is there already
        // has the same procedure and serves as well.
        WNDCLASSEXW record{};
        record.cbSize = sizeof(record);
        record.lpfnWndProc = &CClientWindowImpl::WindowProc;
        record.hInstance = instance;
        record.lpszClassName = m_className.c_str();
        RegisterClassExW(&record);
        window = CreateWindowExW(/*dwExStyle=*/0, m_className.c_str(), title.c_str(), style,
                                 /*X=*/0, /*Y=*/0, kWindowSize, kWindowSize, parent,
                                 /*hMenu=*/nullptr, instance, this);
        m_kind = 1;
    }
    if (!window) m_keepAlive.reset();
    return window != nullptr;
}

bool CClientWindowImpl::Attach(HWND window) {
    if (m_keepAlive || !IsWindow(window)) return false;
    m_keepAlive = weak_from_this().lock();
    if (!m_keepAlive) return false;
    if (!SetWindowSubclass(window, &CClientWindowImpl::SubclassProc, kSubclassId,
                           reinterpret_cast<DWORD_PTR>(this))) {
        m_keepAlive.reset();
        return false;
    }
    m_window = window;
    m_kind = 2;
    return true;
}

bool CClientWindowImpl::Destroy() {
    boost::shared_ptr<CClientWindowImpl> self = m_keepAlive;
    if (!self) return false;
    bool done = false;
    HWND window = m_window;
    if (m_kind == 1) {
        if (window && IsWindow(window)) {
            if (m_inMessage != 0 &&
                GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
                return DestroyWindow(window) != FALSE;
            }
            // The window's own thread destroys it; a hung thread is given a while.
            SendMessageTimeoutW(
                window, WM_CLOSE, 0, 0,
                SMTO_BLOCK | SMTO_ABORTIFHUNG | SMTO_NOTIMEOUTIFNOTHUNG | SMTO_ERRORONEXIT,
                kHungWindowMs, nullptr);
            done = true;
            if (HWND left = m_window.exchange(nullptr)) OnFinalMessage(left);
        }
    } else if (m_kind == 2) {
        if (window) {
            RemoveWindowSubclass(window, &CClientWindowImpl::SubclassProc, kSubclassId);
            m_window = nullptr;
            done = true;
        }
    } else {
        done = m_window.exchange(nullptr) != nullptr;
    }
    if (m_keepAlive) m_keepAlive.reset();
    return done;
}

void CClientWindowImpl::SetChainEntry(DWORD id, IMessageMap* map, DWORD mapId) {
    for (auto& entry : m_chain) {
        if (entry.id == id) {
            entry.map = map;
            entry.mapId = mapId;
            return;
        }
    }
    m_chain.push_back({id, map, mapId});
}

void CClientWindowImpl::RemoveChainEntry(DWORD id) {
    std::erase_if(m_chain, [id](const ChainEntry& entry) { return entry.id == id; });
}

bool CClientWindowImpl::ChainTo(DWORD id, HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                LRESULT& result) {
    for (const auto& entry : m_chain) {
        if (entry.id == id && entry.map) {
            // A copy: the map may take itself out of the chain while it handles the message.
            ChainEntry target = entry;
            return target.map->ProcessWindowMessage(window, message, wParam, lParam, result,
                                                    target.mapId);
        }
    }
    return false;
}

bool CClientWindowImpl::ProcessWindowMessage(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam, LRESULT& result, DWORD mapId) {
    if (mapId != 0) return false;
    ++m_inMessage;
    try {
        bool handled = false;
        if (message == WM_NCDESTROY) {
            if (m_kind == 2)
                RemoveWindowSubclass(window, &CClientWindowImpl::SubclassProc, kSubclassId);
            handled = true;
        }
        // The chained map sees WM_NCDESTROY as well; the counter keeps every handled message.
        if (ChainTo(kClientChainId, window, message, wParam, lParam, result)) return true;
        if (handled) return true;
        --m_inMessage;
        return false;
    } catch (...) {
        --m_inMessage;
        throw;
    }
}

void CClientWindowImpl::OnFinalMessage(HWND) {
    PostThreadMessageW(GetCurrentThreadId(), kEndThreadMessage, 0, 0);
    m_keepAlive.reset();
}

LRESULT CALLBACK CClientWindowImpl::WindowProc(HWND window, UINT message, WPARAM wParam,
                                               LPARAM lParam) {
    auto* self = reinterpret_cast<CClientWindowImpl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_NCCREATE) {
        auto* create = reinterpret_cast<CREATESTRUCTW*>(lParam);
        self = static_cast<CClientWindowImpl*>(create->lpCreateParams);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        if (self) self->m_window = window;
    }
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    return self->Route(window, message, wParam, lParam, false);
}

LRESULT CALLBACK CClientWindowImpl::SubclassProc(HWND window, UINT message, WPARAM wParam,
                                                 LPARAM lParam, UINT_PTR, DWORD_PTR data) {
    auto* self = reinterpret_cast<CClientWindowImpl*>(data);
    return self->Route(window, message, wParam, lParam, true);
}

LRESULT CClientWindowImpl::Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                 bool subclassed) {
    // The object stays alive through its own final message.
    boost::shared_ptr<CClientWindowImpl> guard = weak_from_this().lock();
    auto fallback = [&]() {
        return subclassed ? DefSubclassProc(window, message, wParam, lParam)
                          : DefWindowProcW(window, message, wParam, lParam);
    };
    LRESULT result = 0;
    // Nothing leaves a window procedure: a handler that throws leaves the message unhandled,
    // and it gets the default processing.
    bool handled = qvx::CallAtBoundary(
        subclassed ? "CClientWindowImpl::SubclassProc" : "CClientWindowImpl::WindowProc", false,
        [&] { return ProcessWindowMessage(window, message, wParam, lParam, result, 0); });
    // Creation and destruction always get the default processing, whatever a map did.
    if (message == WM_NCCREATE) {
        result = fallback();
    } else if (!handled || message == WM_NCDESTROY) {
        LRESULT standard = fallback();
        if (!handled) result = standard;
    }
    if (message == WM_NCDESTROY && !subclassed) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        if (m_window.exchange(nullptr)) OnFinalMessage(window);
    }
    return result;
}

}  // namespace oxapp::detail
