// The CAD info page against a document and model in memory: its layout, the three faces of
// the mass block, the message box without a document, and the buttons that do nothing.
#include "lcd/cad_info_page.h"
#include "lcd/lm_lcd_library.h"
#include "lcd_fakes.h"

#include <gtest/gtest.h>

#include <map>

namespace qvx::lcd {
namespace {

using Page = CLcdCadInfoPage;

// The two reads share the name Update; each interface's goes to its own function here.
class CDocumentRead : public _Qvx::ICadDocument {
public:
    void Update() final { DocumentUpdate(); }
    virtual void DocumentUpdate() = 0;
};
class CModelRead : public _Qvx::ICadModel {
public:
    void Update() final { ModelUpdate(); }
    virtual void ModelUpdate() = 0;
};

/// A document and model whose reads copy what the test put ready.
class CData : public CDocumentRead, public CModelRead, public _Qvx::IInstance {
public:
    struct Read {
        std::wstring type, name, created, lastSaved;
        std::int64_t size = 0;
        bool massProperties = false;
        std::wstring material, density, densityUnit, mass, massUnit, volume, volumeUnit;
    };

    const std::wstring& GetType() const override { return m_now.type; }
    const std::wstring& GetName() const override { return m_now.name; }
    std::int64_t GetFileSize() const override { return m_now.size; }
    const std::wstring& GetAuthor() const override { return m_unknown; }
    const std::wstring& GetLastSavedBy() const override { return m_unknown; }
    const std::wstring& GetCreated() const override { return m_now.created; }
    const std::wstring& GetLastSaved() const override { return m_now.lastSaved; }
    /// A read without mass: the mass, the volume and their units are dropped.
    void DocumentUpdate() override {
        m_now = next;
        m_now.mass = m_now.massUnit = m_now.volume = m_now.volumeUnit = L"";
    }
    const std::wstring& GetMaterial() const override { return m_now.material; }
    const std::wstring& GetDensity() const override { return m_now.density; }
    const std::wstring& GetDensityUnit() const override { return m_now.densityUnit; }
    const std::wstring& GetMass() const override { return m_now.mass; }
    const std::wstring& GetMassUnit() const override { return m_now.massUnit; }
    const std::wstring& GetVolume() const override { return m_now.volume; }
    const std::wstring& GetVolumeUnit() const override { return m_now.volumeUnit; }
    bool HasMassProperties() const override { return m_now.massProperties; }
    void ModelUpdate() override {
        ++modelReads;
        m_now = next;
    }

    Read next;
    int modelReads = 0;

private:
    Read m_now;
    std::wstring m_unknown = L"Unknown";
};

class CFactory : public _Qvx::IFactory {
public:
    explicit CFactory(_Qvx::IInstance* data) : m_data(data) {}
    _Qvx::IInstance* CreateInstance(const std::wstring& id, std::uintptr_t window) override {
        askedFor = id;
        askedWith = window;
        return std::exchange(m_data, nullptr);
    }
    std::wstring askedFor;
    std::uintptr_t askedWith = 0;

private:
    _Qvx::IInstance* m_data;
};

/// The plug-in's pictures at their sizes; any other id names nothing.
class CFakeResources : public IPageResources {
public:
    CLcdPicture LoadPlainBitmap(int id) override { return Load(id, 24); }
    CLcdPicture LoadSectionBitmap(int id, std::optional<std::uint8_t> opaqueAlpha) override {
        return Load(id, id == 298 ? 32 : (opaqueAlpha ? 32 : 24));
    }
    CLcdPicture LoadIconImage(int id) override { return Load(id, 32); }

    std::map<int, int> loads;

private:
    static void Keep(void*) {}
    CLcdPicture Load(int id, int bits) {
        ++loads[id];
        static const std::map<int, LcdSize> kSizes = {
            {297, {32, 32}}, {298, {22, 22}}, {299, {230, 129}}, {300, {320, 240}}};
        auto found = kSizes.find(id);
        if (found == kSizes.end()) return {};
        return {reinterpret_cast<void*>(static_cast<std::uintptr_t>(id)), &Keep, found->second,
                bits};
    }
};

LcdPoint At(const CLCDBase& object) { return object.GetOrigin(); }

class CadInfoPageTest : public ::testing::Test {
protected:
    CadInfoPageTest() {
        COvkLcdConnection::Instance(L"Test applet").Impl().SetLibrary(m_library);
        EXPECT_TRUE(COvkLcdConnection::Instance().Connect(false));
    }
    ~CadInfoPageTest() override {
        m_page.reset();
        COvkLcdConnection::Instance().Disconnect();
        COvkLcdConnection::Instance().Impl().SetLibrary(SystemLcdLibrary());
    }

