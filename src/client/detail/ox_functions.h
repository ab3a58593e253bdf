// The functions of the driver's client library, in one table: the order in which the shim
// looks them up, whether the library must have them, the shim's failure form, and the
// signature. Every other declaration of these functions is generated from this table.
//
//   X(name, presence, form, result, (parameters), (arguments))
//
// presence: Required, Optional.
// form, what the shim's wrapper gives when it cannot make the call:
//   Status  the library missing: 16; an optional function missing: 10, g_lastError 18
//   Handle  the library missing: 0, g_lastError 16; an optional function missing: 0, 18
//   Count   the library missing: -1, g_lastError 16
//   Value   the library missing: 0
//   Void    nothing
//   Own     a wrapper written by hand, with rules of its own
//
// The library's error variable "KvwErrorVal" is looked up first, before every row here. The
// callback entries "RegisterCallback" and "UnregisterCallback" are not in the table: the
// client finds them itself.
#pragma once

#include "client/oxapp/ox_records.h"

#include <cstdint>

#define OX_FUNCTIONS(X)                                                                            \
    X(OxBeep, Required, Status, std::int32_t, (OxHandle handle, const char* pattern),              \
      (handle, pattern))                                                                           \
    X(OxInitialize, Required, Own, std::int32_t, (), ())                                           \
    X(OxTerminate, Required, Own, std::int32_t, (), ())                                            \
    X(OxGetNumDevices, Required, Count, std::int32_t, (), ())                                      \
    X(OxGetDeviceID, Required, Count, std::int32_t, (OxHandle handle), (handle))                   \
    X(OxDeviceIndex, Required, Count, std::int32_t, (std::int32_t deviceId), (deviceId))           \
    X(OxDispatch, Required, Value, std::int32_t, (OxHandle handle, const OxEventData* data),       \
      (handle, data))                                                                              \
    X(OxOpenWinInit, Required, Void, void, (OxWinData * data, void* window), (data, window))       \
    X(OxOpen, Required, Handle, OxHandle,                                                          \
      (const char* appName, std::int32_t deviceId, std::uint32_t mask, std::int32_t mode,          \
       const OxWinData* data),                                                                     \
      (appName, deviceId, mask, mode, data))                                                       \
    X(OxClose, Required, Status, std::int32_t, (OxHandle handle), (handle))                        \
    X(OxGetEventWinInit, Required, Void, void,                                                     \
      (OxEventData * data, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam),    \
      (data, message, wParam, lParam))                                                             \
    X(OxIsKelvaroEvent, Required, Value, std::int32_t, (OxHandle handle, const OxEventData* data), \
      (handle, data))                                                                              \
    X(OxGetEvent, Required, Status, std::int32_t,                                                  \
      (OxHandle handle, std::uint32_t flags, const OxEventData* data, OxKvwEvent* event),          \
      (handle, flags, data, event))                                                                \
    X(OxPeekEvent, Required, Status, std::int32_t,                                                 \
      (OxHandle handle, std::uint32_t flags, OxKvwEvent * event), (handle, flags, event))          \
    X(OxRezero, Required, Status, std::int32_t, (OxHandle handle), (handle))                       \
    X(OxGrabDevice, Required, Status, std::int32_t, (OxHandle handle, std::int32_t exclusive),     \
      (handle, exclusive))                                                                         \
    X(OxReleaseDevice, Required, Status, std::int32_t, (OxHandle handle), (handle))                \
    X(OxButtonPressed, Required, Count, std::int32_t, (const OxKvwEvent* event), (event))          \
    X(OxButtonReleased, Required, Count, std::int32_t, (const OxKvwEvent* event), (event))         \
    X(OxSetUiMode, Required, Status, std::int32_t, (OxHandle handle, std::int32_t mode),           \
      (handle, mode))                                                                              \
    X(OxGetDevicePort, Required, Status, std::int32_t,                                             \
      (OxHandle handle, char* port, std::uint32_t size), (handle, port, size))                     \
    X(OxGetDriverInfo, Required, Status, std::int32_t, (OxVersionInfo * info), (info))             \
    X(OxGetLibraryInfo, Required, Void, void, (OxVersionInfo * info), (info))                      \
    X(OxGetDeviceInfo, Required, Status, std::int32_t, (OxHandle handle, OxDeviceInfo * info),     \
      (handle, info))                                                                              \
    X(KvwErrorString, Required, Own, const char*, (std::int32_t error), (error))                   \
    X(OxSyncSendQuery, Required, Status, std::int32_t, (OxHandle handle), (handle))                \
    X(OxSyncGetVersion, Required, Status, std::int32_t,                                            \
      (OxHandle handle, std::int32_t * major, std::int32_t * minor), (handle, major, minor))       \
    X(OxSyncGetNumberOfFunctions, Required, Status, std::int32_t,                                  \
      (OxHandle handle, std::int32_t * count), (handle, count))                                    \
    X(OxSyncGetFunction, Required, Status, std::int32_t,                                           \
      (OxHandle handle, std::int32_t index, std::int32_t * function, char* label,                  \
       std::uint32_t* labelSize),                                                                  \
      (handle, index, function, label, labelSize))                                                 \
    X(OxSyncGetButtonAssignment, Required, Status, std::int32_t,                                   \
      (OxHandle handle, std::int32_t button, std::int32_t * function), (handle, button, function)) \
    X(OxSyncSetButtonAssignment, Required, Status, std::int32_t,                                   \
      (OxHandle handle, std::int32_t button, std::int32_t function), (handle, button, function))   \
    X(OxSyncSetButtonAssignmentAbsolute, Required, Status, std::int32_t,                           \
      (OxHandle handle, std::int32_t button, std::int32_t function), (handle, button, function))   \
    X(OxSyncSetButtonName, Required, Status, std::int32_t,                                         \
      (OxHandle handle, std::int32_t button, const char* name), (handle, button, name))            \
    X(OxSyncGetAxisLabel, Required, Status, std::int32_t,                                          \
      (OxHandle handle, std::int32_t axis, char* label, std::uint32_t size),                       \
      (handle, axis, label, size))                                                                 \
    X(OxSyncSetAxisLabel, Required, Status, std::int32_t,                                          \
      (OxHandle handle, std::int32_t axis, const char* label), (handle, axis, label))              \
    X(OxSyncGetFilter, Required, Status, std::int32_t,                                             \
      (OxHandle handle, std::int32_t filter, std::int32_t * state), (handle, filter, state))       \
    X(OxSyncSetFilter, Required, Status, std::int32_t,                                             \
      (OxHandle handle, std::int32_t filter, std::int32_t state), (handle, filter, state))         \
    X(OxSyncGetOrientation, Required, Status, std::int32_t,                                        \
      (OxHandle handle, std::int32_t * orientation), (handle, orientation))                        \
    X(OxSyncSetOrientation, Required, Status, std::int32_t,                                        \
      (OxHandle handle, std::int32_t orientation), (handle, orientation))                          \
    X(OxSyncGetAxesState, Required, Status, std::int32_t, (OxHandle handle, std::int32_t * state), \
      (handle, state))                                                                             \
    X(OxSyncSetAxesState, Required, Status, std::int32_t, (OxHandle handle, std::int32_t state),   \
      (handle, state))                                                                             \
    X(OxSyncSetInfoLine, Required, Status, std::int32_t,                                           \
      (OxHandle handle, std::int32_t duration, const char* text), (handle, duration, text))        \
    X(OxSyncGetScaleOverall, Required, Status, std::int32_t, (OxHandle handle, float* value),      \
      (handle, value))                                                                             \
    X(OxSyncSetScaleOverall, Required, Status, std::int32_t, (OxHandle handle, float value),       \
      (handle, value))                                                                             \
    X(OxSyncGetScaleTx, Required, Status, std::int32_t, (OxHandle handle, float* value),           \
      (handle, value))                                                                             \
    X(OxSyncSetScaleTx, Required, Status, std::int32_t, (OxHandle handle, float value),            \
      (handle, value))                                                                             \
    X(OxSyncGetScaleTy, Required, Status, std::int32_t, (OxHandle handle, float* value),           \
      (handle, value))                                                                             \
    X(OxSyncSetScaleTy, Required, Status, std::int32_t, (OxHandle handle, float value),            \
      (handle, value))                                                                             \
    X(OxSyncGetScaleTz, Required, Status, std::int32_t, (OxHandle handle, float* value),           \
      (handle, value))                                                                             \
    X(OxSyncSetScaleTz, Required, Status, std::int32_t, (OxHandle handle, float value),            \
      (handle, value))                                                                             \
    X(OxSyncGetScaleRx, Required, Status, std::int32_t, (OxHandle handle, float* value),           \
      (handle, value))                                                                             \
    X(OxSyncSetScaleRx, Required, Status, std::int32_t, (OxHandle handle, float value),            \
      (handle, value))                                                                             \
    X(OxSyncGetScaleRy, Required, Status, std::int32_t, (OxHandle handle, float* value),           \
      (handle, value))                                                                             \
    X(OxSyncSetScaleRy, Required, Status, std::int32_t, (OxHandle handle, float value),            \
      (handle, value))                                                                             \
    X(OxSyncGetScaleRz, Required, Status, std::int32_t, (OxHandle handle, float* value),           \
      (handle, value))                                                                             \
    X(OxSyncSetScaleRz, Required, Status, std::int32_t, (OxHandle handle, float value),            \
      (handle, value))                                                                             \
    X(OxSyncInvokeAbsoluteFunction, Required, Status, std::int32_t,                                \
      (OxHandle handle, std::int32_t function), (handle, function))                                \
    X(OxSyncSetButtonState, Required, Status, std::int32_t,                                        \
      (OxHandle handle, std::int32_t button, std::int32_t state), (handle, button, state))         \
    X(OxGetDeviceName, Required, Status, std::int32_t,                                             \
      (OxHandle handle, char* name, std::uint32_t size), (handle, name, size))                     \
    X(OxGetButtonName, Required, Status, std::int32_t,                                             \
      (OxHandle handle, std::int32_t button, OxButtonName * name), (handle, button, name))         \
    X(OxGetDeviceImageFileName, Required, Status, std::int32_t,                                    \
      (OxHandle handle, char* fileName, std::uint32_t size), (handle, fileName, size))             \
    X(OxGetCompanyIcon, Required, Value, void*, (OxHandle handle), (handle))                       \
    X(OxGetCompanyLogoFileName, Required, Status, std::int32_t,                                    \
      (OxHandle handle, char* fileName, std::uint32_t size), (handle, fileName, size))             \
    X(OxSetLEDs, Optional, Status, std::int32_t, (OxHandle handle, std::uint32_t mask),            \
      (handle, mask))                                                                              \
    X(OxOpenPort, Optional, Handle, OxHandle,                                                      \
      (const char* appName, const char* port, std::int32_t mode, const OxWinData* data),           \
      (appName, port, mode, data))                                                                 \
    X(OxSyncSuspendFileWriting, Optional, Status, std::int32_t, (OxHandle handle), (handle))       \
    X(OxSyncResumeFileWriting, Optional, Status, std::int32_t, (OxHandle handle), (handle))        \
    X(OxGetButtonV3DK, Optional, Status, std::int32_t,                                             \
      (OxHandle handle, std::int32_t button, std::int32_t * key), (handle, button, key))           \
    X(OxGetButtonNameV3DK, Optional, Status, std::int32_t,                                         \
      (OxHandle handle, std::int32_t key, OxButtonName * name), (handle, key, name))               \
    X(OxAppCmdWriteActions, Optional, Status, std::int32_t,                                        \
      (OxHandle handle, const oxActionNodeEx_s* root), (handle, root))                             \
    X(OxAppCmdWriteActionSet, Optional, Status, std::int32_t,                                      \
      (OxHandle handle, const oxActionNodeEx_s* actionSet), (handle, actionSet))                   \
    X(OxAppCmdActivateActionSet, Optional, Status, std::int32_t,                                   \
      (OxHandle handle, const char* id), (handle, id))                                             \
    X(OxAppCmdWriteActionImages, Optional, Status, std::int32_t,                                   \
      (OxHandle handle, const oxImage_t* images, std::uint32_t count), (handle, images, count))    \
    X(OxAppCfgGetValue, Optional, Status, std::int32_t,                                            \
      (OxHandle handle, const char* key, char* value, std::uint32_t* size),                        \
      (handle, key, value, size))                                                                  \
    X(OxAppCfgSetValue, Optional, Status, std::int32_t,                                            \
      (OxHandle handle, const char* key, const char* value), (handle, key, value))                 \
    X(OxAppCfgAddValueChangedHandler, Optional, Status, std::int32_t,                              \
      (OxHandle handle, OxValueChangedHandler handler, void* context), (handle, handler, context)) \
    X(OxAppCfgRemoveValueChangedHandler, Optional, Status, std::int32_t,                           \
      (OxHandle handle, OxValueChangedHandler handler, void* context), (handle, handler, context)) \
    X(OxGetConnectionID, Optional, Own, std::uint32_t, (OxHandle handle), (handle))                \
    X(OxSyncInvokeActionID, Optional, Own, std::int32_t, (OxHandle handle, const char* actionId),  \
      (handle, actionId))                                                                          \
    X(OxSyncCreateButtonBank, Optional, Status, std::int32_t, (OxHandle handle, const char* name), \
      (handle, name))                                                                              \
    X(OxSyncDeleteButtonBank, Optional, Status, std::int32_t, (OxHandle handle, const char* name), \
      (handle, name))                                                                              \
    X(OxSyncSetCurrentButtonBank, Optional, Status, std::int32_t,                                  \
      (OxHandle handle, const char* name), (handle, name))                                         \
    X(OxSyncPreviousButtonBank, Optional, Status, std::int32_t, (OxHandle handle), (handle))       \
    X(OxSyncNextButtonBank, Optional, Status, std::int32_t, (OxHandle handle), (handle))           \
    X(OxSyncGetCurrentButtonBank, Optional, Own, std::int32_t,                                     \
      (OxHandle handle, char* name, std::uint32_t size), (handle, name, size))                     \
    X(OxSyncSetGrabSyncID, Optional, Status, std::int32_t, (OxHandle handle, std::uint32_t id),    \
      (handle, id))                                                                                \
    X(OxSyncSetSyncID, Optional, Status, std::int32_t, (OxHandle handle, std::uint32_t id),        \
      (handle, id))                                                                                \
    X(OxMessageBox, Optional, Own, std::int32_t,                                                   \
      (void* owner, const char* text, const char* caption, std::uint32_t type),                    \
      (owner, text, caption, type))

/// The name of the library's error variable, looked up before the table.
inline constexpr const char kOxErrorVariableName[] = "KvwErrorVal";

enum class OxPresence { Required, Optional };
enum class OxForm { Status, Handle, Count, Value, Void, Own };

// One function type per row: OxOpen_fn is the type of OxOpen.
#define OX_DECLARE_FUNCTION_TYPE(name, presence, form, result, parameters, arguments) \
    using name##_fn = result parameters;
extern "C" {
OX_FUNCTIONS(OX_DECLARE_FUNCTION_TYPE)
}
#undef OX_DECLARE_FUNCTION_TYPE

// The two callback entries, looked up by the client itself.
extern "C" {
using RegisterCallback_fn = std::int32_t(OxEventCallback callback, void* context);
using UnregisterCallback_fn = std::int32_t();
}
