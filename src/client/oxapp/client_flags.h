// The flags with which a device object is opened: what it receives from the driver and what
// takes part in the sync exchange. Every bit is tested where its event arrives.
#pragma once

#include <cstdint>

namespace oxapp {

enum ClientFlags : std::uint32_t {
    kFlagMotion = 0x01,         ///< motion and zero events; without it the driver opens mode 9
    kFlagKeys = 0x02,           ///< key events
    kFlagSyncState = 0x04,      ///< axes, filters and orientation take part in the sync
    kFlagSyncFunctions = 0x08,  ///< the function list takes part in the sync
    kFlagCommands = 0x10,       ///< commands and configuration changes
    kFlagCallback = 0x20,       ///< the library's callback; with commands also the grab id
    kFlagProxy = 0x40,          ///< the driver talks to the proxy window on the message thread
};

}  // namespace oxapp
