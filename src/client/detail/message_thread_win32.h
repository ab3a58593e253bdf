// The message thread of a client and the proxy window it owns. The thread runs for every
// client; the proxy forwards the driver's messages to the client window only when the client
// asked for the proxy and gave it a target.
#pragma once

#include "client/detail/client_window_win32.h"

#include <boost/shared_ptr.hpp>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace oxapp::detail {

class CS80ProxyWindow : public CClientWindowImpl {
public:
    CS80ProxyWindow() = default;
    ~CS80ProxyWindow() override;

    /// The driver's three messages go on to the target, sent, so that the sender waits for
    /// the client window's thread; everything else goes to the base window.
    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              LRESULT& result, DWORD mapId) override;

private:
    friend class CS80MessageThread;
    std::atomic<HWND> m_target{nullptr};
    std::condition_variable m_ready;
    std::mutex m_mutex;
    // Set once the thread has tried to make the window, whether it succeeded or not.
    bool m_settled = false;
};

class CS80MessageThread {
public:
    /// Makes the proxy and starts the thread that creates its window and pumps its messages.
    CS80MessageThread();
    CS80MessageThread(const CS80MessageThread&) = delete;
    CS80MessageThread& operator=(const CS80MessageThread&) = delete;
    /// Destroys the proxy window, which ends the thread, and joins it; under the loader lock
    /// the thread is let go instead.
    virtual ~CS80MessageThread();

    /// True when `window` is a window; it then becomes the proxy's target.
    bool SetTarget(HWND window);
    void ClearTarget();
    /// Waits until the proxy window exists and gives its handle; 0 without a proxy.
    HWND ProxyWindow();

private:
    static void Run(boost::weak_ptr<CS80ProxyWindow> proxy);
    /// Waits until the thread has tried to make the proxy window.
    void WaitSettled();

    boost::shared_ptr<CS80ProxyWindow> m_proxy;
    std::thread m_thread;
};

/// Whether the calling thread holds the loader's lock (it runs a module's start or end).
bool HoldsLoaderLock();

}  // namespace oxapp::detail
