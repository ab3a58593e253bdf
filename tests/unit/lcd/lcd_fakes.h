// Stand-ins for the LCD tests: a client library in memory that records what it was asked, a
// surface that counts measurements, and a platform whose window, timers and posts are plain
// records.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/widgets/lcd_gfx.h"
#include "lcd/widgets/lcd_library.h"

#include <map>
#include <string>
#include <vector>

namespace qvx::lcd::test {

class CFakeLibrary : public ILcdLibrary {
public:
    std::uint32_t Init() override { return Call("Init", initStatus); }
    std::uint32_t DeInit() override { return Call("DeInit", 0); }
    std::uint32_t Connect(LmConnectContext& context) override {
        if (connectStatus == 0) {
            context.connection = nextConnection++;
            last = context;
            lastName = context.friendlyName;
        }
        return Call("Connect", connectStatus);
    }
    std::uint32_t Disconnect(std::int32_t) override { return Call("Disconnect", 0); }
    std::uint32_t Open(LmOpenContext& context) override { return OpenByType(context); }
    std::uint32_t OpenByType(LmOpenContext& context) override {
        if (devicePresent) context.device = nextDevice++;
        return Call("Open", devicePresent ? 0 : 1167);
    }
    std::uint32_t Close(std::int32_t) override { return Call("Close", 0); }
    std::uint32_t UpdateBitmap(std::int32_t, const LmBitmapHeader&, std::uint32_t) override {
        return Call("UpdateBitmap", 0);
    }
    std::uint32_t SetAsForeground(std::int32_t device, bool foreground) override {
        foregroundOf[device] = foreground;
        return Call("SetAsForeground", 0);
    }
    std::uint32_t RequestDevice(std::int32_t) override { return Call("RequestDevice", 0); }

    /// What the library's thread would do: tell the applet about a notification.
    void Notify(std::uint32_t code, std::uint32_t param1 = kLmDeviceColor) {
        last.onNotify(last.connection, last.notifyContext, code, param1, 0);
    }
    int Count(const std::string& call) const {
        auto found = calls.find(call);
        return found == calls.end() ? 0 : found->second;
    }
    int Total() const {
        int total = 0;
        for (const auto& [name, n] : calls) total += n;
        return total;
    }

    std::map<std::string, int> calls;
    std::map<std::int32_t, bool> foregroundOf;
    LmConnectContext last{};
    std::wstring lastName;
    std::uint32_t initStatus = 0;
    std::uint32_t connectStatus = 0;
    bool devicePresent = true;
    std::int32_t nextConnection = 1;
    std::int32_t nextDevice = 1;

private:
    std::uint32_t Call(const std::string& name, std::uint32_t status) {
        ++calls[name];
        return status;
    }
};

/// A surface that measures every character as 7 x 15 pixels and records what it was asked.
class CRecordingGfx : public CLCDGfxBase {
public:
    CRecordingGfx() : CLCDGfxBase(kColorWidth, kColorHeight, 32) {}
    bool Initialize() override { return true; }
    void Shutdown() override {}
    bool BeginDraw() override { return true; }
    void EndDraw() override {}
    const LmBitmapHeader* Bitmap() const override { return nullptr; }
    void FillRect(const LcdRect& rect, LcdColor) override { fills.push_back(Shifted(rect)); }
    void FrameRect(const LcdRect& rect, LcdColor) override { frames.push_back(Shifted(rect)); }
    void DottedLine(int x0, int x1, int, LcdColor) override { lines.push_back({x0, x1}); }
    LcdSize MeasureText(const LcdFont&, std::wstring_view text, unsigned, int) override {
        ++measurements;
        return {static_cast<int>(text.size()) * 7, 15};
    }
    void PaintText(const LcdFont&, std::wstring_view text, unsigned, const LcdRect& box,
                   const LcdRect&, LcdColor, LcdColor, int) override {
        texts.emplace_back(text);
        boxes.push_back(Shifted(box));
    }
    void DrawBitmap(LcdBitmapHandle, const LcdRect&, LcdPoint, bool alpha) override {
        bitmaps.push_back(alpha);
    }
    void DrawIcon(LcdIconHandle, const LcdRect&) override { ++icons; }

    int measurements = 0;
    int icons = 0;
    std::vector<LcdRect> fills, frames, boxes;
    std::vector<std::pair<int, int>> lines;
    std::vector<std::wstring> texts;
    std::vector<bool> bitmaps;
};

struct CPost {
    std::uint32_t message;
    std::uintptr_t wParam;
};

class CFakePlatform : public IAppletPlatform {
public:
    WindowId CreateHiddenWindow(IAppletWindowHandler& h) override {
        handler = &h;
        return window;
    }
    void CloseWindow(WindowId) override { closed = true; }
    bool IsWindow(WindowId w) override { return w == window && !closed; }
    bool StartTimer(WindowId, std::uint32_t id, std::uint32_t ms) override {
        timers[id] = ms;
        ++timerStarts[id];
        return true;
    }
    void StopTimer(WindowId, std::uint32_t id) override { timers.erase(id); }
    bool ManagerRunning() override { return managerRunning; }
    bool Post(WindowId, std::uint32_t message, std::uintptr_t wParam, std::intptr_t) override {
        posts.push_back({message, wParam});
        return true;
    }
    void OpenControlPanel() override { ++controlPanels; }

    /// Delivers what was posted, in order, as the window's message loop would.
    void Pump() {
        while (!posts.empty()) {
            CPost post = posts.front();
            posts.erase(posts.begin());
            Send(post.message, post.wParam);
        }
    }
    bool Send(std::uint32_t message, std::uintptr_t wParam) {
        std::intptr_t result = 0;
        return handler->OnWindowMessage(message, wParam, 0, result);
    }
    bool TimerRuns(std::uint32_t id) const { return timers.count(id) != 0; }

    WindowId window = 0x1234;
    IAppletWindowHandler* handler = nullptr;
    bool closed = false;
    bool managerRunning = false;
    int controlPanels = 0;
    std::map<std::uint32_t, std::uint32_t> timers;
    std::map<std::uint32_t, int> timerStarts;
    std::vector<CPost> posts;
};

}  // namespace qvx::lcd::test
