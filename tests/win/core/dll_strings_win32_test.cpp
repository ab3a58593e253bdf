// The DLL's string resources, made from the same table as the native build's: each text by
// id in English and German as LoadStringW and FindResourceExW find them.
#include "support/language_id.h"
#include "support/os.h"
#include "support/text_table.h"
#include "support/windows_api.h"

#include <gtest/gtest.h>

namespace {

std::wstring FromModule(HMODULE module, UINT id, WORD langId) {
    HRSRC found =
        FindResourceExW(module, MAKEINTRESOURCEW(6), MAKEINTRESOURCEW(id / 16 + 1), langId);
    if (!found) return L"<no block>";
    auto* p = static_cast<const WCHAR*>(LockResource(LoadResource(module, found)));
    for (UINT i = 0; i < id % 16; ++i) p += 1 + *p;
    return std::wstring(p + 1, *p);
}

TEST(DllStringsTest, EveryTextOfTheTableIsInTheDllInBothLanguages) {
    HMODULE dll = LoadLibraryExW(qvx::os::WidenUtf8(QVX_PLUGIN_DLL).c_str(), nullptr,
                                 LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(dll, nullptr);
    for (UINT id = 201; id <= 810; ++id) {
        for (WORD lang : {0x0409, 0x0407}) {
            auto expected = qvx::CompiledText(id, lang);
            if (!expected) continue;
            EXPECT_EQ(FromModule(dll, id, lang), *expected) << id << " in " << lang;
        }
    }
    wchar_t buffer[128] = {};
    EXPECT_GT(LoadStringW(dll, 284, buffer, 128), 0);
    EXPECT_TRUE(std::wstring(buffer) == L"All Commands" || std::wstring(buffer) == L"Alle Befehle");
    EXPECT_EQ(LoadStringW(dll, 282, buffer, 128), 0) << "282 has no text";
    FreeLibrary(dll);
}

}  // namespace
