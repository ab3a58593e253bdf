// The LCD surfaces and the applet under Wine: GDI really draws into the frame, a full page
// costs a measured multiple of a bare copy of the same size, and the applet's handles and
// GDI objects stay flat while the simulated manager stops and starts 200 times.
#include "lcd/lcd_applet.h"
#include "lcd/lcd_functor.h"
#include "lcd/widgets/lcd_bitmap.h"
#include "lcd/widgets/lcd_output.h"
#include "lcd/widgets/lcd_progress_bar.h"
#include "lcd/widgets/ovk_lcd_page.h"
#include "sim/lcd/control_api_win32.h"
#include "support/registry.h"
#include "support/win32_handles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <cstdio>

namespace qvx::lcd {
namespace {

/// A library that takes every frame and does nothing else.
class CFrameSink : public ILcdLibrary {
public:
    std::uint32_t Init() override { return 0; }
    std::uint32_t DeInit() override { return 0; }
    std::uint32_t Connect(LmConnectContext&) override { return 0; }
    std::uint32_t Disconnect(std::int32_t) override { return 0; }
    std::uint32_t Open(LmOpenContext& c) override { return OpenByType(c); }
    std::uint32_t OpenByType(LmOpenContext& c) override {
        c.device = 1;
        return 0;
    }
    std::uint32_t Close(std::int32_t) override { return 0; }
    std::uint32_t UpdateBitmap(std::int32_t, const LmBitmapHeader& bitmap, std::uint32_t) override {
        last = &bitmap;
        ++frames;
        return 0;
    }
    std::uint32_t SetAsForeground(std::int32_t, bool) override { return 0; }
    std::uint32_t RequestDevice(std::int32_t) override { return 0; }
    const LmBitmapHeader* last = nullptr;
    int frames = 0;
};

/// A page like the information page: a title, twelve labelled lines and a bar.
std::vector<CLCDText*> FillPage(COvkLcdPage& page) {
    std::vector<CLCDText*> texts;
    page.SetBackgroundColor(0x3A2A1E);
    for (int i = 0; i < 13; ++i) {
        CLCDText* text = page.CreateText(i == 0 ? 16 : 11, i == 0 ? 250 : 140, 500, 1);
        text->SetOrigin(i == 0 ? 60 : (i % 2 ? 16 : 160), i == 0 ? 9 : 50 + (i / 2) * 20);
        text->SetForegroundColor(i % 2 ? 0xF09F1F : 0xFFFFFF);
        text->SetText(L"Line " + std::to_wstring(i) + L": part_0001.prt");
        texts.push_back(text);
    }
    CLCDProgressBar* bar = page.AddProgressBar(300, 12);
    bar->SetOrigin(10, 220);
    bar->SetPos(40);
    return texts;
}

TEST(LcdGdi, ColourPageDrawsItsTextAndBackgroundIntoTheFrame) {
    CFrameSink sink;
    CLCDOutput output(sink, kLmDeviceColor, CreateColorGfx());
    COvkColorLcdPageImpl page;
    FillPage(page);
    ASSERT_TRUE(output.Open(1, nullptr, nullptr));
    output.ShowPage(&page, true);
    ASSERT_EQ(sink.frames, 1);
    ASSERT_EQ(sink.last->format, kLmBitmapColor);
    const auto& frame = reinterpret_cast<const LmBitmapColor&>(*sink.last);
    auto pixel = [&](int x, int y) {
        const std::uint8_t* p = frame.pixels + (y * kColorWidth + x) * 4;
        return static_cast<std::uint32_t>(p[2] | p[1] << 8 | p[0] << 16);
    };
    EXPECT_EQ(pixel(2, 2), 0x3A2A1Eu);  // the page's background, as a colour value
    int lit = 0;
    for (int y = 9; y < 30; ++y) {
        for (int x = 60; x < 310; ++x) lit += pixel(x, y) == 0xFFFFFF;
    }
    EXPECT_GT(lit, 50) << "the title's white glyphs";
}

TEST(LcdGdi, MonoPageLightsThePixelsOfItsText) {
    CFrameSink sink;
    CLCDOutput output(sink, kLmDeviceMono, CreateMonoGfx());
    COvkMonoLcdPageImpl page;
    page.CreateText(8, 150, 700, 1)->SetText(L"MMMM MMMM");
    ASSERT_TRUE(output.Open(1, nullptr, nullptr));
    output.ShowPage(&page, true);
    ASSERT_EQ(sink.frames, 1);
    ASSERT_EQ(sink.last->format, kLmBitmapMono);
    const auto& frame = reinterpret_cast<const LmBitmapMono&>(*sink.last);
    int lit = 0;
    for (std::uint8_t pixel : frame.pixels) lit += pixel >= 128;
    EXPECT_GT(lit, 30);
    EXPECT_LT(lit, kMonoWidth * kMonoHeight / 4);
}

TEST(LcdGdi, BitmapWithAlphaBlendsOverThePageAndWithoutItCovers) {
    // A 2 x 1 picture: a white pixel at half alpha (premultiplied) and an opaque red one.
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = 2;
    info.bmiHeader.biHeight = -1;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP picture = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    ASSERT_NE(picture, nullptr);
    const std::uint8_t pixels[8] = {0x80, 0x80, 0x80, 0x80, 0x00, 0x00, 0xFF, 0xFF};
    std::memcpy(bits, pixels, sizeof(pixels));

    for (bool alpha : {true, false}) {
        CFrameSink sink;
        CLCDOutput output(sink, kLmDeviceColor, CreateColorGfx());
        COvkColorLcdPageImpl page;
        page.SetBackgroundColor(0x404040);
        CLCDBitmap* bitmap = page.CreateBitmap(2, 1);
        bitmap->SetBitmap(picture);
        bitmap->SetAlpha(alpha);
        bitmap->SetOrigin(10, 10);
        ASSERT_TRUE(output.Open(1, nullptr, nullptr));
        output.ShowPage(&page, true);
        const auto& frame = reinterpret_cast<const LmBitmapColor&>(*sink.last);
        const std::uint8_t* at = frame.pixels + (10 * kColorWidth + 10) * 4;
        // Half white over grey 0x40 blends to 0xA0; copied it stays 0x80.
        EXPECT_NEAR(at[0], alpha ? 0xA0 : 0x80, 2) << "alpha " << alpha;
        EXPECT_EQ(at[6], 0xFF) << "alpha " << alpha;  // the red pixel's red
    }
    DeleteObject(picture);
}

TEST(LcdGdi, FullPageRenderAndSendAgainstABareCopyOfTheSameSize) {
    CFrameSink sink;
    CLCDOutput output(sink, kLmDeviceColor, CreateColorGfx());
    COvkColorLcdPageImpl page;
    std::vector<CLCDText*> texts = FillPage(page);
    ASSERT_TRUE(output.Open(1, nullptr, nullptr));
    output.ShowPage(&page, true);

    constexpr int kRounds = 200;
    using Clock = std::chrono::steady_clock;
    auto start = Clock::now();
    for (int i = 0; i < kRounds; ++i) {
        texts[1]->SetText(L"round " + std::to_wstring(i));  // one text changes, as in use
        output.Draw();
    }
    double rendered = std::chrono::duration<double, std::micro>(Clock::now() - start).count();
    ASSERT_EQ(sink.frames, kRounds + 1);

    // The bare operation: one 320 x 240 x 32 copy between two DIB sections.
    HDC screen = GetDC(nullptr);
    HDC from = CreateCompatibleDC(screen), to = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = kColorWidth;
    info.bmiHeader.biHeight = -kColorHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP a = CreateDIBSection(from, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HBITMAP b = CreateDIBSection(to, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ oldFrom = SelectObject(from, a), oldTo = SelectObject(to, b);
    start = Clock::now();
    for (int i = 0; i < kRounds; ++i) {
        BitBlt(to, 0, 0, kColorWidth, kColorHeight, from, 0, 0, SRCCOPY);
        GdiFlush();
    }
    double blit = std::chrono::duration<double, std::micro>(Clock::now() - start).count();
    SelectObject(from, oldFrom);
    SelectObject(to, oldTo);
    DeleteObject(a);
    DeleteObject(b);
    DeleteDC(from);
    DeleteDC(to);
    ReleaseDC(nullptr, screen);
    std::printf("[ figure ] full page render and send %.1f us, bare BitBlt %.1f us, ratio %.1f\n",
                rendered / kRounds, blit / kRounds, rendered / blit);
}

/// A factory with a configure callback that does nothing and no document data, so the page
/// shows that no document is open.
class CNoDocumentFactory : public _Qvx::IFactory {
    struct CConfigureCallBack : _Qvx::IOvkLcdFunctor, _Qvx::IInstance {
        void operator()(std::uint32_t) override {}
    };

public:
    _Qvx::IInstance* CreateInstance(const std::wstring& id, std::uintptr_t) override {
        return id == _Qvx::kCidNotifyCallback ? new CConfigureCallBack() : nullptr;
    }
};

class LcdAppletSoak : public ::testing::Test {
protected:
    static constexpr wchar_t kServerBinaryKey[] =
        L"SOFTWARE\\Classes\\CLSID\\{4B1D7C90-6E2A-41F3-9C55-2A7E10D3B846}\\ServerBinary";
    void SetUp() override {
        m_library.Reset(LoadLibraryW(QVX_SIM_LCD_DLL));
        ASSERT_TRUE(m_library && m_control.Bind(m_library.Get()));
        m_control.SimLcdReset();
        os::WriteRegistryString(os::RegistryRoot::LocalMachine, kServerBinaryKey, L"",
                                std::wstring(QVX_SIM_LCD_DLL));
    }
    void TearDown() override {
        if (m_library) m_control.SimLcdReset();
        os::WriteRegistryString(os::RegistryRoot::LocalMachine, kServerBinaryKey, L"",
                                std::nullopt);
    }
    static void Pump() {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
    }
    static DWORD Handles() {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    }
    static DWORD GdiObjects() { return GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); }
    /// The highest GDI handle slot that 4,000 fresh objects take: freed slots are used first,
    /// so it climbs with every object that leaked, where the count above reads 0.
    static unsigned GdiHighWater() {
        std::vector<HGDIOBJ> objects;
        unsigned highest = 0;
        for (int i = 0; i < 4000; ++i) {
            objects.push_back(CreateSolidBrush(0));
            highest = std::max(
                highest,
                static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(objects.back()) & 0xFFFF));
        }
        for (HGDIOBJ object : objects) DeleteObject(object);
        return highest;
    }
    /// The value of a fresh kernel handle: the system gives the lowest free slot, so it
    /// climbs when handles leak, even where the counts above read 0 (Wine gives 0 for both).
    static std::uintptr_t NextHandleSlot() {
        ovklib::CKernelHandle probe(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        return reinterpret_cast<std::uintptr_t>(probe.Get());
    }

    ovklib::CModuleHandle m_library;
    simlcd::CSimLcdControl m_control;
};

TEST_F(LcdAppletSoak, HandlesAndGdiObjectsStayFlatOver200ManagerRestarts) {
    m_control.SimLcdStartManager();
    auto applet = StartLcdApplet(std::make_shared<CNoDocumentFactory>(), L"Soak applet");
    ASSERT_TRUE(applet);
    HWND window = reinterpret_cast<HWND>(applet->Window());
    Pump();
    ASSERT_TRUE(applet->IsConnected());
    ASSERT_NE(applet->Page(), nullptr);

    auto cycle = [&] {
        m_control.SimLcdStopManager();
        Pump();
        ASSERT_FALSE(applet->IsConnected());
        m_control.SimLcdStartManager();
        // The retry timer's tick, without its 3 s.
        SendMessageW(window, WM_TIMER, 40961, 0);
        Pump();
        ASSERT_TRUE(applet->IsConnected());
    };
    for (int i = 0; i < 5; ++i) cycle();  // warm up what is made once
    DWORD handles = Handles(), gdi = GdiObjects();
    std::uintptr_t slot = NextHandleSlot();
    unsigned gdiSlot = GdiHighWater();
    std::uint32_t frames = m_control.SimLcdFrameCount();
    for (int i = 0; i < 200; ++i) {
        cycle();
        if (HasFatalFailure()) return;
    }
    EXPECT_EQ(m_control.SimLcdFrameCount(), frames + 200);  // one frame per new page
    EXPECT_LE(Handles(), handles + 2);
    EXPECT_LE(GdiObjects(), gdi + 2);
    EXPECT_LE(NextHandleSlot(), slot + 2 * sizeof(HANDLE));
    EXPECT_LE(GdiHighWater(), gdiSlot + 8);
    std::printf(
        "[ figure ] handles %lu -> %lu, GDI objects %lu -> %lu, next handle slot %#llx -> "
        "%#llx, GDI high water %u -> %u over 200 restarts\n",
        handles, Handles(), gdi, GdiObjects(), static_cast<unsigned long long>(slot),
        static_cast<unsigned long long>(NextHandleSlot()), gdiSlot, GdiHighWater());
    applet.reset();
    EXPECT_EQ(m_control.SimLcdConnectionCount(), 0u);
}

}  // namespace
}  // namespace qvx::lcd
