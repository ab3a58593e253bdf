// What the plug-in DLL carries besides its code: the pictures at their sizes and depths, the
// two icon groups, the texts of the device's functions in the four languages that have them,
// and the two versions of the version block.
#include "support/os.h"
#include "support/text_table.h"
#include "support/win32_handles.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class DllResourcesTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_dll.Reset(LoadLibraryExW(qvx::os::WidenUtf8(QVX_PLUGIN_DLL).c_str(), nullptr,
                                   LOAD_LIBRARY_AS_DATAFILE));
        ASSERT_TRUE(m_dll);
    }
    /// The raw resource, or null.
    const BYTE* Raw(LPCWSTR type, UINT id, DWORD* size = nullptr) const {
        HRSRC found = FindResourceW(m_dll.Get(), MAKEINTRESOURCEW(id), type);
        if (!found) return nullptr;
        if (size) *size = SizeofResource(m_dll.Get(), found);
        return static_cast<const BYTE*>(LockResource(LoadResource(m_dll.Get(), found)));
    }
    ovklib::CModuleHandle m_dll;
};

TEST_F(DllResourcesTest, PicturesHaveTheirSizesAndDepths) {
    struct Row {
        UINT id;
        LONG width, height;
        WORD depth;
    };
    const Row rows[] = {{291, 150, 70, 8},   {298, 22, 22, 32},   {299, 230, 129, 24},
                        {300, 320, 240, 24}, {301, 320, 240, 24}, {302, 320, 240, 24},
                        {303, 320, 240, 24}, {304, 320, 240, 24}, {24576, 12, 12, 32},
                        {24577, 12, 12, 32}};
    for (const Row& row : rows) {
        const auto* info = reinterpret_cast<const BITMAPINFOHEADER*>(Raw(RT_BITMAP, row.id));
        ASSERT_NE(info, nullptr) << "bitmap " << row.id;
        EXPECT_EQ(info->biWidth, row.width) << row.id;
        EXPECT_EQ(info->biHeight, row.height) << row.id;
        EXPECT_EQ(info->biBitCount, row.depth) << row.id;
    }
}

TEST_F(DllResourcesTest, TwoIconGroupsHoldSeventeenImagesThatAllExist) {
    int images = 0;
    for (UINT group : {1u, 297u}) {
        const BYTE* dir = Raw(RT_GROUP_ICON, group);
        ASSERT_NE(dir, nullptr) << "group " << group;
        WORD count = *reinterpret_cast<const WORD*>(dir + 4);
        for (WORD i = 0; i < count; ++i) {
            // Entries of 14 bytes after the 6-byte header; the image's id is the last word.
            WORD id = *reinterpret_cast<const WORD*>(dir + 6 + 14 * i + 12);
            EXPECT_NE(Raw(RT_ICON, id), nullptr) << "group " << group << " image " << id;
        }
        images += count;
    }
    EXPECT_EQ(images, 17);
}

TEST_F(DllResourcesTest, DeviceTextsAreThereInEnglishFrenchJapaneseAndChinese) {
    for (WORD lang : {0x0409, 0x040C, 0x0411, 0x0804}) {
        int found = 0;
        for (UINT id = 24576; id < 25400; ++id) {
            auto expected = qvx::CompiledText(id, lang);
            if (!expected) continue;
            ++found;
            HRSRC block =
                FindResourceExW(m_dll.Get(), RT_STRING, MAKEINTRESOURCEW(id / 16 + 1), lang);
            ASSERT_NE(block, nullptr) << id << " in " << lang;
            auto* p = static_cast<const WCHAR*>(LockResource(LoadResource(m_dll.Get(), block)));
            for (UINT i = 0; i < id % 16; ++i) p += 1 + *p;
            EXPECT_EQ(std::wstring(p + 1, *p), *expected) << id << " in " << lang;
        }
        EXPECT_GE(found, 38) << "language " << lang;
    }
}

TEST_F(DllResourcesTest, VersionBlockHasTheFileAndProductVersions) {
    DWORD size = 0;
    const BYTE* raw = Raw(RT_VERSION, 1, &size);
    ASSERT_NE(raw, nullptr);
    // VerQueryValue wants a writable copy of the block.
    std::vector<BYTE> block(raw, raw + size);
    VS_FIXEDFILEINFO* info = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&info), &length));
    EXPECT_EQ(info->dwFileVersionMS, MAKELONG(4, 2));
    EXPECT_EQ(info->dwFileVersionLS, MAKELONG(14976, 18129));
    EXPECT_EQ(info->dwProductVersionMS, MAKELONG(4, 2));
    EXPECT_EQ(info->dwProductVersionLS, MAKELONG(14976, 1));
    wchar_t* text = nullptr;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904b0\\ProductVersion",
                               reinterpret_cast<void**>(&text), &length));
    EXPECT_STREQ(text, L"2.4.1.14976");
}

}  // namespace
