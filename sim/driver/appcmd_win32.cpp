// What an application publishes to the driver: action trees and images, configuration values,
// button banks; and the library's message box and event callback.
#include "client/oxapp/action_tree_text.h"
#include "sim/driver/driver_state_win32.h"
#include "sim/driver/exports_win32.h"

#include <algorithm>
#include <optional>

using namespace qvx::simdriver;

namespace {

const char* TextOrEmpty(const char* text) { return text ? text : ""; }

std::int32_t WriteTree(const char* name, OxHandle handle, const oxActionNodeEx_s* root,
                       std::string DriverState::*into) {
    Args args;
    args("handle", handle)("root", root ? TextOrEmpty(root->id) : nullptr);
    return OnConnection(name, args, handle, [&](DriverState& state, Connection&) {
        if (!root) return kOxBadValue;
        // Links that reach too many nodes form a cycle.
        std::string tree;
        std::optional<std::size_t> count = oxapp::AppendActionNodeLines(root, tree);
        if (!count) return kOxBadValue;
        state.*into = std::move(tree);
        state.NoteOnCall("nodes=" + std::to_string(*count));
        return kOxNoError;
    });
}

std::vector<std::string>::iterator FindBank(DriverState& state, const char* name) {
    return std::find(state.buttonBanks.begin(), state.buttonBanks.end(), TextOrEmpty(name));
}

}  // namespace

