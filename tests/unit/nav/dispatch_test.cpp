// The two command slots and the binding table.
#include "nav_fixture.h"

#include "nav/command_codes.h"
#include "nav/standard_views.h"

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>

namespace {
/// Makes this test program's next allocation fail.
bool g_failNextAllocation = false;
std::uint64_t g_allocations = 0;
}  // namespace

void* operator new(std::size_t size) {
    ++g_allocations;
    if (std::exchange(g_failNextAllocation, false)) throw std::bad_alloc();
    if (void* block = std::malloc(size ? size : 1)) return block;
    throw std::bad_alloc();
}
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
#pragma GCC diagnostic pop

namespace qvx::testing {
namespace {

TEST_F(NavTest, TableHoldsEveryDriverCodeAndNoOther) {
    std::vector<unsigned> codes;
    for (const auto& [code, handler] : g_qvxProE->Commands()) {
        codes.push_back(code);
        ASSERT_NE(handler, nullptr) << code;
        EXPECT_FALSE(handler->empty()) << code;
    }
    EXPECT_EQ(codes,
              (std::vector<unsigned>{2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,  38,  42,
                                     43, 44, 45, 46, 47, 48, 49, 76, 77, 78, 112, 113, 114}));
}

TEST_F(NavTest, UnknownCodesAndBadArraysAreDropped) {
    for (unsigned code : {0u, 1u, 13u, 37u, 50u, 111u, 115u, UINT_MAX}) Send(code, true);
    g_qvxProE->OnCommandEx(V3DCMD_FRONT, true, nullptr, nullptr);
    int ints[16];
    float floats[16];
    for (int i = 0; i < 16; ++i) {
        ints[i] = INT_MIN + i;
        floats[i] = -1e38f;
    }
    // The zoom driver waits for its release inside the message pump; a garbage factor makes a
    // garbage zoom, and nothing worse.
    PumpSoon([&] { g_qvxProE->OnCommandEx(V3DCMD_ZOOM_CURSOR_CENTRED_A, false, ints, floats); });
    g_qvxProE->OnCommandEx(V3DCMD_ZOOM_CURSOR_CENTRED_A, true, ints, floats);
    EXPECT_EQ(Host().macros.size(), 1u) << "only the front view's refit";
}

// A release that ends a zoom hold must not be lost to memory running out on its way to the
// handler: the hold would zoom on without end (and this test would not return).
TEST_F(NavTest, ReleaseEndsAHoldWhenMemoryRunsOutOnItsWay) {
    const std::uint64_t before = BoundaryCatchCount();
    m_loop.Schedule(m_loop.NowMs() + 600, [] {
        g_failNextAllocation = true;
        Send(V3DCMD_ZOOM_IN, false);
        g_failNextAllocation = false;
    });
    Send(V3DCMD_ZOOM_IN, true);
    EXPECT_EQ(BoundaryCatchCount(), before);
}

// Only the scope around host calls allocates on the way to a handler; the handler is reached
// as it is bound.
TEST_F(NavTest, ReleaseOfAZoomAllocatesOnlyTheScope) {
    const std::uint64_t before = g_allocations;
    Send(V3DCMD_ZOOM_IN, false);
    EXPECT_EQ(g_allocations - before, 1u);
}

TEST_F(NavTest, TextCommandRunsItsMacroOnPressOnly) {
    g_qvxProE->OnCommand(
        "ProCmd ~ Command `ProCmdEnvMdlDisp` `Wireframe`;~ Command `ProCmdViewRepaint`", false);
    EXPECT_TRUE(Host().macros.empty());
    g_qvxProE->OnCommand(
        "ProCmd ~ Command `ProCmdEnvMdlDisp` `Wireframe`;~ Command `ProCmdViewRepaint`", true);
    EXPECT_EQ(Host().displayStyle, "Wireframe");
    EXPECT_EQ(Host().repaintCount, 1);
}

TEST_F(NavTest, TextCommandsThatParseToNothingRunNothing) {
    std::string huge(100000, 'x');
    for (const char* id : {"", "Nonsense", "MenuItem 0", "Unknown 5 text"}) {
        g_qvxProE->OnCommand(id, true);
    }
    g_qvxProE->OnCommand(huge.c_str(), true);
    g_qvxProE->OnCommand(nullptr, true);
    EXPECT_TRUE(Host().macros.empty());
    // A bare kind word still runs: the host gets an empty macro and decides.
    g_qvxProE->OnCommand("ProCmd", true);
    EXPECT_EQ(Host().macros, std::vector<std::string>{""});
}

TEST_F(NavTest, SavedViewsComeBackAndAnEmptySlotChangesNothing) {
    Send(V3DCMD_TOP, true);
    auto top = Host().orientation;
    Send(V3DCMD_VIEW_2, true);
    ExpectMatrixNear(Host().orientation, top, 0);
    Send(V3DCMD_SAVE_VIEW_2, true);
    Send(V3DCMD_FRONT, true);
    Send(V3DCMD_VIEW_2, false);
    EXPECT_NE(Host().orientation, top);
    Send(V3DCMD_VIEW_2, true);
    ExpectMatrixNear(Host().orientation, top, 0);
}

TEST_F(NavTest, SavedViewsTellTheUserThroughTheDriver) {
    Send(V3DCMD_VIEW_3, true);
    Send(V3DCMD_SAVE_VIEW_2, true);
    Send(V3DCMD_SAVE_VIEW_2, false);
    auto notices = m_notices.Take();
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].text, L"STR_HOLD_TO_SAVE");
    EXPECT_EQ(notices[0].caption, "STR_HINT");
    EXPECT_EQ(notices[0].type, 2u);
    EXPECT_EQ(notices[1].text, L"Quorvex V2 saved");
    EXPECT_EQ(notices[1].type, 1u);
    Host().CloseModel();
    Send(V3DCMD_VIEW_1, true);
    Send(V3DCMD_SAVE_VIEW_1, true);
    EXPECT_TRUE(m_notices.Take().empty()) << "no model: nothing to say";
}

TEST_F(NavTest, StopEmptiesTheTableSoLateCommandsFindNothing) {
    g_qvxProE->Stop();
    Send(V3DCMD_TOP, true);
    EXPECT_TRUE(Host().macros.empty());
}

TEST_F(NavTest, TheDevicesSignalsReachBothCommandSlots) {
    CFakeDevice* device = m_devices.Last();
    ASSERT_NE(device, nullptr);
    const int ints[16] = {};
    const float floats[16] = {};
    device->OnCommandEx(1, V3DCMD_TOP, true, ints, floats);
    auto top = nav::StandardViewMatrix(nav::EStandardView::Top);
    ExpectMatrixNear(Host().orientation, {top[0], top[1], top[2], top[3]}, 0);
    device->OnCommand(1, "ProCmd ~ Command `ProCmdEnvMdlDisp` `Shading`", true);
    EXPECT_EQ(Host().displayStyle, "Shading");
}

}  // namespace
}  // namespace qvx::testing
