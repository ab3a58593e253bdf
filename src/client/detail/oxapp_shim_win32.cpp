#include "client/detail/oxapp_shim.h"

#include "support/windows_api.h"

#include <type_traits>

std::int32_t g_loadState = kOxNotLoaded;
std::int32_t g_lastError = kOxNoError;

namespace {

// A plain handle on purpose: it belongs to the load state and is freed only by the terminate
// step. A destructor would free it during the plug-in's own unload, where FreeLibrary is
// unsafe.
HMODULE g_library = nullptr;
std::int32_t* g_errorVariable = nullptr;

struct Entries {
#define OX_ENTRY(name, presence, form, result, parameters, arguments) name##_fn* name = nullptr;
    OX_FUNCTIONS(OX_ENTRY)
#undef OX_ENTRY
};
Entries g_entries;

struct TableRow {
    const char* name;
    OxPresence presence;
    void (*bind)(FARPROC entry);
};

template <typename Fn>
Fn* EntryAs(FARPROC entry) {
    // Through the generic function pointer type, which converts to any other without a warning.
    return reinterpret_cast<Fn*>(reinterpret_cast<void (*)()>(entry));
}

constexpr TableRow kTable[] = {
#define OX_ROW(name, presence, form, result, parameters, arguments) \
    {#name, OxPresence::presence,                                   \
     [](FARPROC entry) { g_entries.name = EntryAs<name##_fn>(entry); }},
    OX_FUNCTIONS(OX_ROW)
#undef OX_ROW
};

void ForgetEntries() {
    g_entries = Entries{};
    g_errorVariable = nullptr;
}

void CopyError() {
    if (g_errorVariable) g_lastError = *g_errorVariable;
}

/// Loads the library through OxInitialize unless it is loaded; true when it is.
bool EnsureLoaded() {
    if (g_loadState != kOxLoaded) OxInitialize();
    return g_loadState == kOxLoaded;
}

template <OxForm form, typename Result>
Result LibraryMissing() {
    if constexpr (form == OxForm::Status) {
        return kOxLibraryMissing;
    } else if constexpr (form == OxForm::Handle) {
        g_lastError = kOxLibraryMissing;
        return 0;
    } else if constexpr (form == OxForm::Count) {
        g_lastError = kOxLibraryMissing;
        return -1;
    } else if constexpr (form == OxForm::Value) {
        return Result{};
    } else {
        static_assert(form == OxForm::Void);
    }
}

template <OxForm form, typename Result>
Result FunctionMissing() {
    if constexpr (form == OxForm::Status) {
        g_lastError = kOxFunctionMissing;
        return kOxUnsupported;
    } else if constexpr (form == OxForm::Handle) {
        g_lastError = kOxFunctionMissing;
        return 0;
    } else {
        // Only optional names can be missing from a loaded library, and they are all of the
        // two forms above; the rest fail as if the library were missing.
        return LibraryMissing<form, Result>();
    }
}

struct NeverReject {
    bool operator()() const { return false; }
};

/// The body of every wrapper: load, test the entry, call, copy the error variable. `entry`
/// is read after loading, which binds it. `reject` tests the arguments after the load and
/// before the entry; a rejected call gives kOxBadValue.
template <OxForm form, bool copyError = true, typename Fn, typename Call,
          typename Reject = NeverReject>
auto Forward(Fn* const& entry, Call call, Reject reject = {}) noexcept {
    using Result = std::invoke_result_t<Call, Fn*>;
    try {
        if (!EnsureLoaded()) return LibraryMissing<form, Result>();
        if constexpr (form == OxForm::Status) {
            if (reject()) return Result{kOxBadValue};
        }
        if (!entry) return FunctionMissing<form, Result>();
        if constexpr (std::is_void_v<Result>) {
            call(entry);
            if constexpr (copyError) CopyError();
        } else {
            Result result = call(entry);
            if constexpr (copyError) CopyError();
            return result;
        }
    } catch (...) {
        // Nothing may pass back into the caller: an exception counts as the library failing.
        return LibraryMissing<form, Result>();
    }
}

void Unload() {
    if (g_library) FreeLibrary(g_library);
    g_library = nullptr;
    ForgetEntries();
    g_loadState = kOxNotLoaded;
}

}  // namespace

OxLoadResult OxLoadLibrary() {
    ForgetEntries();
    // A library left loaded by a failed load is not freed: it stays with the process.
    g_library = LoadLibraryW(L"oxappdll");
    if (!g_library) {
        g_loadState = kOxLoadFailed;
        return kOxLoadNoLibrary;
    }
    OxLoadResult result = kOxLoadComplete;
    g_errorVariable = reinterpret_cast<std::int32_t*>(
        reinterpret_cast<void*>(GetProcAddress(g_library, kOxErrorVariableName)));
    if (!g_errorVariable) result = kOxLoadNoErrorVariable;
    // The walk goes on past a missing name, so that every entry is bound.
    for (const TableRow& row : kTable) {
        FARPROC entry = GetProcAddress(g_library, row.name);
        row.bind(entry);
        if (!entry && row.presence == OxPresence::Required && result == kOxLoadComplete) {
            result = kOxLoadRequiredMissing;
        }
    }
    g_loadState = result == kOxLoadComplete ? kOxLoaded : kOxLoadFailed;
    return result;
}

// The wrappers of the five common forms, one per row of the table.
#define OX_WRAPPER(name, form, result, parameters, arguments)                                      \
    result name parameters {                                                                       \
        return Forward<OxForm::form>(g_entries.name, [&](name##_fn* fn) { return fn arguments; }); \
    }
#define OX_WRAPPER_Status OX_WRAPPER
#define OX_WRAPPER_Handle OX_WRAPPER
#define OX_WRAPPER_Count OX_WRAPPER
#define OX_WRAPPER_Value OX_WRAPPER
#define OX_WRAPPER_Void OX_WRAPPER
#define OX_WRAPPER_Own(name, form, result, parameters, arguments)
#define OX_DEFINE_WRAPPER(name, presence, form, result, parameters, arguments) \
    OX_WRAPPER_##form(name, form, result, parameters, arguments)
OX_FUNCTIONS(OX_DEFINE_WRAPPER)

std::int32_t OxInitialize() {
    try {
        if (g_loadState != kOxLoaded) OxLoadLibrary();
        if (g_loadState != kOxLoaded) return kOxLibraryMissing;
        std::int32_t result = g_entries.OxInitialize();
        CopyError();
        return result;
    } catch (...) {
        return kOxLibraryMissing;
    }
}

std::int32_t OxTerminate() {
    if (g_loadState != kOxLoaded) return kOxLibraryMissing;
    std::int32_t result = kOxLibraryMissing;
    try {
        result = g_entries.OxTerminate();
        CopyError();
    } catch (...) {
    }
    Unload();
    return result;
}

const char* KvwErrorString(std::int32_t error) {
    return Forward<OxForm::Value, /*copyError=*/false>(
        g_entries.KvwErrorString, [&](KvwErrorString_fn* fn) { return fn(error); });
}

OxHandle OxGetConnectionID(OxHandle handle) {
    return Forward<OxForm::Handle, /*copyError=*/false>(
        g_entries.OxGetConnectionID, [&](OxGetConnectionID_fn* fn) { return fn(handle); });
}

std::int32_t OxSyncInvokeActionID(OxHandle handle, const char* actionId) {
    return Forward<OxForm::Status>(
        g_entries.OxSyncInvokeActionID,
        [&](OxSyncInvokeActionID_fn* fn) { return fn(handle, actionId); },
        [&] { return handle == 0 || !actionId || !*actionId; });
}

std::int32_t OxSyncGetCurrentButtonBank(OxHandle handle, char* name, std::uint32_t size) {
    return Forward<OxForm::Status>(
        g_entries.OxSyncGetCurrentButtonBank,
        [&](OxSyncGetCurrentButtonBank_fn* fn) { return fn(handle, name, size); },
        [&] { return name == nullptr; });
}

std::int32_t OxMessageBox(void* owner, const char* text, const char* caption, std::uint32_t type) {
    try {
        // Unlike every other wrapper, a failed load does not end here: the entry decides.
        if (!EnsureLoaded()) g_lastError = kOxLibraryMissing;
        if (!g_entries.OxMessageBox) {
            g_lastError = kOxFunctionMissing;
            return 0;
        }
        std::int32_t result = g_entries.OxMessageBox(owner, text, caption, type);
        CopyError();
        return result;
    } catch (...) {
        return 0;
    }
}

bool OxIsDriverAlive() {
    if (g_loadState != kOxLoaded) return false;
    OxVersionInfo info{};
    if (OxGetDriverInfo(&info) == kOxNoError) return true;
    OxTerminate();
    return false;
}
