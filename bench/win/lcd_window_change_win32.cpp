// Time from a change of the host's window to the new frame at the LCD manager: the host's
// notification, the plug-in's request posted to its LCD window, the read of the document,
// the page's refresh, its drawing and the frame the simulated manager takes in (and writes
// as a PNG). Against it, in the same run, the same change of window with the manager
// stopped, where the plug-in's request finds no page and nothing is drawn. The real plug-in
// DLL, the simulated host, driver and LCD manager all run in this process.
//
//   bench_lcd_window_change.exe
#include "plugin_in_process.h"
#include "sim/driver/control_api_win32.h"
#include "sim/lcd/control_api_win32.h"
#include "sim_driver_path.h"
#include "support/registry.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr wchar_t kServerBinaryKey[] =
    L"SOFTWARE\\Classes\\CLSID\\{4B1D7C90-6E2A-41F3-9C55-2A7E10D3B846}\\ServerBinary";
constexpr int kChanges = 200;

void Pump() {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Microseconds of each change of window, until `done` holds after the messages it caused.
template <typename Done>
std::vector<double> Changes(Done done) {
    sim::CSession& host = sim::CSession::Instance();
    std::vector<double> times;
    for (int i = 0; i < kChanges; ++i) {
        auto start = Clock::now();
        // "right.prt" is current at first, so the first change goes to the other one.
        host.ActivateWindow((i & 1) ? "right.prt" : "left.prt");
        // A change that brings no frame within 2 s counts as lost, not as a hang.
        do {
            Pump();
        } while (!done() && Clock::now() - start < std::chrono::seconds(2));
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }
    return times;
}

}  // namespace

int wmain() {
    ovklib::CModuleHandle driverModule(LoadLibraryW(qvx::bench::SimDriverPath().c_str()));
    qvx::simdriver::CSimDriverControl driver;
    std::wstring lcdPath = qvx::bench::BesideExe(L"simlcd.dll");
    ovklib::CModuleHandle lcdModule(LoadLibraryW(lcdPath.c_str()));
    qvx::simlcd::CSimLcdControl lcd;
    if (!driverModule || !driver.Bind(driverModule.Get()) || !lcdModule ||
        !lcd.Bind(lcdModule.Get())) {
        std::fprintf(stderr, "cannot load the simulated driver or LCD library\n");
        return 1;
    }
    driver.SimDriverSetLogging(0);
    std::freopen("NUL", "w", stdout);  // the plug-in's diagnostics are not what is measured
    std::filesystem::path frames = std::filesystem::temp_directory_path() / "qvx_bench_lcd";
    std::filesystem::create_directories(frames);
    lcd.SimLcdReset();
    lcd.SimLcdSetFrameFolder(frames.wstring().c_str());
    qvx::os::WriteRegistryString(qvx::os::RegistryRoot::LocalMachine, kServerBinaryKey, L"",
                                 lcdPath);
    lcd.SimLcdStartManager();

    sim::CSession& host = sim::CSession::Instance();
    host.Reset();
    qvx::bench::CPlugin plugin;
    if (!plugin.Load()) {
        std::fprintf(stderr, "the plug-in did not load\n");
        return 1;
    }
    Pump();
    host.OpenModel("left.prt", sim::kModelPart);
    host.OpenModel("right.prt", sim::kModelPart);
    Pump();
    std::uint32_t before = lcd.SimLcdFrameCount();
    std::vector<double> withPanel = Changes([&] {
        std::uint32_t now = lcd.SimLcdFrameCount();
        bool changed = now != before;
        before = now;
        return changed;
    });

    lcd.SimLcdStopManager();
    Pump();
    std::vector<double> withoutPanel = Changes([] { return true; });
    plugin.Unload();
    lcd.SimLcdReset();
    qvx::os::WriteRegistryString(qvx::os::RegistryRoot::LocalMachine, kServerBinaryKey, L"",
                                 std::nullopt);
    std::filesystem::remove_all(frames);

    double full = Median(withPanel), bare = Median(withoutPanel);
    std::fprintf(stderr,
                 "window change to new frame at the manager: median %8.1f us (best %8.1f)\n"
                 "same window change, manager stopped:       median %8.1f us (best %8.1f)\n"
                 "ratio %.1f over %d changes each\n",
                 full, *std::min_element(withPanel.begin(), withPanel.end()), bare,
                 *std::min_element(withoutPanel.begin(), withoutPanel.end()), full / bare,
                 kChanges);
    return 0;
}
