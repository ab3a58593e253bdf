// CClientWindowImpl: a hidden window that hands its messages to message maps chained to it
// under an identifier. The window keeps itself alive from creation to its final message.
#pragma once

#include "support/win32_handles.h"
#include "support/windows_api.h"

#include <boost/enable_shared_from_this.hpp>
#include <boost/shared_ptr.hpp>

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace oxapp::detail {

/// Something that handles window messages; `mapId` selects one of its maps.
class IMessageMap {
public:
    /// True when handled; `result` is then the window procedure's result.
    virtual bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      LRESULT& result, DWORD mapId) = 0;

protected:
    ~IMessageMap() = default;
};

class CClientWindowImpl : public IMessageMap,
                          public boost::enable_shared_from_this<CClientWindowImpl> {
public:
    /// The chain identifier under which a client hangs its message map.
    static constexpr DWORD kClientChainId = 234;

    CClientWindowImpl();
    CClientWindowImpl(const CClientWindowImpl&) = delete;
    CClientWindowImpl& operator=(const CClientWindowImpl&) = delete;
    virtual ~CClientWindowImpl();

    /// Makes the window: a child of `parent` if that is a window, else a popup without a
    /// parent; never shown. An empty class name is "libovk::client_messages". False when a
    /// window exists already or cannot be made. Must be owned by a boost::shared_ptr.
    bool Create(const std::wstring& className, HWND parent);
    /// Subclasses an existing window instead of making one.
    bool Attach(HWND window);
    /// Destroys (or lets go of) the window; see the source for how a hung window is treated.
    bool Destroy();

    HWND Handle() const { return m_window; }
    /// Whether the window has ever handled a message.
    std::int32_t MessagesHandled() const { return m_inMessage.load(); }

    void SetChainEntry(DWORD id, IMessageMap* map, DWORD mapId = 0);
    void RemoveChainEntry(DWORD id);

    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              LRESULT& result, DWORD mapId) override;

protected:
    /// After the last message of the window: ends the calling thread's loop and lets go of
    /// the self reference.
    virtual void OnFinalMessage(HWND window);
    /// Passes a message to the map chained under `id`.
    bool ChainTo(DWORD id, HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                 LRESULT& result);
    /// Lets go of the window without destroying it; the caller owns it from now on.
    HWND TakeHandle() { return m_window.exchange(nullptr); }
    /// Counts a message in; a handler that did not handle it counts it out again.
    std::atomic<std::int32_t> m_inMessage{0};

private:
    struct ChainEntry {
        DWORD id;
        IMessageMap* map;
        DWORD mapId;
    };
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK SubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR id, DWORD_PTR data);
    LRESULT Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool subclassed);

    std::vector<ChainEntry> m_chain;
    /// 0 unattached, 1 made by this object, 2 subclassed.
    std::int32_t m_kind = 1;
    std::wstring m_className;
    /// Held around class registration and creation only; no spinning for so rare a lock.
    ovklib::CCriticalSection m_lock{/*spinCount=*/0};
    boost::shared_ptr<CClientWindowImpl> m_keepAlive;
    std::atomic<HWND> m_window{nullptr};
};

}  // namespace oxapp::detail
