// The simulated LCD manager: a thread of its own with a window of the class the applets look
// for. Every delivery to an applet runs on this thread, one at a time; a scenario's control
// call waits until its delivery is done, so that what the applet posted is in its queue when
// the call returns. A connection that goes away waits for a delivery under way to end.
#include "lcd_state_win32.h"

#include "support/boundary.h"
#include "support/module_of_code_win32.h"
#include "support/windows_api.h"

#include <functional>
#include <memory>
#include <thread>

namespace qvx::simlcd {
namespace {

constexpr wchar_t kManagerClass[] = L"Lorimet LCD Monitor Window";
constexpr UINT kRunTask = WM_APP + 1;  ///< lParam: a task to run and delete

std::thread g_thread;
HWND g_window = nullptr;
/// Held by the manager's thread while it calls into an applet.
std::mutex g_delivering;

using Task = std::function<void()>;

HINSTANCE ThisModule() {
    return qvx::os::ModuleContaining(reinterpret_cast<const void*>(&ThisModule));
}

LRESULT CALLBACK ManagerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kRunTask) {
        std::unique_ptr<Task> task(reinterpret_cast<Task*>(lParam));
        qvx::CallAtBoundary("simlcd manager", [&] { (*task)(); });
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void ManagerThread(HANDLE ready) {
    WNDCLASSEXW record{};
    record.cbSize = sizeof(record);
    record.lpfnWndProc = &ManagerProc;
    record.hInstance = ThisModule();
    record.lpszClassName = kManagerClass;
    RegisterClassExW(&record);
    g_window = CreateWindowExW(0, kManagerClass, L"LCD Manager", WS_POPUP, 0, 0, 1, 1, nullptr,
                               nullptr, ThisModule(), nullptr);
    SetEvent(ready);
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    DestroyWindow(g_window);
    UnregisterClassW(kManagerClass, ThisModule());
}

/// Runs `task` on the manager's thread and waits for it; nothing when no manager runs.
void RunOnManager(Task task) {
    if (!g_window) return;
    SendMessageW(g_window, kRunTask, 0, reinterpret_cast<LPARAM>(new Task(std::move(task))));
}

/// Runs `task` on the manager's thread later.
void PostToManager(Task task) {
    if (!g_window) return;
    auto* held = new Task(std::move(task));
    if (!PostMessageW(g_window, kRunTask, 0, reinterpret_cast<LPARAM>(held))) delete held;
}

void Notify(std::int32_t connection, std::uint32_t code, std::uint32_t param1) {
    lcd::LmNotifyProc proc = nullptr;
    void* context = nullptr;
    std::lock_guard<std::mutex> delivering(g_delivering);
    {
        std::lock_guard<std::mutex> guard(Lock());
        auto found = State().connections.find(connection);
        if (found == State().connections.end()) return;
        proc = found->second.onNotify;
        context = found->second.notifyContext;
        LogLine("notify " + std::to_string(connection) + " code " + std::to_string(code));
    }
    if (proc) proc(connection, context, code, param1, 0);
}

std::vector<std::int32_t> ConnectionIds() {
    std::lock_guard<std::mutex> guard(Lock());
    std::vector<std::int32_t> ids;
    for (const auto& [id, connection] : State().connections) ids.push_back(id);
    return ids;
}

void EndThread(bool orderly) {
    if (!g_window) return;
    RunOnManager([orderly] {
        for (std::int32_t id : ConnectionIds()) {
            if (orderly) Notify(id, lcd::kLmNotifyDeviceRemoval, lcd::kLmDeviceColor);
            Notify(id, lcd::kLmNotifyCloseConnection, 0);
        }
        PostQuitMessage(0);
    });
    if (g_thread.joinable()) g_thread.join();
    g_window = nullptr;
    std::lock_guard<std::mutex> guard(Lock());
    State().connections.clear();
    State().devices.clear();
    State().buttons = 0;
    LogLine(orderly ? "manager stopped" : "manager killed");
}

}  // namespace

bool StartManager() {
    if (g_window) return true;
    HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    g_thread = std::thread(ManagerThread, ready);
    WaitForSingleObject(ready, INFINITE);
    CloseHandle(ready);
    std::lock_guard<std::mutex> guard(Lock());
    LogLine("manager started");
    return g_window != nullptr;
}

void StopManager() { EndThread(/*orderly=*/true); }
void KillManager() { EndThread(/*orderly=*/false); }
bool ManagerRunning() { return g_window != nullptr; }

void DeliverNotification(std::int32_t connection, std::uint32_t code, std::uint32_t param1) {
    RunOnManager([=] {
        if (connection >= 0) {
            Notify(connection, code, param1);
            return;
        }
        for (std::int32_t id : ConnectionIds()) Notify(id, code, param1);
    });
}

void DeliverButtons(std::uint32_t mask) {
    RunOnManager([mask] {
        std::vector<std::pair<std::int32_t, CDevice>> devices;
        {
            std::lock_guard<std::mutex> guard(Lock());
            State().buttons = mask;
            for (const auto& entry : State().devices) devices.push_back(entry);
            LogLine("buttons " + std::to_string(mask) + " to " + std::to_string(devices.size()) +
                    " device(s)");
        }
        std::lock_guard<std::mutex> delivering(g_delivering);
        for (const auto& [id, device] : devices) {
            if (device.onButtons) device.onButtons(id, mask, device.buttonsContext);
        }
    });
}

void DeliverFlood(std::uint32_t count, std::uint32_t code) {
    RunOnManager([count, code] {
        std::vector<std::pair<std::int32_t, CConnection>> connections;
        {
            std::lock_guard<std::mutex> guard(Lock());
            for (const auto& entry : State().connections) connections.push_back(entry);
            LogLine("flood of " + std::to_string(count) + " notifications code " +
                    std::to_string(code));
        }
        std::lock_guard<std::mutex> delivering(g_delivering);
        for (std::uint32_t i = 0; i < count; ++i) {
            for (const auto& [id, connection] : connections) {
                if (connection.onNotify) {
                    connection.onNotify(id, connection.notifyContext, code, i, 0);
                }
            }
        }
    });
}

void AnnounceDevice(std::int32_t connection) {
    PostToManager([connection] {
        bool present = false;
        {
            std::lock_guard<std::mutex> guard(Lock());
            present = State().devicePresent;
        }
        if (present) Notify(connection, lcd::kLmNotifyDeviceArrival, lcd::kLmDeviceColor);
    });
}

/// Waits for a delivery under way; the caller then knows no applet code of a removed
/// connection runs any more.
void WaitForDelivery() { std::lock_guard<std::mutex> delivering(g_delivering); }

}  // namespace qvx::simlcd
