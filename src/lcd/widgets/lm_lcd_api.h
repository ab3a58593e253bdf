// The LCD client library's binary interface as this plug-in uses it: the table of functions
// that GetInterface(5) hands out, by index, and the records passed through it. The simulated
// library builds its table from the same declarations, so both sides agree by construction.
#pragma once

#include <cstdint>

#if defined(_WIN32) && !defined(_WIN64)
#define QVX_LCD_CALL __stdcall
#else
#define QVX_LCD_CALL
#endif

namespace qvx::lcd {

/// The version argument of GetInterface that yields the table below.
constexpr std::uint32_t kLmInterfaceVersion = 5;

/// Connection and device handles that are not (yet) valid.
constexpr std::int32_t kLmInvalidHandle = -1;

/// Device types, also the capability bits of a connection.
constexpr std::int32_t kLmDeviceMono = 1;
constexpr std::int32_t kLmDeviceColor = 2;

/// Notification codes the library delivers.
constexpr std::uint32_t kLmNotifyDeviceArrival = 1;
constexpr std::uint32_t kLmNotifyDeviceRemoval = 2;
constexpr std::uint32_t kLmNotifyCloseConnection = 3;
constexpr std::uint32_t kLmNotifyAppletDisabled = 4;
constexpr std::uint32_t kLmNotifyAppletEnabled = 5;

/// Bitmap formats of a frame.
constexpr std::uint32_t kLmBitmapMono = 1;   ///< 160 x 43, one byte a pixel, 128 and above lit
constexpr std::uint32_t kLmBitmapColor = 2;  ///< 320 x 240, four bytes a pixel: B, G, R, A

constexpr int kColorWidth = 320;
constexpr int kColorHeight = 240;
constexpr int kMonoWidth = 160;
constexpr int kMonoHeight = 43;

/// Priorities of a frame.
constexpr std::uint32_t kLmPriorityNormal = 128;

extern "C" {

typedef std::uint32_t(QVX_LCD_CALL* LmConfigureProc)(std::int32_t connection,
                                                     const wchar_t* friendlyName, void* context);
typedef std::uint32_t(QVX_LCD_CALL* LmNotifyProc)(std::int32_t connection, void* context,
                                                  std::uint32_t code, std::uint32_t param1,
                                                  std::uint32_t param2);
typedef std::uint32_t(QVX_LCD_CALL* LmSoftButtonsProc)(std::int32_t device, std::uint32_t buttons,
                                                       void* context);

/// What an applet tells the library when it connects. The library fills in `connection`.
struct LmConnectContext {
    const wchar_t* friendlyName;
    std::int32_t isPersistent;
    std::int32_t isAutostartable;
    LmConfigureProc onConfigure;
    void* configureContext;
    std::int32_t connection;
    std::uint32_t capabilities;
    std::uint32_t reserved;
    LmNotifyProc onNotify;
    void* notifyContext;
};

/// What an applet tells the library when it opens a device of a type. The library fills in
/// `device`; soft buttons of that device come to `onSoftButtons` on the library's thread.
struct LmOpenContext {
    std::int32_t connection;
    std::int32_t deviceType;
    LmSoftButtonsProc onSoftButtons;
    void* softButtonsContext;
    std::int32_t device;
};

/// A frame: a header and the pixels, rows top down.
struct LmBitmapHeader {
    std::uint32_t format;
};
struct LmBitmapColor {
    LmBitmapHeader header;
    std::uint8_t pixels[kColorWidth * kColorHeight * 4];
};
struct LmBitmapMono {
    LmBitmapHeader header;
    std::uint8_t pixels[kMonoWidth * kMonoHeight];
};

typedef std::uint32_t(QVX_LCD_CALL* LmInitFn)();
typedef std::uint32_t(QVX_LCD_CALL* LmDeInitFn)();
typedef std::uint32_t(QVX_LCD_CALL* LmConnectFn)(LmConnectContext* context);
typedef std::uint32_t(QVX_LCD_CALL* LmDisconnectFn)(std::int32_t connection);
typedef std::uint32_t(QVX_LCD_CALL* LmOpenFn)(LmOpenContext* context);
typedef std::uint32_t(QVX_LCD_CALL* LmCloseFn)(std::int32_t device);
typedef std::uint32_t(QVX_LCD_CALL* LmUpdateBitmapFn)(std::int32_t device,
                                                      const LmBitmapHeader* bitmap,
                                                      std::uint32_t priority);
typedef std::uint32_t(QVX_LCD_CALL* LmSetAsForegroundFn)(std::int32_t device,
                                                         std::int32_t foreground);
typedef std::uint32_t(QVX_LCD_CALL* LmRequestDeviceFn)(std::int32_t device);

/// The library's one export: the table of functions for `version`, or null.
typedef void* const*(QVX_LCD_CALL* LmGetInterfaceFn)(std::uint32_t version);

}  // extern "C"

/// The slots of the table that the plug-in uses.
enum LmTableIndex : int {
    kLmInit = 0,
    kLmDeInit = 1,
    kLmConnect = 4,
    kLmDisconnect = 6,
    kLmOpen = 10,
    kLmClose = 11,
    kLmUpdateBitmap = 13,
    kLmRequestDevice = 18,
    kLmSetAsLcdForegroundApp = 24,
    kLmOpenByType = 26,
    kLmTableSize = 27,
};

}  // namespace qvx::lcd
