// Texts by id: the same table serves both builds, in g_langId with English behind it.
#include "support/language_id.h"
#include "support/text_table.h"

#include <gtest/gtest.h>

namespace {

class TextTableTest : public ::testing::Test {
protected:
    void TearDown() override { g_langId = 0x0409; }
};

TEST_F(TextTableTest, GermanAndEnglishComeFromTheirOwnLanguage) {
    struct Row {
        std::uint32_t id;
        const wchar_t* english;
        const wchar_t* german;
    };
    const Row rows[] = {
        {284, L"All Commands", L"Alle Befehle"},
        {807, L"Modify", L"\u00c4ndern"},
        {810, L"Done/Return", L"Fertig/Zur\u00fcck"},
        {291, L"Version %s\nCopyright \u00a9 Quorvex. All rights reserved.",
         L"Version %s\nCopyright \u00a9 Quorvex. Alle Rechte vorbehalten."},
        {261, L"Part", L"Part"},
    };
    for (const Row& row : rows) {
        g_langId = 0x0409;
        EXPECT_EQ(qvx::LoadText(row.id), row.english) << "id " << row.id;
        g_langId = 0x0407;
        EXPECT_EQ(qvx::LoadText(row.id), row.german) << "id " << row.id;
    }
}

TEST_F(TextTableTest, EveryIdOfBothRangesHasBothLanguagesButTheGaps) {
    for (std::uint32_t id = 201; id <= 810; ++id) {
        bool gap = id == 282 || (id >= 285 && id <= 289) || (id > 296 && id < 800);
        for (std::uint16_t lang : {0x0409, 0x0407}) {
            EXPECT_EQ(qvx::CompiledText(id, lang).has_value(), !gap) << id << " in " << lang;
        }
    }
}

TEST_F(TextTableTest, MissingIdIsEmpty) {
    g_langId = 0x0407;
    EXPECT_EQ(qvx::LoadText(282), L"");
    EXPECT_EQ(qvx::LoadText(4242), L"");
}

TEST_F(TextTableTest, LanguageWithoutTheseTextsFallsBackToEnglish) {
    g_langId = 0x040C;  // French carries only the driver's texts
    EXPECT_EQ(qvx::LoadText(284), L"All Commands");
    EXPECT_EQ(qvx::LoadText(256), L"View");
}

}  // namespace