extern "C" {

std::int32_t OxAppCmdWriteActions(OxHandle handle, const oxActionNodeEx_s* root) {
    return WriteTree("OxAppCmdWriteActions", handle, root, &DriverState::actionTree);
}

std::int32_t OxAppCmdWriteActionSet(OxHandle handle, const oxActionNodeEx_s* actionSet) {
    return WriteTree("OxAppCmdWriteActionSet", handle, actionSet, &DriverState::actionSet);
}

std::int32_t OxAppCmdActivateActionSet(OxHandle handle, const char* id) {
    return OnConnection("OxAppCmdActivateActionSet", Args()("handle", handle)("id", id), handle,
                        [&](DriverState& state, Connection&) {
                            if (!id) return kOxBadValue;
                            state.activeActionSet = id;
                            return kOxNoError;
                        });
}

std::int32_t OxAppCmdWriteActionImages(OxHandle handle, const oxImage_t* images,
                                       std::uint32_t count) {
    return OnConnection("OxAppCmdWriteActionImages", Args()("handle", handle)("count", count),
                        handle, [&](DriverState& state, Connection&) {
                            if (!images && count) return kOxBadValue;
                            std::string lines;
                            oxapp::AppendActionImageLines(images, count, lines);
                            state.images = std::move(lines);
                            return kOxNoError;
                        });
}

// Too small a buffer gives 20 and, in `size`, the length the value needs with its terminator.
std::int32_t OxAppCfgGetValue(OxHandle handle, const char* key, char* value, std::uint32_t* size) {
    return OnConnection("OxAppCfgGetValue", Args()("handle", handle)("key", key), handle,
                        [&](DriverState& state, Connection&) {
                            if (!key || !size) return kOxBadValue;
                            auto found = state.configValues.find(key);
                            if (found == state.configValues.end()) return kOxBadValue;
                            std::int32_t copied = CopyText(found->second, value, *size);
                            if (copied != kOxNoError) {
                                *size = found->second.size() + 1;
                                return kOxNotEnoughMemory;
                            }
                            return copied;
                        });
}

std::int32_t OxAppCfgSetValue(OxHandle handle, const char* key, const char* value) {
    return OnConnection("OxAppCfgSetValue", Args()("handle", handle)("key", key)("value", value),
                        handle, [&](DriverState& state, Connection&) {
                            if (!key) return kOxBadValue;
                            state.configValues[key] = TextOrEmpty(value);
                            state.configWrites.push_back(std::string(key) + "=" +
                                                         TextOrEmpty(value));
                            return kOxNoError;
                        });
}

std::int32_t OxAppCfgAddValueChangedHandler(OxHandle handle, OxValueChangedHandler handler,
                                            void* context) {
    return OnConnection(
        "OxAppCfgAddValueChangedHandler",
        Args()("handle", handle)("handler", handler)("context", context), handle,
        [&](DriverState&, Connection&) { return handler ? kOxNoError : kOxBadValue; });
}

std::int32_t OxAppCfgRemoveValueChangedHandler(OxHandle handle, OxValueChangedHandler handler,
                                               void* context) {
    return OnConnection(
        "OxAppCfgRemoveValueChangedHandler",
        Args()("handle", handle)("handler", handler)("context", context), handle,
        [&](DriverState&, Connection&) { return handler ? kOxNoError : kOxBadValue; });
}

std::uint32_t OxGetConnectionID(OxHandle handle) {
    return Run<std::uint32_t>("OxGetConnectionID", Args()("handle", handle), Needs::Driver, 0,
                              [&](DriverState& state) -> std::uint32_t {
                                  if (Connection* connection = state.Find(handle)) {
                                      return connection->connectionId;
                                  }
                                  KvwErrorVal = kOxBadHandle;
                                  return 0;
                              });
}

std::int32_t OxSyncCreateButtonBank(OxHandle handle, const char* name) {
    return OnConnection(
        "OxSyncCreateButtonBank", Args()("handle", handle)("name", name), handle,
        [&](DriverState& state, Connection&) {
            if (!name || !*name || FindBank(state, name) != state.buttonBanks.end()) {
                return kOxBadValue;
            }
            state.buttonBanks.push_back(name);
            return kOxNoError;
        });
}

std::int32_t OxSyncDeleteButtonBank(OxHandle handle, const char* name) {
    return OnConnection("OxSyncDeleteButtonBank", Args()("handle", handle)("name", name), handle,
                        [&](DriverState& state, Connection&) {
                            auto found = FindBank(state, name);
                            if (found == state.buttonBanks.end()) return kOxBadValue;
                            state.buttonBanks.erase(found);
                            state.currentBank = 0;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncSetCurrentButtonBank(OxHandle handle, const char* name) {
    return OnConnection("OxSyncSetCurrentButtonBank", Args()("handle", handle)("name", name),
                        handle, [&](DriverState& state, Connection&) {
                            auto found = FindBank(state, name);
                            if (found == state.buttonBanks.end()) return kOxBadValue;
                            state.currentBank = found - state.buttonBanks.begin();
                            return kOxNoError;
                        });
}

std::int32_t OxSyncPreviousButtonBank(OxHandle handle) {
    return OnConnection("OxSyncPreviousButtonBank", Args()("handle", handle), handle,
                        [&](DriverState& state, Connection&) {
                            std::size_t banks = state.buttonBanks.size();
                            if (banks == 0) return kOxBadValue;
                            state.currentBank = (state.currentBank + banks - 1) % banks;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncNextButtonBank(OxHandle handle) {
    return OnConnection("OxSyncNextButtonBank", Args()("handle", handle), handle,
                        [&](DriverState& state, Connection&) {
                            std::size_t banks = state.buttonBanks.size();
                            if (banks == 0) return kOxBadValue;
                            state.currentBank = (state.currentBank + 1) % banks;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncGetCurrentButtonBank(OxHandle handle, char* name, std::uint32_t size) {
    return OnConnection("OxSyncGetCurrentButtonBank", Args()("handle", handle)("size", size),
                        handle, [&](DriverState& state, Connection&) {
                            if (state.buttonBanks.empty()) return kOxBadValue;
                            return CopyText(state.buttonBanks[state.currentBank], name, size);
                        });
}

// Shows nothing: the call is recorded and answered with the answer the test set (1 at first).
std::int32_t OxMessageBox(void* owner, const char* text, const char* caption, std::uint32_t type) {
    Args args;
    args("owner", owner)("text", text)("caption", caption)("type", type);
    return Run<std::int32_t>("OxMessageBox", args, Needs::Library, 0, [&](DriverState& state) {
        state.messageBoxes.push_back({TextOrEmpty(text), TextOrEmpty(caption), type});
        return state.messageBoxAnswer;
    });
}

std::int32_t RegisterCallback(OxEventCallback callback, void* context) {
    return RunStatus("RegisterCallback", Args()("callback", callback)("context", context),
                     Needs::Library, [&](DriverState& state) {
                         if (!callback) return kOxBadValue;
                         state.callback = callback;
                         state.callbackContext = context;
                         return kOxNoError;
                     });
}

std::int32_t UnregisterCallback() {
    return RunStatus("UnregisterCallback", {}, Needs::Library, [](DriverState& state) {
        state.callback = nullptr;
        state.callbackContext = nullptr;
        return kOxNoError;
    });
}

}  // extern "C"
