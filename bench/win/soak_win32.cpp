// Soak: the plug-in in one host process for a working week's worth of churn. Five phases, each
// ROUNDS long: the driver stops and starts under the loaded plug-in (which must reconnect);
// the LCD manager stops and starts (the applet must connect again); the plug-in is loaded and
// unloaded; device commands arrive by the window road and by the callback road; last, the DLL
// is only mapped and freed as many times as it was loaded, its entries not called. The process's
// handle count, GDI and user objects and private bytes are printed at the start of each phase,
// every tenth round and at its end; what the host side itself keeps (its call log) is dropped
// before each sample, so the figures are the plug-in's and the stand-ins'.
//
//   bench_soak.exe [DRIVER_ROUNDS LCD_ROUNDS LOAD_ROUNDS COMMANDS [BARE_DLL]]
//
// Under Wine GetProcessHandleCount, GetGuiResources and the private bytes give 0. The lines
// then carry the lowest free handle (its change counted in handles), the lowest free
// thread-local storage slot, and what Linux tells of the Wine process and of Wine's server.
#include "lcd/widgets/lm_lcd_api.h"
#include "sim/driver/control_api_win32.h"
#include "plugin_in_process.h"
#include "sim/host/session.h"
#include "sim/lcd/control_api_win32.h"
#include "sim_driver_path.h"
#include "support/os.h"
#include "support/registry.h"
#include "support/win32_handles.h"
#include "toolkit/host_table.h"

#include <psapi.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace {

using qvx::bench::BesideExe;
using qvx::bench::CPlugin;

constexpr wchar_t kServerBinaryKey[] =
    L"SOFTWARE\\Classes\\CLSID\\{4B1D7C90-6E2A-41F3-9C55-2A7E10D3B846}\\ServerBinary";
constexpr std::uint32_t kRestartedDriver = 27704;
constexpr std::uint32_t kEventCommand = 10;

void Pump(unsigned ms) {
    ULONGLONG end = GetTickCount64() + ms;
    for (;;) {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
        ULONGLONG now = GetTickCount64();
        if (now >= end) break;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    }
}

/// Pumps until `done` or `limitMs` passed; whether it was done.
bool PumpUntil(const std::function<bool()>& done, unsigned limitMs) {
    ULONGLONG end = GetTickCount64() + limitMs;
    while (!done()) {
        if (GetTickCount64() >= end) return false;
        Pump(10);
    }
    return true;
}

struct CSample {
    DWORD handles = 0;
    /// The handle the process would be given next, the lowest free one: where the handle
    /// count reads 0, a handle kept open shows as this value rising.
    std::uintptr_t nextHandle = 0;
    DWORD gdi = 0;
    DWORD user = 0;
    SIZE_T privateBytes = 0;
    /// What Linux tells of the Wine process, where the Windows figures read 0: its data
    /// segment (private memory), its resident memory and its open file descriptors.
    std::uint64_t vmDataKiB = 0;
    std::uint64_t vmRssKiB = 0;
    std::uint64_t descriptors = 0;
    /// The same of Wine's server, which keeps the process's windows, classes, hooks and
    /// handles on its side.
    std::uint64_t serverDataKiB = 0;
    std::uint64_t serverRssKiB = 0;
    /// The simulated LCD library's call log, which grows with every call in this process.
    std::uint64_t lcdLogBytes = 0;
    /// The lowest free thread-local storage slot: a process has 1,088, and a module that takes
    /// one per load without giving it back ends the process when they run out.
    DWORD freeTlsSlot = 0;
};

/// Macros the host ran, counted before each sample drops its records.
std::size_t g_macros = 0;
/// The held LCD library, whose log is part of what this process holds.
qvx::simlcd::CSimLcdControl* g_lcd = nullptr;

/// A line of a /proc status file ("Name:", "VmData:"), what follows the key; "" if none.
std::string LinuxStatusField(const std::filesystem::path& folder, const char* key) {
    // Read as a stream: /proc files report a size of 0.
    std::ifstream status(folder / L"status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind(key, 0) == 0) {
            const auto start = line.find_first_not_of(" \t", std::strlen(key));
            return start == std::string::npos ? std::string() : line.substr(start);
        }
    }
    return {};
}

std::uint64_t LinuxStatusKiB(const std::filesystem::path& folder, const char* key) {
    return std::strtoull(LinuxStatusField(folder, key).c_str(), nullptr, 10);
}

/// This process's folder in Linux's /proc, through drive Z:. Wine's server opens the files of
/// its processes, so /proc/self is the server's own; the process is the one that Linux names
/// after this program (the first 15 characters of its file name).
std::filesystem::path LinuxProcessFolder() {
    const std::wstring exe = qvx::os::ExecutablePath();
    const std::string name =
        qvx::os::NarrowUtf8(exe.substr(exe.find_last_of(L'\\') + 1)).substr(0, 15);
    std::error_code ec;
    for (auto it = std::filesystem::directory_iterator(L"Z:\\proc", ec);
         !ec && it != std::filesystem::directory_iterator(); it.increment(ec)) {
        const std::wstring pid = it->path().filename().wstring();
        if (pid.empty() || pid.find_first_not_of(L"0123456789") != std::wstring::npos) continue;
        if (LinuxStatusField(it->path(), "Name:") == name) return it->path();
    }
    return {};
}

