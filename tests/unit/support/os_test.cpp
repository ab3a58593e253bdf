#include "support/os.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace qvx::os {
namespace {

TEST(OsTextTest, Cp1252MapsItsHighRangeAndRoundTrips) {
    std::string bytes = "A\x80\x93\xE4\x9F";
    std::wstring wide = WidenCp1252(bytes);
    EXPECT_EQ(wide, std::wstring(L"A\x20AC\x201C\x00E4\x0178"));
    EXPECT_EQ(NarrowCp1252(wide), bytes);
    EXPECT_EQ(NarrowCp1252(L"\x4E2D"), "?");
}

TEST(OsTextTest, Utf8RoundTripsAndReplacesInvalidBytes) {
    std::wstring wide = WidenUtf8("a\xC3\xA4\xE4\xB8\xAD");
    EXPECT_EQ(wide, std::wstring(L"a\x00E4\x4E2D"));
    EXPECT_EQ(NarrowUtf8(wide), "a\xC3\xA4\xE4\xB8\xAD");
    // A lone continuation byte, a truncated sequence and an overlong form each give U+FFFD.
    EXPECT_EQ(WidenUtf8("\x80"), std::wstring(1, L'\xFFFD'));
    EXPECT_EQ(WidenUtf8("x\xE4\xB8"), std::wstring(L"x\xFFFD\xFFFD"));
    EXPECT_EQ(WidenUtf8("\xC0\xAF"), std::wstring(L"\xFFFD\xFFFD"));
}

TEST(OsFileTest, ReadWholeFileEndsWithAZeroByteAndMissingFileIsEmpty) {
    auto dir = std::filesystem::temp_directory_path();
    auto path = dir / "qvx_os_test.bin";
    {
        std::ofstream out(path, std::ios::binary);
        out.write("ab\0c", 4);
    }
    auto bytes = ReadWholeFile(path.wstring());
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->Length(), 4u);
    EXPECT_EQ(bytes->Data()[3], 'c');
    EXPECT_EQ(bytes->Data()[4], '\0');
    auto status = StatFile(path.wstring());
    ASSERT_TRUE(status);
    EXPECT_EQ(status->size, 4u);
    EXPECT_FALSE(status->isDirectory);
    std::filesystem::remove(path);
    EXPECT_FALSE(ReadWholeFile(path.wstring()));
    EXPECT_FALSE(StatFile(path.wstring()));
    EXPECT_FALSE(ReadWholeFile(dir.wstring())) << "a directory is not a file";
}

TEST(OsEnvTest, SetAndRemoveAreSeenByGetEnv) {
    SetEnv(L"QVX_OS_TEST", std::wstring(L"v\x00E4"));
    EXPECT_EQ(GetEnv(L"QVX_OS_TEST"), std::wstring(L"v\x00E4"));
    SetEnv(L"QVX_OS_TEST", std::nullopt);
    EXPECT_FALSE(GetEnv(L"QVX_OS_TEST"));
}

}  // namespace
}  // namespace qvx::os
