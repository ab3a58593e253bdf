#include "core/language.h"

#include <gtest/gtest.h>

namespace qvx::core {
namespace {

class LanguageTest : public ::testing::Test {
protected:
    void SetUp() override {
        g_langId = 0x0409;
        g_langCode = L"en-US";
    }
};

TEST_F(LanguageTest, ProLangIsMatchedIgnoringCase) {
    ChooseLanguage(std::wstring(L"GERMAN"), 0x0411);
    EXPECT_EQ(g_langId, 0x0407);
    EXPECT_EQ(g_langCode, L"de-DE");
}

TEST_F(LanguageTest, UnknownProLangKeepsDefaultsAndNeverAsksTheThread) {
    ChooseLanguage(std::wstring(L"italian"), 0x0411);
    EXPECT_EQ(g_langId, 0x0409);
    EXPECT_EQ(g_langCode, L"en-US");
}

TEST_F(LanguageTest, EmptyOrUnsetProLangFallsBackToTheThreadLanguage) {
    ChooseLanguage(std::nullopt, 0x0411);
    EXPECT_EQ(g_langCode, L"ja-JP");
    g_langCode = L"en-US";
    ChooseLanguage(std::wstring(), 0x0804);
    EXPECT_EQ(g_langCode, L"zh-CN");
    EXPECT_EQ(g_langId, 0x0804);
}

TEST_F(LanguageTest, ThreadLanguageIsComparedOnItsLow16Bits) {
    ChooseLanguage(std::nullopt, 0x1'040C);
    EXPECT_EQ(g_langCode, L"fr-FR");
}

TEST_F(LanguageTest, UnsupportedThreadLanguageKeepsDefaults) {
    ChooseLanguage(std::nullopt, 0x0410);
    EXPECT_EQ(g_langId, 0x0409);
    EXPECT_EQ(g_langCode, L"en-US");
}

TEST_F(LanguageTest, ShortNamesOfTheSecondTable) {
    struct Case {
        const char* name;
        std::optional<std::uint16_t> id;
    } cases[] = {{"DE", 0x0407}, {"simplified_chinese", 0x0804},       {"jp_JP", 0x0411},
                 {"fr", 0x040C}, {"chinese-simplified", std::nullopt}, {"", std::nullopt}};
    for (const Case& c : cases) {
        EXPECT_EQ(LanguageIdForName(c.name), c.id) << c.name;
    }
    SetLanguageIdFromName("klingon");
    EXPECT_EQ(g_langId, 0x0409);
}

}  // namespace
}  // namespace qvx::core