std::uint64_t LinuxDescriptors(const std::filesystem::path& folder) {
    std::error_code ec;
    std::uint64_t count = 0;
    for (auto it = std::filesystem::directory_iterator(folder / L"fd", ec);
         !ec && it != std::filesystem::directory_iterator(); it.increment(ec)) {
        ++count;
    }
    return count;
}

const std::filesystem::path kServerFolder = L"Z:\\proc\\self";
std::filesystem::path g_processFolder;

CSample Take() {
    // The host's own records grow with every call; they are not the plug-in's.
    sim::CSession& s = sim::CSession::Instance();
    s.calls.clear();
    s.calls.shrink_to_fit();
    g_macros += s.macros.size();
    s.macros.clear();
    s.macros.shrink_to_fit();
    s.panZoomFrames.clear();
    s.panZoomFrames.shrink_to_fit();
    s.messages.clear();
    s.messages.shrink_to_fit();
    CSample sample;
    HANDLE self = GetCurrentProcess();
    GetProcessHandleCount(self, &sample.handles);
    if (HANDLE probe = CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
        sample.nextHandle = reinterpret_cast<std::uintptr_t>(probe);
        CloseHandle(probe);
    }
    sample.gdi = GetGuiResources(self, GR_GDIOBJECTS);
    sample.user = GetGuiResources(self, GR_USEROBJECTS);
    PROCESS_MEMORY_COUNTERS_EX memory{};
    memory.cb = sizeof memory;
    if (GetProcessMemoryInfo(self, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                             sizeof memory)) {
        sample.privateBytes = memory.PrivateUsage;
    }
    if (!g_processFolder.empty()) {
        sample.vmDataKiB = LinuxStatusKiB(g_processFolder, "VmData:");
        sample.vmRssKiB = LinuxStatusKiB(g_processFolder, "VmRSS:");
        sample.descriptors = LinuxDescriptors(g_processFolder);
    }
    sample.serverDataKiB = LinuxStatusKiB(kServerFolder, "VmData:");
    sample.serverRssKiB = LinuxStatusKiB(kServerFolder, "VmRSS:");
    if (g_lcd) sample.lcdLogBytes = g_lcd->SimLcdReadLog(nullptr, 0);
    sample.freeTlsSlot = TlsAlloc();
    if (sample.freeTlsSlot != TLS_OUT_OF_INDEXES) TlsFree(sample.freeTlsSlot);
    return sample;
}

long long Delta(std::uint64_t now, std::uint64_t then) {
    return static_cast<long long>(now) - static_cast<long long>(then);
}

void Print(const char* phase, int round, const CSample& s, const CSample& first) {
    std::fprintf(
        stderr,
        "%-9s round %6d  handles %lu (%+lld)  next handle %#llx (%+lld)  gdi %lu (%+lld)  user %lu "
        "(%+lld)  "
        "private %llu KiB (%+lld)  linux: data %llu KiB (%+lld)  resident %llu KiB (%+lld)  "
        "fds %llu (%+lld)  server data %llu KiB (%+lld)  resident %llu KiB (%+lld)  "
        "simulated LCD log %llu B (%+lld)  free TLS slot %lu (%+lld)\n",
        phase, round, s.handles, Delta(s.handles, first.handles),
        static_cast<unsigned long long>(s.nextHandle), Delta(s.nextHandle, first.nextHandle) / 4,
        s.gdi, Delta(s.gdi, first.gdi), s.user, Delta(s.user, first.user),
        static_cast<unsigned long long>(s.privateBytes / 1024),
        Delta(s.privateBytes / 1024, first.privateBytes / 1024),
        static_cast<unsigned long long>(s.vmDataKiB), Delta(s.vmDataKiB, first.vmDataKiB),
        static_cast<unsigned long long>(s.vmRssKiB), Delta(s.vmRssKiB, first.vmRssKiB),
        static_cast<unsigned long long>(s.descriptors), Delta(s.descriptors, first.descriptors),
        static_cast<unsigned long long>(s.serverDataKiB),
        Delta(s.serverDataKiB, first.serverDataKiB),
        static_cast<unsigned long long>(s.serverRssKiB), Delta(s.serverRssKiB, first.serverRssKiB),
        static_cast<unsigned long long>(s.lcdLogBytes), Delta(s.lcdLogBytes, first.lcdLogBytes),
        s.freeTlsSlot, Delta(s.freeTlsSlot, first.freeTlsSlot));
}

