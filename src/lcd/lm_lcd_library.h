// The LCD client library as the plug-in loads it: found through the registry, loaded at run
// time, and called through the table of functions that GetInterface(5) gives. A wrapper
// stands before each function (1247: the library is up already, 1722: it could not be found
// or loaded, 1062: it is not up), and a process-wide count of users starts the library with
// the first user and ends it with the last.
#pragma once

#include "lcd/widgets/lcd_library.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace qvx::lcd {

constexpr std::uint32_t kLmAlreadyInitialized = 1247;  ///< ERROR_ALREADY_INITIALIZED
constexpr std::uint32_t kLmLibraryUnavailable = 1722;  ///< RPC_S_SERVER_UNAVAILABLE
constexpr std::uint32_t kLmNotStarted = 1062;          ///< ERROR_SERVICE_NOT_ACTIVE

/// Finds and loads the library and hands out its table; the platform's lives beside this.
class ILmLibraryLoader {
public:
    virtual ~ILmLibraryLoader() = default;
    /// The table of functions, or null when the library is missing or refuses.
    virtual void* const* Load() = 0;
    /// Frees what Load loaded.
    virtual void Unload() = 0;
};

/// The registry look-up and load of the platform; natively there is no library.
std::unique_ptr<ILmLibraryLoader> CreateSystemLoader();

class CLmLcdLibrary : public ILcdLibrary {
public:
    explicit CLmLcdLibrary(std::unique_ptr<ILmLibraryLoader> loader);
    CLmLcdLibrary(const CLmLcdLibrary&) = delete;
    CLmLcdLibrary& operator=(const CLmLcdLibrary&) = delete;
    ~CLmLcdLibrary();

    /// Counts a user in; the first one loads and starts the library. 0 or the failure.
    std::uint32_t Init() override;
    /// Counts a user out; the last one ends and frees the library.
    std::uint32_t DeInit() override;
    std::uint32_t Connect(LmConnectContext& context) override;
    std::uint32_t Disconnect(std::int32_t connection) override;
    std::uint32_t Open(LmOpenContext& context) override;
    std::uint32_t OpenByType(LmOpenContext& context) override;
    std::uint32_t Close(std::int32_t device) override;
    std::uint32_t UpdateBitmap(std::int32_t device, const LmBitmapHeader& bitmap,
                               std::uint32_t priority) override;
    std::uint32_t SetAsForeground(std::int32_t device, bool foreground) override;
    std::uint32_t RequestDevice(std::int32_t device) override;

    /// The wrappers of lmLcdInit and lmLcdDeInit themselves, without the count.
    std::uint32_t WrapInit();
    std::uint32_t WrapDeInit();
    bool IsUp() const { return m_table != nullptr; }
    int Users() const { return m_users.load(); }

private:
    template <typename Fn>
    Fn Slot(int index) const {
        return m_table ? reinterpret_cast<Fn>(m_table[index]) : nullptr;
    }

    std::unique_ptr<ILmLibraryLoader> m_loader;
    void* const* m_table = nullptr;
    std::atomic<int> m_users{0};
};

/// The process's library, loaded through the registry.
CLmLcdLibrary& SystemLcdLibrary();

}  // namespace qvx::lcd
