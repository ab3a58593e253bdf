// The widgets' arithmetic and state: text measuring, the scrolling states, the progress bar's
// layout and the text factory's sizes.
#include "lcd/widgets/lcd_progress_bar.h"
#include "lcd/widgets/lcd_scrolling_text.h"
#include "lcd/widgets/ovk_lcd_page.h"
#include "lcd_fakes.h"

#include <gtest/gtest.h>

namespace qvx::lcd {
namespace {

using test::CRecordingGfx;

TEST(LcdText, IsMeasuredOnlyWhenTextFontOrWrappingChanged) {
    CRecordingGfx gfx;
    CLCDText text;
    text.SetSize(100, 20);
    text.SetText(L"Part");
    text.OnDraw(gfx);
    text.OnDraw(gfx);
    EXPECT_EQ(gfx.measurements, 2);  // height and width, once
    text.SetText(L"Part");
    text.OnDraw(gfx);
    EXPECT_EQ(gfx.measurements, 2);
    text.SetText(L"Assembly");
    text.OnDraw(gfx);
    text.SetFontPointSize(14);
    text.OnDraw(gfx);
    text.SetWordWrap(true);
    text.OnDraw(gfx);
    EXPECT_EQ(gfx.measurements, 8);
    EXPECT_EQ(gfx.texts.size(), 6u);
}

TEST(LcdText, EmptyTextFillsAnOpaqueBackgroundAndDrawsNothingElse) {
    CRecordingGfx gfx;
    CLCDText text;
    text.SetSize(50, 10);
    text.SetOrigin(5, 6);
    text.SetBackgroundMode(kBackgroundOpaque);
    text.OnDraw(gfx);
    ASSERT_EQ(gfx.fills.size(), 1u);
    EXPECT_EQ(gfx.fills[0], (LcdRect{5, 6, 55, 16}));
    EXPECT_TRUE(gfx.texts.empty());
    EXPECT_EQ(gfx.measurements, 0);
}

TEST(LcdCollection, DrawsVisibleObjectsRelativeToItsOrigin) {
    CRecordingGfx gfx;
    CLCDCollection collection;
    collection.SetOrigin(10, 20);
    auto* shown = collection.AddObject(std::make_unique<CLCDText>());
    auto* hidden = collection.AddObject(std::make_unique<CLCDText>());
    shown->SetText(L"a");
    shown->SetSize(30, 15);
    shown->SetOrigin(1, 2);
    hidden->SetText(L"b");
    hidden->Show(false);
    collection.OnDraw(gfx);
    ASSERT_EQ(gfx.texts, std::vector<std::wstring>{L"a"});
    EXPECT_EQ(gfx.boxes[0], (LcdRect{11, 22, 41, 37}));
    EXPECT_TRUE(collection.RemoveObject(hidden));
    EXPECT_FALSE(collection.RemoveObject(hidden));
}

class ScrollingTextTest : public ::testing::Test {
protected:
    ScrollingTextTest() : text([this] { return now; }) {
        text.SetSize(70, 15);  // ten characters of the recorder's 7 pixels
        text.SetStartDelay(1000);
        text.SetEndDelay(500);
        text.SetSpeed(20);
    }
    void DrawAt(std::uint32_t tick) {
        now = tick;
        text.OnUpdate(tick);
        text.OnDraw(gfx);
    }
    std::uint32_t now = 5000;
    CRecordingGfx gfx;
    CLCDScrollingText text;
};

TEST_F(ScrollingTextTest, TextThatFitsWaitsThenPassesStraightToTheEnd) {
    text.SetText(L"short");
    DrawAt(5000);
    EXPECT_EQ(text.GetDistance(), 0);
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kWaitStart);
    DrawAt(6001);
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kWaitEnd);
    DrawAt(6502);
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kDone);
    DrawAt(60000);
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kDone);
    EXPECT_EQ(text.GetLogicalOrigin(), (LcdPoint{0, 0}));
}

TEST_F(ScrollingTextTest, LongTextScrollsBySpeedAndStopsAtItsDistance) {
    text.SetText(L"fifteen letters");  // 105 pixels: 35 to go
    DrawAt(5000);
    ASSERT_EQ(text.GetDistance(), 35);
    DrawAt(6001);
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kScrolling);
    DrawAt(7001);  // one second at 20 pixels a second
    EXPECT_EQ(text.GetLogicalOrigin(), (LcdPoint{-20, 0}));
    DrawAt(8001);
    EXPECT_EQ(text.GetLogicalOrigin(), (LcdPoint{-35, 0}));
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kWaitEnd);
    EXPECT_EQ(text.GetLogicalSize(), (LcdSize{105, 15}));
}

TEST_F(ScrollingTextTest, RepeatStartsOverAndOnlyANewTextResets) {
    text.SetRepeat(true);
    text.SetText(L"short");
    DrawAt(5000);
    DrawAt(6001);
    DrawAt(6502);
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kWaitStart);
    DrawAt(7600);
    ASSERT_EQ(text.GetState(), CLCDScrollingText::kWaitEnd);
    text.SetText(L"short");
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kWaitEnd);
    text.SetText(L"other");
    EXPECT_EQ(text.GetState(), CLCDScrollingText::kWaitStart);
    EXPECT_EQ(text.GetDistance(), -1);
}