    /// Lays the page out and shows it, as the window does once connected.
    void Make(_Qvx::IInstance* data) {
        m_factory = std::make_shared<CFactory>(data);
        m_page = std::make_unique<Page>(0x4321, m_factory, m_resources);
        ASSERT_TRUE(m_page->Create(L"Creo Parametric"));
        m_page->Show();
    }
    void MakeWithData() {
        m_data = new CData();
        Make(m_data);
    }
    /// What the window does on a change of document: a read without mass, then a refresh.
    void DocumentChanged() {
        m_data->DocumentUpdate();
        m_page->Refresh();
    }
    void Ok() { EXPECT_EQ(m_page->OnOk(), 0); }
    void OpenPart() {
        m_data->next.type = L"Part";
        m_data->next.name = L"bracket.prt";
        m_data->next.size = 48213;
        m_data->next.created = m_data->next.lastSaved = L"11/22/26 09:14:02";
        m_data->next.massProperties = true;
        m_data->next.material = L"STEEL";
        m_data->next.density = L"7.83e-06";
        m_data->next.densityUnit = L"kg / mm^3";
        m_data->next.mass = L"0.412";
        m_data->next.massUnit = L"kg";
        m_data->next.volume = L"5.26e+04";
        m_data->next.volumeUnit = L"mm^3";
    }
    const CLCDText& T(Page::Field field) const { return *m_page->Text(field); }
    bool Shown(Page::Field field) const { return T(field).IsVisible(); }
    void ExpectMassBlock(bool shown) const {
        for (Page::Field f :
             {Page::kMassLabel, Page::kMassValue, Page::kMaterialLabel, Page::kMaterialValue,
              Page::kVolumeLabel, Page::kVolumeValue, Page::kDensityLabel, Page::kDensityValue}) {
            EXPECT_EQ(Shown(f), shown) << "field " << f;
        }
    }
    void ExpectDocumentValues(bool shown) const {
        for (Page::Field f : {Page::kTypeValue, Page::kAuthorValue, Page::kFileSizeValue,
                              Page::kCreatedValue, Page::kLastSavedValue, Page::kSavedByValue}) {
            EXPECT_EQ(Shown(f), shown) << "field " << f;
        }
    }
    void ExpectLabelsShown() const {
        for (Page::Field f :
             {Page::kTitle, Page::kTypeLabel, Page::kAuthorLabel, Page::kFileSizeLabel,
              Page::kCreatedLabel, Page::kLastSavedLabel, Page::kSavedByLabel}) {
            EXPECT_TRUE(Shown(f)) << "field " << f;
        }
    }
    bool TipShown() const {
        return m_page->Tip()->Plate().IsVisible() && m_page->Tip()->Text().IsVisible();
    }

