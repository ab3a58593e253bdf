#include "nav_fixture.h"
#include "support/windows_api.h"

#include <memory>

namespace qvx::testing {
namespace {

std::unique_ptr<std::function<void()>> g_event;

void CALLBACK RunEvent(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    if (auto event = std::move(g_event)) (*event)();
}

}  // namespace

void NavTest::PumpSoon(std::function<void()> event) {
    g_event = std::make_unique<std::function<void()>>(std::move(event));
    SetTimer(nullptr, 0, 20, &RunEvent);
}

}  // namespace qvx::testing
