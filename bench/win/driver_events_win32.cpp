// Cost of one command event from the simulated driver to a handler of the device's numeric
// command signal, by the window road (the driver queues the record and posts its message; the
// client fetches and dispatches it) and by the callback road (the driver calls the client's
// callback), against a bare post-and-dispatch round trip through a plain window in the same
// process. Also counts the allocations this program makes per event on each road.
//
//   bench_driver_events.exe [EVENTS]
#include "allocation_counter.h"
#include "client/oxapp/signal_interfaces.h"
#include "client/detail/smart_s80_device_win32.h"
#include "client/ovk/interface_ptr.h"
#include "sim/driver/control_api_win32.h"
#include "sim_driver_path.h"
#include "support/win32_handles.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <vector>

using qvx::bench::g_allocations;

namespace {

using Clock = std::chrono::steady_clock;

struct Result {
    double nsPerEvent;
    double allocationsPerEvent;
};

/// Runs `one` `count` times, five rounds; gives the best round's cost per event and the
/// allocations per event of that round.
Result Measure(unsigned count, const std::function<void()>& one) {
    Result best{1e300, 0};
    for (int round = 0; round < 5; ++round) {
        std::uint64_t allocations = g_allocations;
        auto start = Clock::now();
        for (unsigned i = 0; i < count; ++i) one();
        double ns = std::chrono::duration<double, std::nano>(Clock::now() - start).count();
        double perEvent = ns / count;
        if (perEvent < best.nsPerEvent) {
            best = {perEvent, static_cast<double>(g_allocations - allocations) / count};
        }
    }
    return best;
}

/// Handles this thread's messages until `done` holds.
void PumpUntil(const std::function<bool()>& done) {
    MSG message;
    while (!done()) {
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        } else {
            WaitMessage();
        }
    }
}

unsigned g_bareCount = 0;

LRESULT CALLBACK BareProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_APP) {
        ++g_bareCount;
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void Print(const char* road, const Result& result, double bare) {
    std::printf("%-24s %9.0f ns/event  %5.2f allocations/event  %7.3f x bare\n", road,
                result.nsPerEvent, result.allocationsPerEvent, result.nsPerEvent / bare);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const unsigned count =
        argc > 1 ? static_cast<unsigned>(std::wcstoul(argv[1], nullptr, 10)) : 10000u;
    ovklib::CModuleHandle driver(LoadLibraryW(qvx::bench::SimDriverPath().c_str()));
    qvx::simdriver::CSimDriverControl control;
    if (!driver || !control.Bind(driver.Get())) {
        std::fprintf(stderr, "the simulated driver library is not built\n");
        return 1;
    }
    control.SimDriverReset();
    control.SimDriverSetLogging(0);

    // The bare round trip: one posted message to a plain window, taken and dispatched.
    WNDCLASSW bareClass{};
    bareClass.lpfnWndProc = &BareProc;
    bareClass.hInstance = GetModuleHandleW(nullptr);
    bareClass.lpszClassName = L"bench_bare";
    RegisterClassW(&bareClass);
    HWND bare = CreateWindowW(L"bench_bare", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              bareClass.hInstance, nullptr);
    Result bareResult = Measure(count, [&] {
        unsigned before = g_bareCount;
        PostMessageW(bare, WM_APP, 0, 0);
        PumpUntil([&] { return g_bareCount != before; });
    });
    DestroyWindow(bare);

    unsigned handled = 0;
    auto* device = new oxapp::CSmartS80Device(48);
    ovk::interface_ptr<ovk::IObject> object(
        static_cast<ovk::IObject*>(static_cast<oxapp::detail::CSmartDeviceImpl*>(device)));
    auto commands = ovk::interface_cast<oxapp::IAppcmdSignals>(object);
    ovk::interface_ptr<ovk::ISlot> slot(commands->ConnectCommandEx(
        [&](std::uint32_t, bool, const void*, const void*) { ++handled; }));
    if (device->Connection() == 0 || control.SimDriverHasCallback() != 1) {
        std::fprintf(stderr, "the device did not connect to the simulated driver\n");
        return 1;
    }
    // Let the sync exchange of the new connection finish before measuring.
    PumpUntil([&] { return control.SimDriverCallCount("OxSyncGetFilter") >= 3; });

    OxKvwEvent event;
    std::memset(&event, 0, sizeof(event));
    event.type = 17;
    event.matrixCommand.id = 43;
    event.matrixCommand.pressed = 1;

    Result windowResult = Measure(count, [&] {
        unsigned before = handled;
        control.SimDriverSendEvent(&event);
        PumpUntil([&] { return handled != before; });
    });
    Result callbackResult = Measure(count, [&] { control.SimDriverCallEvent(&event); });

    std::printf("%u events per round, best of 5 rounds\n", count);
    Print("bare post and dispatch", bareResult, bareResult.nsPerEvent);
    Print("window road", windowResult, bareResult.nsPerEvent);
    Print("callback road", callbackResult, bareResult.nsPerEvent);
    std::printf("handled %u events, %llu allocations in all\n", handled,
                static_cast<unsigned long long>(g_allocations.load()));
    slot.reset();
    commands.reset();
    object.reset();
    return 0;
}