TEST(LcdProgressBar, EachStyleStaysInsideItsWidthAtTheRangesEnds) {
    for (int style : {0, 1, 2}) {
        CLCDProgressBar bar;
        bar.SetSize(100, 10);
        bar.SetOrigin(10, 0);
        bar.SetStyle(style);
        int room = style == 0 ? 100 : 94;
        for (float pos : {-5.0f, 0.0f, 50.0f, 100.0f, 250.0f}) {
            bar.SetPos(pos);
            auto layout = bar.ComputeLayout();
            int expected = pos <= 0 ? 0 : pos >= 100 ? room : room / 2;
            EXPECT_EQ(bar.ScaledPosition(), expected) << "style " << style << " pos " << pos;
            LcdRect drawn = style == 0 ? layout.fill : layout.cursor;
            EXPECT_LE(drawn.right, 110) << "style " << style << " pos " << pos;
            EXPECT_GE(drawn.left, 10);
        }
    }
}

TEST(LcdProgressBar, DottedStyleDrawsALineToTheCursorAtMidHeight) {
    CRecordingGfx gfx;
    CLCDProgressBar bar;
    bar.SetSize(100, 10);
    bar.SetStyle(CLCDProgressBar::kDottedCursor);
    bar.SetRange(0, 10);
    bar.SetPos(5);
    bar.OnDraw(gfx);
    ASSERT_EQ(gfx.lines.size(), 1u);
    EXPECT_EQ(gfx.lines[0], std::make_pair(0, 47));
    EXPECT_EQ(gfx.fills.back(), (LcdRect{47, 0, 52, 10}));
    EXPECT_EQ(gfx.frames.back(), (LcdRect{0, 0, 100, 10}));
}

TEST(LcdTextFactory, SizeTableOfBothPanels) {
    COvkColorLcdPageImpl color;
    COvkMonoLcdPageImpl mono;
    struct Row {
        CEzLcdPage* page;
        int size, height, fontHeight, weight, logicalY;
    };
    Row rows[] = {{&color, 0, 14, -11, 400, 0},  {&color, 1, 19, -16, 400, 0},
                  {&color, 2, 24, -21, 400, -1}, {&color, 3, 37, -32, 400, 0},
                  {&mono, 1, 12, -9, 400, 0},    {&mono, 2, 13, -11, 400, 0},
                  {&mono, 3, 20, -16, 700, 0}};
    for (const Row& r : rows) {
        CLCDText* text = r.page->AddText(CEzLcdPage::kStaticText, r.size, 0, 120, 1, 400);
        ASSERT_NE(text, nullptr) << r.size;
        EXPECT_EQ(text->GetSize(), (LcdSize{120, r.height})) << r.size;
        EXPECT_EQ(text->GetFont().height, r.fontHeight) << r.size;
        EXPECT_EQ(text->GetFont().weight, r.weight) << r.size;
        EXPECT_EQ(text->GetLogicalOrigin().y, r.logicalY) << r.size;
        EXPECT_EQ(text->GetFont().face, r.page == &color ? L"Arial" : L"Microsoft Sans Serif");
    }
    EXPECT_EQ(color.AddText(CEzLcdPage::kStaticText, 4, 0, 10, 1, 400), nullptr);
    EXPECT_EQ(mono.AddText(CEzLcdPage::kStaticText, 0, 0, 10, 1, 400), nullptr);
    EXPECT_TRUE(color.AddText(CEzLcdPage::kStaticText, 1, 0, 10, 2, 400)->GetWordWrap());
}

TEST(LcdTextFactory, CreateTextScalesTheHeightByTheFontsRatio) {
    COvkColorLcdPageImpl page;
    CLCDText* text = page.CreateText(/*points=*/11, /*width=*/250, 500, /*lines=*/1);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->GetFont().height, -15);          // 11 points at 96 dots an inch
    EXPECT_EQ(text->GetSize(), (LcdSize{250, 18}));  // 19 * 15 / 16, rounded
    EXPECT_EQ(text->GetAlignment(), kFormatEndEllipsis);
    EXPECT_EQ(text->GetLogicalOrigin(), (LcdPoint{0, 0}));
    EXPECT_EQ(page.CreateText(24, 100, 500, 2)->GetHeight(), 76);
}

TEST(LcdGeometry, MulDivRoundsHalfAwayFromZero) {
    EXPECT_EQ(MulDiv(11, 96, 72), 15);
    EXPECT_EQ(MulDiv(-3, 1, 2), -2);
    EXPECT_EQ(MulDiv(3, 1, -2), -2);
    EXPECT_EQ(MulDiv(1, 1, 0), -1);
}

}  // namespace
}  // namespace qvx::lcd
