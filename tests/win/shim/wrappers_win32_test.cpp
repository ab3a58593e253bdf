// Every wrapper of the table, called with empty arguments where it cannot reach the library
// or its function: each gives the failure value of its form, and none crashes.
#include "shim_fixture.h"

#include <cstring>
#include <type_traits>

namespace qvx::testing {
namespace {

/// Set before each call, to see whether the wrapper wrote g_lastError.
constexpr std::int32_t kUntouched = -777;

struct Outcome {
    std::int64_t result = 0;  ///< pointers as 1 (set) or 0
    std::int32_t lastError = kUntouched;
};

template <typename R, typename... A>
Outcome CallWithEmptyArguments(R (*wrapper)(A...)) {
    g_lastError = kUntouched;
    Outcome outcome;
    if constexpr (std::is_void_v<R>) {
        wrapper(A{}...);
    } else if constexpr (std::is_pointer_v<R>) {
        outcome.result = wrapper(A{}...) != nullptr;
    } else {
        outcome.result = static_cast<std::int64_t>(wrapper(A{}...));
    }
    outcome.lastError = g_lastError;
    return outcome;
}

struct Row {
    const char* name;
    OxPresence presence;
    OxForm form;
    Outcome (*call)();
};

const Row kRows[] = {
#define TEST_ROW(name, presence, form, result, parameters, arguments) \
    {#name, OxPresence::presence, OxForm::form, [] { return CallWithEmptyArguments(&::name); }},
    OX_FUNCTIONS(TEST_ROW)
#undef TEST_ROW
};

/// What a wrapper of `form` gives when the library cannot be loaded.
Outcome WithoutLibrary(const Row& row) {
    switch (row.form) {
        case OxForm::Status:
            return {kOxLibraryMissing, kUntouched};
        case OxForm::Handle:
            return {0, kOxLibraryMissing};
        case OxForm::Count:
            return {-1, kOxLibraryMissing};
        case OxForm::Value:
        case OxForm::Void:
            return {0, kUntouched};
        case OxForm::Own:
            break;
    }
    std::string name = row.name;
    if (name == "KvwErrorString") return {0, kUntouched};
    if (name == "OxGetConnectionID") return {0, kOxLibraryMissing};
    if (name == "OxMessageBox") return {0, kOxFunctionMissing};
    return {kOxLibraryMissing, kUntouched};  // initialise, terminate, the two that test arguments
}

/// What an optional wrapper gives when the library lacks its function, for empty arguments.
Outcome WithoutFunction(const Row& row) {
    std::string name = row.name;
    // These two test their arguments first, and empty ones fail that test.
    if (name == "OxSyncInvokeActionID" || name == "OxSyncGetCurrentButtonBank") {
        return {kOxBadValue, kUntouched};
    }
    if (row.form == OxForm::Status) return {kOxUnsupported, kOxFunctionMissing};
    return {0, kOxFunctionMissing};  // the handle form, OxGetConnectionID and OxMessageBox
}

TEST_F(ShimTest, WithoutTheLibraryEveryWrapperGivesItsFailureValue) {
    ASSERT_EQ(std::size(kRows), 88u);
    for (const Row& row : kRows) {
        Outcome expected = WithoutLibrary(row);
        Outcome got = row.call();
        EXPECT_EQ(got.result, expected.result) << row.name;
        EXPECT_EQ(got.lastError, expected.lastError) << row.name;
        EXPECT_EQ(g_loadState, kOxLoadFailed) << row.name;
    }
}

TEST_F(ShimTest, WithoutOptionalFunctionsTheirWrappersGiveTenAndEighteen) {
    PutOnPath(SimDriverFolder(L"no-optional"));
    ASSERT_EQ(OxLoadLibrary(), kOxLoadComplete);
    int optional = 0;
    for (const Row& row : kRows) {
        if (row.presence != OxPresence::Optional) continue;
        ++optional;
        Outcome expected = WithoutFunction(row);
        Outcome got = row.call();
        EXPECT_EQ(got.result, expected.result) << row.name;
        EXPECT_EQ(got.lastError, expected.lastError) << row.name;
    }
    EXPECT_EQ(optional, 25);
    EXPECT_EQ(g_loadState, kOxLoaded) << "optional names do not fail the load";

    // With arguments that pass their own tests, the two fall through to the missing entry.
    char bank[16];
    EXPECT_EQ(OxSyncInvokeActionID(1, "Fit"), kOxUnsupported);
    EXPECT_EQ(g_lastError, kOxFunctionMissing);
    g_lastError = kOxNoError;
    EXPECT_EQ(OxSyncGetCurrentButtonBank(1, bank, sizeof bank), kOxUnsupported);
    EXPECT_EQ(g_lastError, kOxFunctionMissing);
    EXPECT_EQ(OxGetNumDevices(), 1) << "the required functions still work";
}

}  // namespace
}  // namespace qvx::testing