    test::CFakeLibrary m_library;
    CFakeResources m_resources;
    std::shared_ptr<CFactory> m_factory;
    CData* m_data = nullptr;  // owned by the page
    std::unique_ptr<Page> m_page;
};

TEST_F(CadInfoPageTest, LaysOutBackgroundLogoTextsTipAndSmallPictureInOrder) {
    MakeWithData();
    EXPECT_EQ(m_factory->askedFor, L"CID_CADDocumentData");
    EXPECT_EQ(m_factory->askedWith, 0x4321u);
    const auto& objects = m_page->LcdPage()->Objects();
    // Background, logo, 13 document texts, tip plate and text, 8 mass texts, small picture;
    // then, as no document is open yet, the message box's plate, icon and text.
    ASSERT_EQ(objects.size(), 29u);
    EXPECT_EQ(objects[0]->Bounds(), (LcdRect{0, 0, 320, 240}));
    EXPECT_EQ(objects[1]->Bounds(), (LcdRect{14, 7, 36, 29}));  // a 22 x 22 logo, centred

    struct Expected {
        Page::Field field;
        int width, x, y;
        LcdColor color;
        const wchar_t* text;
    };
    const Expected expected[] = {
        {Page::kTitle, 250, 60, 9, 0xFFFFFF, nullptr},
        {Page::kTypeLabel, 106, 16, 50, 0xF09F1F, L"Type:"},
        {Page::kTypeValue, 188, 122, 50, 0xFFFFFF, nullptr},
        {Page::kSavedByLabel, 106, 16, 160, 0xF09F1F, L"Last Saved by:"},
        {Page::kSavedByValue, 188, 122, 160, 0xFFFFFF, nullptr},
        {Page::kMassLabel, 56, 16, 190, 0xF09F1F, L"Mass:"},
        {Page::kMaterialValue, 88, 222, 190, 0xFFFFFF, nullptr},
        {Page::kDensityLabel, 61, 161, 210, 0xF09F1F, L"Density:"},
        {Page::kDensityValue, 88, 222, 210, 0xFFFFFF, nullptr},
    };
    for (const Expected& e : expected) {
        const CLCDText& text = T(e.field);
        EXPECT_EQ(text.GetWidth(), e.width) << "field " << e.field;
        EXPECT_EQ(At(text), (LcdPoint{e.x, e.y})) << "field " << e.field;
        EXPECT_EQ(text.GetForegroundColor(), e.color) << "field " << e.field;
        EXPECT_EQ(text.GetFont().height, FontHeightForPoints(11)) << "field " << e.field;
        EXPECT_EQ(text.GetAlignment(), kFormatEndEllipsis) << "field " << e.field;
        if (e.text) {
            EXPECT_EQ(text.GetText(), e.text);
        }
    }
    // Order: the tip sits between the last document value and the mass label.
    EXPECT_EQ(objects[14].get(), m_page->Text(Page::kSavedByValue));
    EXPECT_EQ(objects[15].get(), &m_page->Tip()->Plate());
    EXPECT_EQ(objects[16].get(), &m_page->Tip()->Text());
    EXPECT_EQ(objects[17].get(), m_page->Text(Page::kMassLabel));
    EXPECT_EQ(objects[25].get(), m_page->SmallBitmap());
    EXPECT_EQ(objects[26].get(), &m_page->Messagebox()->Plate());
}

TEST_F(CadInfoPageTest, TipIsAStripOfThePlateCentredAcrossTheMassBlock) {
    MakeWithData();
    const CLcdTip& tip = *m_page->Tip();
    EXPECT_EQ(At(tip.Plate()), (LcdPoint{45, 186}));
    EXPECT_EQ(tip.Plate().GetSize(), (LcdSize{230, 129}));
    EXPECT_EQ(tip.Plate().GetLogicalSize().cy, 46);
    EXPECT_TRUE(tip.Plate().HasAlpha());
    EXPECT_EQ(tip.Text().GetText(), L"Press OK to update mass properties");
    EXPECT_EQ(tip.Text().GetWidth(), 170);
    EXPECT_EQ(tip.Text().GetAlignment(), 0x11u);
    EXPECT_EQ(tip.Text().GetBackgroundMode(), kBackgroundOpaque);
    EXPECT_EQ(tip.Text().GetBackgroundColor(), 0x1F1F1Fu);
    // Centred in the strip by its measured height, 30 pixels in from the plate's edge.
    int height = tip.Text().GetVExtent();
    ASSERT_GT(height, 0);
    EXPECT_EQ(At(tip.Text()), (LcdPoint{75, (46 - height) / 2 + 186}));
}

TEST_F(CadInfoPageTest, SmallPictureNamesNoResourceAndStaysHidden) {
    MakeWithData();
    const CLCDBitmap& small = *m_page->SmallBitmap();
    EXPECT_EQ(small.Bounds(), (LcdRect{288, 226, 308, 240}));
    EXPECT_EQ(small.GetBitmap(), nullptr);
    EXPECT_FALSE(small.IsVisible());
}

TEST_F(CadInfoPageTest, WithoutADocumentTheMessageBoxShowsUnderTheApplicationsName) {
    MakeWithData();
    EXPECT_EQ(T(Page::kTitle).GetText(), L"Creo Parametric");
    ExpectLabelsShown();
    ExpectDocumentValues(false);
    ExpectMassBlock(false);
    EXPECT_FALSE(TipShown());
    const CLcdMessagebox* box = m_page->Messagebox();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->Plate().IsVisible() && box->Icon().IsVisible() && box->Text().IsVisible());
    EXPECT_EQ(box->Text().GetText(), L"No documents open");
    // The plate centred as if the panel were 260 tall, the icon above the text.
    EXPECT_EQ(At(box->Plate()), (LcdPoint{45, 64}));
    EXPECT_EQ(At(box->Icon()), (LcdPoint{144, 86}));
    EXPECT_EQ(box->Icon().GetSize(), (LcdSize{32, 32}));
    EXPECT_EQ(At(box->Text()), (LcdPoint{75, 131}));
    EXPECT_EQ(box->Text().GetForegroundColor(), 0xFFFFFFu);
    EXPECT_EQ(box->Text().GetBackgroundMode(), kBackgroundTransparent);
    EXPECT_EQ(box->Text().GetFont().height, FontHeightForPoints(14));
    // OK reads the model and leaves the page as it was.
    Ok();
    EXPECT_EQ(m_data->modelReads, 1);
    EXPECT_EQ(m_page->Messagebox(), box);
    ExpectDocumentValues(false);
}

TEST_F(CadInfoPageTest, DataThatIsNoDocumentCountsAsNone) {
    struct CNotADocument : _Qvx::IInstance {};
    Make(new CNotADocument());
    const CLcdMessagebox* box = m_page->Messagebox();
    ASSERT_NE(box, nullptr);
    Ok();
    EXPECT_EQ(m_page->Messagebox(), box);
}

TEST_F(CadInfoPageTest, PartAfterAChangeOfWindowShowsItsDocumentAndTheTip) {
    MakeWithData();
    OpenPart();
    DocumentChanged();
    EXPECT_EQ(m_page->Messagebox(), nullptr);
    EXPECT_EQ(T(Page::kTitle).GetText(), L"bracket.prt");
    ExpectDocumentValues(true);
    EXPECT_EQ(T(Page::kTypeValue).GetText(), L"Part");
    EXPECT_EQ(T(Page::kAuthorValue).GetText(), L"Unknown");
    EXPECT_EQ(T(Page::kFileSizeValue).GetText(), L"48213 bytes");
    EXPECT_EQ(T(Page::kCreatedValue).GetText(), L"11/22/26 09:14:02");
    EXPECT_EQ(T(Page::kSavedByValue).GetText(), L"Unknown");
    EXPECT_TRUE(TipShown());
    ExpectMassBlock(false);
}

TEST_F(CadInfoPageTest, OkShowsTheMassBlockWithASpaceBeforeEachUnitAndAChangeBringsTheTipBack) {
    MakeWithData();
    OpenPart();
    DocumentChanged();
    Ok();
    EXPECT_EQ(m_data->modelReads, 1);
    EXPECT_FALSE(TipShown());
    ExpectMassBlock(true);
    EXPECT_EQ(T(Page::kMassValue).GetText(), L"0.412 kg");
    EXPECT_EQ(T(Page::kMaterialValue).GetText(), L"STEEL");
    EXPECT_EQ(T(Page::kVolumeValue).GetText(), L"5.26e+04 mm^3");
    EXPECT_EQ(T(Page::kDensityValue).GetText(), L"7.83e-06 kg / mm^3");
    DocumentChanged();
    EXPECT_TRUE(TipShown());
    ExpectMassBlock(false);
}

TEST_F(CadInfoPageTest, FailedMassReadLeavesTheTip) {
    MakeWithData();
    OpenPart();
    m_data->next.volume = L"";
    DocumentChanged();
    Ok();
    EXPECT_TRUE(TipShown());
    ExpectMassBlock(false);
}

TEST_F(CadInfoPageTest, DrawingHasNeitherMassBlockNorTipEvenAfterOk) {
    MakeWithData();
    m_data->next.type = L"Drawing";
    m_data->next.name = L"bracket.drw";
    DocumentChanged();
    Ok();
    EXPECT_EQ(m_data->modelReads, 1);
    ExpectDocumentValues(true);
    EXPECT_FALSE(TipShown());
    ExpectMassBlock(false);
}

TEST_F(CadInfoPageTest, LastModelClosedBringsTheMessageBoxBackAndTheNextDropsIt) {
    MakeWithData();
    std::size_t withBox = m_page->LcdPage()->ObjectCount();
    OpenPart();
    DocumentChanged();
    Ok();
    EXPECT_EQ(m_page->LcdPage()->ObjectCount(), withBox - 3);
    m_data->next = {};
    DocumentChanged();
    ASSERT_NE(m_page->Messagebox(), nullptr);
    EXPECT_EQ(T(Page::kTitle).GetText(), L"Creo Parametric");
    ExpectDocumentValues(false);
    ExpectMassBlock(false);
    EXPECT_FALSE(TipShown());
    // A refresh while it shows keeps the same box.
    const CLcdMessagebox* second = m_page->Messagebox();
    m_page->Refresh();
    EXPECT_EQ(m_page->Messagebox(), second);
    OpenPart();
    DocumentChanged();
    EXPECT_EQ(m_page->Messagebox(), nullptr);
    EXPECT_EQ(m_page->LcdPage()->ObjectCount(), withBox - 3);
}

TEST_F(CadInfoPageTest, LeftAndRightChangeNothing) {
    MakeWithData();
    OpenPart();
    DocumentChanged();
    auto loads = m_resources.loads;
    int frames = m_library.Count("UpdateBitmap");
    EXPECT_EQ(m_page->OnLeft(), 0);
    EXPECT_EQ(m_page->OnRight(), 0);
    EXPECT_EQ(m_page->Theme(), 1);
    EXPECT_EQ(m_resources.loads, loads);
    EXPECT_EQ(m_library.Count("UpdateBitmap"), frames);
}

TEST_F(CadInfoPageTest, PageLeavesTheConnectionWithItsObjects) {
    MakeWithData();
    COvkLcdPage* page = m_page->LcdPage();
    EXPECT_TRUE(COvkLcdConnection::Instance().IsPageVisible(page));
    m_page.reset();
    EXPECT_FALSE(COvkLcdConnection::Instance().RemovePage(page));
}

}  // namespace
}  // namespace qvx::lcd
