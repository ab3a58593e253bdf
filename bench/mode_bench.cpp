// A change of the host's mode to one already published: CQvxProE::OnProMode against the bare
// driver call it ends in (the device's activation of an action set), with the allocations per
// call of each. The plug-in runs natively over the simulated host and a fake device.
#include "allocation_counter.h"
#include "client/oxapp/device_interfaces.h"
#include "core/entry_points.h"
#include "core/qvxproe.h"
#include "sim/host/session.h"
#include "tests/unit/common/fake_device.h"
#include "tests/unit/common/fake_main_loop.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>

using qvx::bench::g_allocations;

namespace {

/// The plug-in loaded with a fake driver, with part and drawing mode published once.
struct CLoadedPlugin {
    qvx::testing::CFakeMainLoop loop;
    qvx::testing::CFakeDeviceFactory devices;
    CLoadedPlugin() {
        sim::CSession::Instance().Reset();
        user_initialize_plus(sim::CSession::Instance().Args());
        g_qvxProE->OnProMode(1);
        g_qvxProE->OnProMode(6);
    }
    ~CLoadedPlugin() { user_terminate_plus(); }
};

void Report(benchmark::State& state, std::uint64_t allocationsBefore) {
    state.counters["allocs/call"] = static_cast<double>(g_allocations - allocationsBefore) /
                                    static_cast<double>(state.iterations());
}

void BM_KnownModeChange(benchmark::State& state) {
    CLoadedPlugin plugin;
    std::uint64_t before = g_allocations;
    int i = 0;
    for (auto _ : state) g_qvxProE->OnProMode((++i & 1) ? 1 : 6);
    Report(state, before);
}
BENCHMARK(BM_KnownModeChange);

void BM_BareActivateActionSet(benchmark::State& state) {
    CLoadedPlugin plugin;
    auto appcfg = ovk::interface_cast<oxapp::IAppcfg>(g_qvxProE->Device());
    std::uint64_t before = g_allocations;
    int i = 0;
    for (auto _ : state)
        appcfg->ActivateActionSet((++i & 1) ? "PRO_MODE_PART" : "PRO_MODE_DRAWING");
    Report(state, before);
}
BENCHMARK(BM_BareActivateActionSet);

}  // namespace

BENCHMARK_MAIN();
