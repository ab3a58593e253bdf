// Command resource files and language files, from small texts made here.
#include "catalogue/cmd_res.h"
#include "catalogue/lang_file.h"

#include <gtest/gtest.h>

namespace {

struct Parsed {
    std::string activate, label, help, description, bitmap;
    int check;
};

Parsed Parse(const std::string& text, const CQvxProCmdLangFile* language = nullptr) {
    CQvxProCmdRes res;
    res.ParseText(text, language);
    return {res.GetActivateCommand(), res.GetLabel(),  res.GetHelpText(),
            res.GetDescription(),     res.GetBitmap(), res.IsCheckButton()};
}

TEST(CmdResTest, TheFiveKeywordsAndOnlyTheFirstAmpersandGoes) {
    auto p = Parse(
        "(Resources (command.ActivateCommand \"ProCmdFoo\") (command.Label \"&Foo && Bar\")\n"
        "  (command.HelpText \"Help me\") (command.Bitmap \"foo.gif\")\n"
        "  (description.Label \"Desc (with parens)\"))");
    EXPECT_EQ(p.activate, "ProCmdFoo");
    EXPECT_EQ(p.label, "Foo && Bar");
    EXPECT_EQ(p.help, "Help me");
    EXPECT_EQ(p.bitmap, "foo.gif");
    EXPECT_EQ(p.description, "Desc (with parens)");
    EXPECT_EQ(p.check, 0);
}

TEST(CmdResTest, KeywordsIgnoreCaseFirstActivateAndLastLabelWin) {
    auto p = Parse(
        "(Resources (COMMAND.ACTIVATECOMMAND \"A\") (command.ActivateCommand \"B\")"
        " (command.Label \"one\") (Command.Label \"two\"))");
    EXPECT_EQ(p.activate, "A");
    EXPECT_EQ(p.label, "two");
}

TEST(CmdResTest, BlanksBeforeTheQuoteAreRetriedButALeadingBlankInTheValueIsNot) {
    EXPECT_EQ(Parse("(Resources (command.Label  \"Two blanks\"))").label, "Two blanks");
    EXPECT_EQ(Parse("(Resources (command.Label\t\n\"Tab newline\"))").label, "Tab newline");
    // " Foo" starts with a blank: the value is what lies between its closing quote and the
    // next quote of the file.
    EXPECT_EQ(Parse("(Resources (command.Label \" Foo\") (command.HelpText \"h\"))").label,
              ") (command.HelpText ");
}

TEST(CmdResTest, StrayParenthesisInAnUnknownValueEndsTheScanEarly) {
    auto p = Parse(
        "(Resources (other.Key \"x)\") (command.Label \"lost\"))"
        "(command.ActivateCommand \"after\")");
    EXPECT_EQ(p.label, "");
    EXPECT_EQ(p.activate, "");
}

TEST(CmdResTest, CheckButtonAnywhereAndNoResourcesBlock) {
    auto p = Parse("(CheckButton) (command.Label \"x\")");
    EXPECT_EQ(p.check, 1);
    EXPECT_EQ(p.label, "") << "without (Resources nothing is read";
    EXPECT_EQ(Parse("(Resources (command.Label \"say (CheckButton\"))").check, 1);
    auto empty = Parse("");
    EXPECT_EQ(empty.activate, "");
    EXPECT_EQ(empty.check, 0);
}

TEST(CmdResTest, MissingValueAtTheEndKeepsWhatWasFound) {
    auto p = Parse("(Resources (command.ActivateCommand \"ProCmdX\") (command.Label");
    EXPECT_EQ(p.activate, "ProCmdX");
    EXPECT_EQ(p.label, "");
    const char withZero[] = "(Resources (command.Label \"a\0b\") (command.HelpText \"h\"))";
    auto cut = Parse(std::string(withZero, sizeof withZero - 1));
    EXPECT_EQ(cut.label, "a") << "a zero byte ends the text";
    EXPECT_EQ(cut.help, "");
}

TEST(CmdResTest, TranslatedValuesGoThroughTheLanguageFile) {
    CQvxProCmdLangFile language;
    language.OpenText("&Open\r\n&Oeffnen\r\nTip\nHinweis\n");
    auto p = Parse(
        "(Resources (command.ActivateCommand \"&Open\") (command.Label \"&Open\")"
        " (command.HelpText \"Tip\") (command.Bitmap \"Tip\"))",
        &language);
    EXPECT_EQ(p.activate, "&Open") << "never translated";
    EXPECT_EQ(p.label, "Oeffnen");
    EXPECT_EQ(p.help, "Hinweis");
    EXPECT_EQ(p.bitmap, "Tip") << "never translated";
}

TEST(LangFileTest, LookupsOfTheEdgeCases) {
    struct Case {
        const char* text;
        const char* key;
        int found;
        const char* out;
    } cases[] = {
        {"Foo\r\nBar\r\n", "Foo", 1, "Bar"},
        {"xFooy\nBar\n", "Foo", 1, "Bar"},
        {"Foo", "Foo", 0, "Foo"},
        {"Foo\n", "Foo", 1, ""},
        {"Foo\n   \nBar\n", "Foo", 1, ""},
        {"Foo\nOne\nFoo\nTwo\n", "Foo", 1, "One"},
        {"Other\nline\n", "Foo", 0, "Foo"},
    };
    for (const Case& c : cases) {
        CQvxProCmdLangFile language;
        ASSERT_EQ(language.OpenText(c.text), 1);
        std::string out;
        EXPECT_EQ(language.Lookup(out, c.key), c.found) << c.text;
        EXPECT_EQ(out, c.out) << c.text;
    }
    CQvxProCmdLangFile none;
    std::string out = "x";
    EXPECT_EQ(none.Lookup(out, nullptr), 0);
    EXPECT_EQ(out, "");
    EXPECT_EQ(none.OpenText("a"), 1);
    EXPECT_EQ(none.OpenText("b"), 0) << "a second open keeps the first";
}

TEST(LangFileTest, OneLanguageFilePerDirectory) {
    EXPECT_EQ(LanguageFileFor(L"C:\\host\\text\\resource\\procmdfoo.res"),
              L"C:\\host\\text\\resource.txt");
    EXPECT_EQ(LanguageFileFor(L"C:\\host\\text.v2\\procmd.res"), L"C:\\host\\text.txt");
    EXPECT_EQ(LanguageFileFor(L"/usr/host/resource/procmdfoo.res"), L"/usr/host/resource.txt");
}

}  // namespace
