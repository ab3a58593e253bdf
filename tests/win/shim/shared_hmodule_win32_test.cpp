// The shared module handle frees its module with the last copy.
#include "client/ovk/shared_hmodule_win32.h"

#include "shim_fixture.h"

namespace qvx::testing {
namespace {

TEST(SharedModuleTest, ModuleIsFreedWhenTheLastCopyGoes) {
    std::wstring path = SimDriverFolder(L"full") + L"\\oxappdll.dll";
    ovk::shared_hmodule module(LoadLibraryW(path.c_str()));
    ASSERT_TRUE(module);
    {
        ovk::shared_hmodule copy = module;
        module.reset();
        EXPECT_NE(GetModuleHandleW(L"oxappdll.dll"), nullptr);
    }
    EXPECT_EQ(GetModuleHandleW(L"oxappdll.dll"), nullptr);
}

TEST(SharedModuleTest, NullHandleMakesAnEmptyButValidObject) {
    ovk::shared_hmodule none(LoadLibraryW(L"no_such_library_here"));
    EXPECT_FALSE(none);
    EXPECT_EQ(none.use_count(), 1) << "owned, with nothing to free";
}

}  // namespace
}  // namespace qvx::testing
