// The simulated LCD client library's table: GetInterface(5) gives the functions the applets
// call, each logged and counted. Connecting needs the manager; a device opens only for a
// connection while the panel's device is present.
#include "lcd_state_win32.h"

#include "support/os.h"

namespace qvx::simlcd {

void WaitForDelivery();

namespace {

constexpr std::uint32_t kOk = 0;
constexpr std::uint32_t kInvalidParameter = 87;
constexpr std::uint32_t kPipeNotConnected = 233;
constexpr std::uint32_t kDeviceNotConnected = 1167;
constexpr std::uint32_t kServiceNotActive = 1062;
constexpr std::uint32_t kServerUnavailable = 1722;

/// Counts and logs a call; under the lock. The error the call is made to fail with, or 0.
[[nodiscard]] std::uint32_t Called(const char* function, const std::string& detail = {}) {
    ++State().calls[function];
    LogLine(std::string(function) + (detail.empty() ? "" : " " + detail));
    std::int32_t error = Faults().Take(function);
    if (error != 0)
        LogLine(std::string(function) + " fails on purpose with " + std::to_string(error));
    return static_cast<std::uint32_t>(error);
}

std::uint32_t QVX_LCD_CALL Init() {
    std::lock_guard<std::mutex> guard(Lock());
    if (std::uint32_t error = Called("lmLcdInit")) return error;
    ++State().initCount;
    return kOk;
}

std::uint32_t QVX_LCD_CALL DeInit() {
    std::lock_guard<std::mutex> guard(Lock());
    if (std::uint32_t error = Called("lmLcdDeInit")) return error;
    if (State().initCount == 0) return kServiceNotActive;
    --State().initCount;
    return kOk;
}

std::uint32_t QVX_LCD_CALL Connect(lcd::LmConnectContext* context) {
    std::int32_t id = 0;
    {
        std::lock_guard<std::mutex> guard(Lock());
        std::string name = context && context->friendlyName
                               ? qvx::os::NarrowUtf8(context->friendlyName)
                               : std::string("(none)");
        if (std::uint32_t error = Called("lmLcdConnect", "\"" + name + "\"")) return error;
        if (!context || !context->friendlyName) return kInvalidParameter;
        if (State().initCount == 0) return kServiceNotActive;
        if (!ManagerRunning()) return kServerUnavailable;
        id = State().nextConnection++;
        State().connections[id] = {context->friendlyName, context->onNotify,
                                   context->notifyContext};
        State().lastName = context->friendlyName;
        context->connection = id;
    }
    // The manager tells the new applet about the device afterwards, from its own thread.
    AnnounceDevice(id);
    return kOk;
}

std::uint32_t QVX_LCD_CALL Disconnect(std::int32_t connection) {
    std::uint32_t failure = kOk;
    {
        std::lock_guard<std::mutex> guard(Lock());
        // A failed disconnect still drops the connection: the library calls no applet code of
        // it afterwards, whatever it reports.
        failure = Called("lmLcdDisconnect", std::to_string(connection));
        auto& devices = State().devices;
        for (auto it = devices.begin(); it != devices.end();) {
            it = it->second.connection == connection ? devices.erase(it) : std::next(it);
        }
        if (State().connections.erase(connection) == 0 && failure == kOk) return kPipeNotConnected;
    }
    WaitForDelivery();
    return failure;
}

std::uint32_t OpenDevice(const char* function, lcd::LmOpenContext* context) {
    std::lock_guard<std::mutex> guard(Lock());
    if (std::uint32_t error =
            Called(function, context ? "type " + std::to_string(context->deviceType) : ""))
        return error;
    if (!context) return kInvalidParameter;
    if (!State().connections.count(context->connection)) return kPipeNotConnected;
    if (!State().devicePresent || context->deviceType != lcd::kLmDeviceColor) {
        return kDeviceNotConnected;
    }
    std::int32_t id = State().nextDevice++;
    State().devices[id] = {context->connection, context->deviceType, context->onSoftButtons,
                           context->softButtonsContext, false};
    context->device = id;
    return kOk;
}

std::uint32_t QVX_LCD_CALL Open(lcd::LmOpenContext* context) {
    return OpenDevice("lmLcdOpen", context);
}

std::uint32_t QVX_LCD_CALL OpenByType(lcd::LmOpenContext* context) {
    return OpenDevice("lmLcdOpenByType", context);
}

std::uint32_t QVX_LCD_CALL Close(std::int32_t device) {
    std::uint32_t failure = kOk;
    {
        std::lock_guard<std::mutex> guard(Lock());
        // As a disconnect: the device is closed whatever the call reports.
        failure = Called("lmLcdClose", std::to_string(device));
        if (State().devices.erase(device) == 0 && failure == kOk) return kInvalidParameter;
    }
    WaitForDelivery();
    return failure;
}

std::uint32_t QVX_LCD_CALL UpdateBitmap(std::int32_t device, const lcd::LmBitmapHeader* bitmap,
                                        std::uint32_t priority) {
    bool die = false;
    {
        std::lock_guard<std::mutex> guard(Lock());
        if (std::uint32_t error =
                Called("lmLcdUpdateBitmap",
                       std::to_string(device) + " priority " + std::to_string(priority))) {
            return error;
        }
        if (!bitmap ||
            (bitmap->format != lcd::kLmBitmapColor && bitmap->format != lcd::kLmBitmapMono)) {
            return kInvalidParameter;
        }
        if (!State().devices.count(device)) return kInvalidParameter;
        die = State().dieOnNextFrame;
        State().dieOnNextFrame = false;
        if (!die) {
            std::uint32_t number = ++State().frames;
            std::wstring file = WriteFramePng(State().frameFolder, number, *bitmap);
            LogLine("frame " + std::to_string(number) +
                    (file.empty() ? std::string() : " " + qvx::os::NarrowUtf8(file)));
        }
    }
    if (!die) return kOk;
    // The manager dies while it takes the frame in: the frame is lost.
    KillManager();
    return kPipeNotConnected;
}

std::uint32_t QVX_LCD_CALL SetAsForeground(std::int32_t device, std::int32_t foreground) {
    std::lock_guard<std::mutex> guard(Lock());
    if (std::uint32_t error = Called("lmLcdSetAsLCDForegroundApp",
                                     std::to_string(device) + (foreground ? " yes" : " no")))
        return error;
    auto found = State().devices.find(device);
    if (found == State().devices.end()) return kInvalidParameter;
    found->second.foreground = foreground != 0;
    return kOk;
}

std::uint32_t QVX_LCD_CALL RequestDevice(std::int32_t device) {
    std::lock_guard<std::mutex> guard(Lock());
    if (std::uint32_t error = Called("lmLcdRequestDevice", std::to_string(device))) return error;
    return State().devices.count(device) ? kOk : kInvalidParameter;
}

void* g_table[lcd::kLmTableSize] = {};

template <typename Fn>
void Put(int index, Fn fn) {
    g_table[index] = reinterpret_cast<void*>(fn);
}

}  // namespace

std::mutex& Lock() {
    static std::mutex lock;
    return lock;
}

CLcdState& State() {
    static CLcdState state;
    return state;
}

sim::CCallFaults& Faults() {
    static sim::CCallFaults faults;
    return faults;
}

void LogLine(const std::string& line) { State().log.push_back(line); }

}  // namespace qvx::simlcd

extern "C" __declspec(dllexport) void* const* QVX_LCD_CALL GetInterface(std::uint32_t version) {
    using namespace qvx::simlcd;
    namespace lcd = qvx::lcd;
    std::lock_guard<std::mutex> guard(Lock());
    ++State().calls["GetInterface"];
    LogLine("GetInterface " + std::to_string(version));
    if (Faults().Take("GetInterface") != 0) {
        LogLine("GetInterface fails on purpose");
        return nullptr;
    }
    if (State().interfaceNull || version != lcd::kLmInterfaceVersion) return nullptr;
    Put(lcd::kLmInit, &Init);
    Put(lcd::kLmDeInit, &DeInit);
    Put(lcd::kLmConnect, &Connect);
    Put(lcd::kLmDisconnect, &Disconnect);
    Put(lcd::kLmOpen, &Open);
    Put(lcd::kLmClose, &Close);
    Put(lcd::kLmUpdateBitmap, &UpdateBitmap);
    Put(lcd::kLmRequestDevice, &RequestDevice);
    Put(lcd::kLmSetAsLcdForegroundApp, &SetAsForeground);
    Put(lcd::kLmOpenByType, &OpenByType);
    return g_table;
}
