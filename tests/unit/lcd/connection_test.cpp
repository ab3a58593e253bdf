// The connection library: the library's wrappers and user count, the event ring, and the
// applet connection with its unique name, pages, foreground and notification queue.
#include "lcd/lm_lcd_library.h"
#include "lcd/ovk_lcd_connection.h"
#include "lcd_fakes.h"

#include <gtest/gtest.h>

#include <thread>

namespace qvx::lcd {
namespace {

using test::CFakeLibrary;

/// A loader of a table whose init and deinit count their calls.
class CTableLoader : public ILmLibraryLoader {
public:
    static inline int inits = 0, deinits = 0, loads = 0, unloads = 0;
    static std::uint32_t QVX_LCD_CALL Init() { return ++inits, 0; }
    static std::uint32_t QVX_LCD_CALL DeInit() { return ++deinits, 0; }
    static std::uint32_t QVX_LCD_CALL Close(std::int32_t device) { return device == 7 ? 0 : 87; }

    explicit CTableLoader(bool present) : m_present(present) {
        inits = deinits = loads = unloads = 0;
        m_table[kLmInit] = reinterpret_cast<void*>(&Init);
        m_table[kLmDeInit] = reinterpret_cast<void*>(&DeInit);
        m_table[kLmClose] = reinterpret_cast<void*>(&Close);
    }
    void* const* Load() override {
        ++loads;
        return m_present ? m_table : nullptr;
    }
    void Unload() override { ++unloads; }

private:
    bool m_present;
    void* m_table[kLmTableSize] = {};
};

TEST(LmLcdLibrary, FirstUserStartsItAndTheLastEndsIt) {
    CLmLcdLibrary library(std::make_unique<CTableLoader>(true));
    EXPECT_EQ(library.Close(7), kLmNotStarted);
    EXPECT_EQ(library.Init(), 0u);
    EXPECT_EQ(library.Init(), 0u);
    EXPECT_EQ(CTableLoader::inits, 1);
    EXPECT_EQ(library.WrapInit(), kLmAlreadyInitialized);
    EXPECT_EQ(library.Close(7), 0u);  // what the table's function says
    EXPECT_EQ(library.Close(8), 87u);
    EXPECT_EQ(library.DeInit(), 0u);
    EXPECT_EQ(CTableLoader::deinits, 0);
    EXPECT_EQ(library.DeInit(), 0u);
    EXPECT_EQ(CTableLoader::deinits, 1);
    EXPECT_EQ(CTableLoader::unloads, 1);
    EXPECT_EQ(library.DeInit(), 0u);  // one too many counts nothing
    EXPECT_EQ(library.Users(), 0);
    EXPECT_EQ(library.Close(7), kLmNotStarted);
}

TEST(LmLcdLibrary, MissingLibraryFailsTheFirstUserAndIsTriedAgainByTheNext) {
    CLmLcdLibrary library(std::make_unique<CTableLoader>(false));
    EXPECT_EQ(library.Init(), kLmLibraryUnavailable);
    EXPECT_EQ(library.Users(), 0);
    EXPECT_EQ(library.Init(), kLmLibraryUnavailable);
    EXPECT_EQ(CTableLoader::loads, 2);
    LmConnectContext context{};
    EXPECT_EQ(library.Connect(context), kLmNotStarted);
}

TEST(LcdEventRing, GrowsByHalfAtLeastEightAndKeepsOrderAcrossTheWrap) {
    CLcdEventRing ring;
    std::vector<std::size_t> capacities;
    std::uint32_t next = 0, expected = 0;
    LcdEvent event;
    for (int round = 0; round < 40; ++round) {
        // Take two out for every three in, so that the ring wraps before it grows.
        for (int i = 0; i < 3; ++i) {
            ASSERT_TRUE(ring.Push({kLcdEventNotification, next++, 0, 0, 0, 0}));
            if (capacities.empty() || capacities.back() != ring.Capacity()) {
                capacities.push_back(ring.Capacity());
            }
        }
        for (int i = 0; i < 2; ++i) {
            ASSERT_TRUE(ring.Pop(event));
            ASSERT_EQ(event.code, expected++);
        }
    }
    EXPECT_EQ(capacities, (std::vector<std::size_t>{8, 16, 24, 36, 54}));
    while (ring.Pop(event)) ASSERT_EQ(event.code, expected++);
    EXPECT_EQ(expected, next);
}

class LcdConnectionTest : public ::testing::Test {
protected:
    static constexpr wchar_t kProgram[] = L"C:\\host\\xtop.exe";
    LcdConnectionTest() { m_impl.SetLibrary(m_library); }
    std::uint32_t Connect(COvkLcdImpl& impl, const std::wstring& name = L"Applet") {
        return impl.Connect(name, false, kProgram);
    }
    CFakeLibrary m_library;
    COvkLcdImpl m_impl{m_library};
};

TEST_F(LcdConnectionTest, SecondAppletOfTheSameProgramIsNumbered) {
    ASSERT_EQ(Connect(m_impl), 0u);
    EXPECT_EQ(m_impl.ConnectedName(), L"Applet");
    EXPECT_EQ(m_library.last.capabilities, 2u);
    EXPECT_EQ(m_library.last.isPersistent, 1);
    EXPECT_EQ(Connect(m_impl), kConnectFailed);  // connected already

    CFakeLibrary other;
    COvkLcdImpl second(other);
    ASSERT_EQ(Connect(second), 0u);
    EXPECT_EQ(other.lastName, L"Applet (1)");
    m_impl.Disconnect();
    // The plain name is free again.
    COvkLcdImpl third(other);
    ASSERT_EQ(Connect(third), 0u);
    EXPECT_EQ(other.lastName, L"Applet");
}

TEST_F(LcdConnectionTest, FailedConnectGivesTheNameAndTheLibraryBack) {
    m_library.connectStatus = 1722;
    EXPECT_EQ(Connect(m_impl), kConnectFailed);
    EXPECT_EQ(m_library.Count("Init"), m_library.Count("DeInit"));
    m_library.connectStatus = 0;
    ASSERT_EQ(Connect(m_impl), 0u);
    EXPECT_EQ(m_impl.ConnectedName(), L"Applet");
}

TEST_F(LcdConnectionTest, PagesByTypeShowRemoveAndVisibility) {
    EXPECT_EQ(m_impl.CreatePage(2), nullptr);
    COvkLcdPage* mono = m_impl.CreatePage(kMonoPage);
    ASSERT_NE(mono, nullptr);
    EXPECT_EQ(mono->GetSize(), (LcdSize{160, 43}));
    ASSERT_EQ(Connect(m_impl), 0u);
    COvkLcdPage* first = m_impl.CreatePage(kColorPage);
    COvkLcdPage* second = m_impl.CreatePage(kColorPage);
    EXPECT_EQ(first->GetSize(), (LcdSize{320, 240}));
    EXPECT_TRUE(m_impl.ShowPage(second, false));
    EXPECT_TRUE(m_impl.IsPageVisible(second));
    EXPECT_FALSE(m_impl.IsPageVisible(first));
    EXPECT_FALSE(m_impl.ShowPage(mono, true));  // no mono panel on a colour connection
    EXPECT_TRUE(m_impl.RemovePage(second));
    EXPECT_TRUE(m_impl.IsPageVisible(first));  // the first page left takes its place
    EXPECT_FALSE(m_impl.RemovePage(second));
}

TEST_F(LcdConnectionTest, NotificationsAreQueuedOnTheLibrarysThreadAndHandledAtUpdate) {
    ASSERT_EQ(Connect(m_impl), 0u);
    COvkLcdPage* page = m_impl.CreatePage(kColorPage);
    m_impl.ShowPage(page, false);
    CLCDOutput* output = m_impl.Connection()->Output(kLmDeviceColor);
    std::thread library([&] { m_library.Notify(kLmNotifyDeviceArrival); });
    library.join();
    EXPECT_FALSE(output->IsOpened());
    EXPECT_EQ(m_impl.Connection()->QueuedEvents(), 1u);
    m_impl.Update();
    EXPECT_TRUE(output->IsOpened());
    EXPECT_EQ(m_library.Count("UpdateBitmap"), 1);
    m_impl.Update();  // the same picture is not sent twice
    EXPECT_EQ(m_library.Count("UpdateBitmap"), 1);
    m_library.Notify(kLmNotifyDeviceRemoval);
    m_impl.Update();
    EXPECT_FALSE(output->IsOpened());
    EXPECT_EQ(m_library.Count("Close"), 1);
}

TEST_F(LcdConnectionTest, AFloodFromTheLibrarysThreadIsKeptWholeWhileTheMainThreadIsBusy) {
    ASSERT_EQ(Connect(m_impl), 0u);
    constexpr std::uint32_t kFlood = 100000;
    std::thread library([&] {
        for (std::uint32_t i = 0; i < kFlood; ++i) m_library.Notify(99, i);
    });
    library.join();
    EXPECT_EQ(m_impl.Connection()->QueuedEvents(), kFlood);
    EXPECT_GE(m_impl.Connection()->QueueCapacity(), kFlood);
    m_impl.Update();
    EXPECT_EQ(m_impl.Connection()->QueuedEvents(), 0u);
}

TEST_F(LcdConnectionTest, ForegroundRequestsEveryOpenDeviceFirstAndIsRememberedForTheNext) {
    ASSERT_EQ(Connect(m_impl), 0u);
    m_impl.SetForeground(true);
    EXPECT_EQ(m_library.Count("RequestDevice"), 0);  // no device open yet
    m_library.Notify(kLmNotifyDeviceArrival);
    m_impl.Update();
    EXPECT_TRUE(m_library.foregroundOf[1]);  // the remembered flag reached the new device
    m_impl.SetForeground(false);
    EXPECT_FALSE(m_library.foregroundOf[1]);
    EXPECT_EQ(m_library.Count("RequestDevice"), 0);
    m_impl.SetForeground(true);
    EXPECT_EQ(m_library.Count("RequestDevice"), 1);
}

TEST(LcdConnectionSingleton, TheFirstNameWins) {
    COvkLcdConnection& first = COvkLcdConnection::Instance(L"A");
    COvkLcdConnection& second = COvkLcdConnection::Instance(L"B");
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(second.FriendlyName(), first.FriendlyName());
    EXPECT_NE(second.FriendlyName(), L"B");
}

}  // namespace
}  // namespace qvx::lcd
