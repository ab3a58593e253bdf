// Frame intervals of the animated zoom in real time: a tap of code 48 (a 400 ms eased step)
// and a 2 s hold of code 49, through the plug-in's command table in the simulated host, once
// on a quiet host and once with a second thread of the host burning a processor.
// Prints the frame count, median and worst interval of each, and the cost of computing and
// setting one frame; with a folder argument it also writes a plot of scale against time.
//
//   bench_zoom_frames.exe [PLOT_FOLDER]
#include "core/entry_points.h"
#include "core/qvxproe.h"
#include "nav/command_codes.h"
#include "sim/host/plot.h"
#include "sim/host/session.h"
#include "sim_driver_path.h"
#include "support/os.h"
#include "support/win32_handles.h"
#include "support/windows_api.h"
#include "toolkit/host_table.h"
#include "toolkit/pro_toolkit.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <stop_token>
#include <thread>

namespace {

std::unique_ptr<std::function<void()>> g_release;

void CALLBACK Release(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    if (auto release = std::move(g_release)) (*release)();
}

void Send(unsigned code, bool pressed) {
    std::array<int, 16> ints{};
    std::array<float, 16> floats{};
    g_qvxProE->OnCommandEx(code, pressed, ints.data(), floats.data());
}

struct Run {
    std::vector<sim::CSession::CPanZoomFrame> frames;
    double startScale;
    std::uint64_t startMs;
};

Run Press(unsigned code, unsigned holdMs) {
    sim::CSession& host = sim::CSession::Instance();
    host.Refit();
    host.panZoomFrames.clear();
    Run run{{}, host.panZoom[0][0], qvx::os::MonotonicMs()};
    g_release = std::make_unique<std::function<void()>>([code] { Send(code, false); });
    SetTimer(nullptr, 0, holdMs, &Release);
    Send(code, true);
    run.frames = host.panZoomFrames;
    return run;
}

void Report(const char* name, const Run& run) {
    std::vector<double> intervals;
    for (std::size_t i = 1; i < run.frames.size(); ++i) {
        intervals.push_back(static_cast<double>(run.frames[i].ms - run.frames[i - 1].ms));
    }
    std::sort(intervals.begin(), intervals.end());
    double median = intervals.empty() ? 0 : intervals[intervals.size() / 2];
    double worst = intervals.empty() ? 0 : intervals.back();
    std::printf("%-16s frames %4zu  median interval %5.1f ms  worst %5.1f ms  end scale x%.4f\n",
                name, run.frames.size(), median, worst,
                run.frames.empty() ? 1.0 : run.frames.back().matrix[0][0] / run.startScale);
}

sim::CPlotSeries Series(const char* name, const char* colour, const Run& run) {
    sim::CPlotSeries s{name, colour, {}};
    for (const auto& f : run.frames) {
        s.points.push_back(
            {static_cast<double>(f.ms - run.startMs), f.matrix[0][0] / run.startScale});
    }
    return s;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    sim::CSession& host = sim::CSession::Instance();
    host.Reset();
    host.OpenModel("bracket.prt");
    // The plug-in builds its command table only once a driver has taken its connection.
    ovklib::CModuleHandle driver(LoadLibraryW(qvx::bench::SimDriverPath().c_str()));
    user_initialize_plus(host.Args());
    if (!g_qvxProE || !driver) {
        std::fprintf(stderr, "the plug-in did not start against the simulated driver\n");
        return 1;
    }

    Run tap = Press(V3DCMD_ZOOM_IN, 20);
    Run hold = Press(V3DCMD_ZOOM_OUT, 2000);
    Report("tap of code 48", tap);
    Report("hold of code 49", hold);
    {
        // A busy host: another thread of the host's process keeps a processor at work while
        // the zoom runs on the main thread.
        std::jthread busy([](std::stop_token stop) {
            volatile std::uint64_t spin = 0;
            while (!stop.stop_requested()) spin = spin + 1;
        });
        Report("tap, busy host", Press(V3DCMD_ZOOM_IN, 20));
        Report("hold, busy host", Press(V3DCMD_ZOOM_OUT, 2000));
    }

    // The cost of one frame beside the 16 ms wait: compute and set 10,000 matrices.
    auto start = std::chrono::steady_clock::now();
    ProMatrix m = {{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 2, 0}, {1, 1, 0, 1}};
    for (int i = 0; i < 10000; ++i) {
        m[0][0] = m[1][1] = 1.0 + i * 1e-6;
        ProWindowPanZoomMatrixSet(1, m);
    }
    double us = std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
                    .count() /
                10000;
    std::printf("one frame set through the host table: %.2f us\n", us);

    if (argc > 1) {
        std::wstring path = std::wstring(argv[1]) + L"\\zoom-scale.svg";
        std::ofstream(path.c_str()) << sim::RenderPlot(
            {Series("tap of code 48: one eased step to 5x", "#c03", tap),
             Series("hold of code 49: x(2/3) every 300 ms after 240 ms", "#036", hold)},
            "Animated zoom: scale against time", "milliseconds after the press",
            "scale / scale at press");
    }
    user_terminate_plus();
    return 0;
}