/// Runs `round` `rounds` times, sampling at the start, every tenth round and at the end;
/// counts the rounds whose check failed.
int Phase(const char* name, int rounds, const std::function<bool(int)>& round) {
    Pump(200);
    CSample first = Take();
    Print(name, 0, first, first);
    int failed = 0;
    for (int i = 1; i <= rounds; ++i) {
        if (!round(i)) ++failed;
        if (i % 10 == 0 || i == rounds) Print(name, i, Take(), first);
    }
    std::fprintf(stderr, "%-9s %d rounds, %d failed their check\n", name, rounds, failed);
    return failed;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    int driverRounds = argc > 1 ? _wtoi(argv[1]) : 1000;
    int lcdRounds = argc > 2 ? _wtoi(argv[2]) : 1000;
    int loadRounds = argc > 3 ? _wtoi(argv[3]) : 1000;
    int commands = argc > 4 ? _wtoi(argv[4]) : 100000;

    ovklib::CModuleHandle driverModule(LoadLibraryW(qvx::bench::SimDriverPath().c_str()));
    qvx::simdriver::CSimDriverControl driver;
    ovklib::CModuleHandle lcdModule(LoadLibraryW(BesideExe(L"simlcd.dll").c_str()));
    qvx::simlcd::CSimLcdControl lcd;
    if (!driverModule || !driver.Bind(driverModule.Get()) || !lcdModule ||
        !lcd.Bind(lcdModule.Get())) {
        std::fprintf(stderr, "cannot load the simulated driver or LCD library\n");
        return 1;
    }
    driver.SimDriverSetLogging(0);
    g_lcd = &lcd;
    qvx::os::WriteRegistryString(qvx::os::RegistryRoot::LocalMachine, kServerBinaryKey, L"",
                                 BesideExe(L"simlcd.dll"));
    // The plug-in's diagnostics are not what is measured; the figures go to standard error.
    std::freopen("NUL", "w", stdout);
    sim::CSession::Instance().Reset();
    sim::CSession::Instance().OpenModel("block");

    g_processFolder = LinuxProcessFolder();
    std::fprintf(stderr, "linux figures of %ls and of Wine's server\n",
                 g_processFolder.empty() ? L"(process not found)" : g_processFolder.c_str());

    int failed = 0;
    CPlugin plugin;
    if (!plugin.Load()) {
        std::fprintf(stderr, "the plug-in did not load\n");
        return 1;
    }
    auto connected = [&] { return driver.SimDriverConnectionCount() > 0; };
    if (!PumpUntil(connected, 2000)) std::fprintf(stderr, "no connection at the start\n");

    failed += Phase("driver", driverRounds, [&](int) {
        driver.SimDriverStop();
        Pump(5);
        driver.SimDriverStart();
        driver.SimDriverPostCommandEvent(kRestartedDriver);
        return PumpUntil(connected, 2000);
    });

    failed += Phase("lcd", lcdRounds, [&](int) {
        lcd.SimLcdStartManager();
        bool up = PumpUntil([&] { return lcd.SimLcdConnectionCount() > 0; }, 5000);
        lcd.SimLcdStopManager();
        bool down = PumpUntil([&] { return lcd.SimLcdConnectionCount() == 0; }, 2000);
        return up && down;
    });

    failed += Phase("load", loadRounds, [&](int) {
        // The stand-in driver's records of each start's configuration writes are its own.
        driver.SimDriverClearLog();
        plugin.Unload();
        bool ok = plugin.Load();
        return PumpUntil(connected, 2000) && ok;
    });

    OxKvwEvent record{};
    record.type = kEventCommand;
    record.command.pressed = 1;
    std::strcpy(record.command.command, "ProCmd ~ Command `ProCmdViewRepaint`;");
    int rounds = commands / 2;
    failed += Phase("commands", rounds / 100, [&](int) {
        // A hundred rounds of one command by each road between two samples.
        bool ok = true;
        for (int i = 0; i < 100; ++i) {
            ok = driver.SimDriverSendEvent(&record) > 0 && ok;
            Pump(0);
            ok = driver.SimDriverCallEvent(&record) == 0 && ok;
        }
        return ok;
    });
    std::fprintf(stderr, "commands  %d by the window road, %d by the callback road, %zu macros\n",
                 rounds / 100 * 100, rounds / 100 * 100, g_macros);

    plugin.Unload();
    // The DLL mapped and freed without its entries being called: what the system's loader and
    // the DLL's own static start and end cost, to set the load phase's figures against.
    // Another DLL may stand in for the plug-in here, to tell its share from the loader's.
    const std::wstring bare = argc > 5 ? argv[5] : BesideExe(L"qvxproengineer.dll");
    failed += Phase("bare-load", loadRounds, [&](int) {
        ovklib::CModuleHandle module(LoadLibraryW(bare.c_str()));
        return static_cast<bool>(module);
    });
    lcd.SimLcdReset();
    driver.SimDriverReset();
    std::fprintf(stderr, "%s\n", failed ? "FAILED" : "PASSED");
    return failed ? 1 : 0;
}
