// The driver's client library, "oxappdll", loaded at run time instead of linked. Each function
// of the library has a wrapper here with the same name and arguments. The first wrapper called
// loads the library and binds every name of the table in ox_functions.h; when the library or
// a name is missing, a wrapper gives the failure value of its form and makes no call. No
// wrapper throws.
//
// The shim keeps no state but the load state and g_lastError, and takes no lock: it is used
// from the plug-in's main thread, and from the library's own callback thread only for calls
// that a loaded library answers.
#pragma once

#include "client/detail/ox_errors.h"
#include "client/detail/ox_functions.h"

#include <cstdint>

/// An OxLoadState. Starts not loaded; goes to loaded or failed at the first use, and from
/// loaded back to not loaded at terminate. A failed load is retried by the next wrapper.
extern std::int32_t g_loadState;
/// The library's error variable as it was after the last call a wrapper made, or the shim's
/// own code (kOxLibraryMissing, kOxFunctionMissing) where a wrapper's form says so.
extern std::int32_t g_lastError;

#define OX_DECLARE_WRAPPER(name, presence, form, result, parameters, arguments) \
    result name parameters;
OX_FUNCTIONS(OX_DECLARE_WRAPPER)
#undef OX_DECLARE_WRAPPER

// Rules of the wrappers that have their own:
//  OxInitialize           loads the library unless it is loaded; 16 if that fails; else the
//                         library's OxInitialize. Every other wrapper loads through it.
//  OxTerminate            only when loaded: the library's OxTerminate, then the library is
//                         freed and the next wrapper loads it afresh. 16 when not loaded.
//  OxMessageBox           a failed load only sets g_lastError to 16; the call is then made if
//                         the name was bound. Missing: 0, g_lastError 18.
//  OxSyncInvokeActionID   4 for a zero handle or an empty or null text, after the load.
//  OxSyncGetCurrentButtonBank  4 for a null output, after the load.
//  OxGetConnectionID, KvwErrorString  forms Handle and Value; neither copies the error.

/// Loads the library and binds the table: an OxLoadResult. A missing required name still
/// lets the walk bind every other one, and leaves the library loaded but the state failed.
OxLoadResult OxLoadLibrary();

/// True when the library is loaded and the driver answers OxGetDriverInfo. A driver that does
/// not answer is let go: the library is terminated and freed, and false returned.
bool OxIsDriverAlive();
