#include "lcd/cad_info_page.h"

#include "lcd/cad_info_page_factory.h"

namespace qvx::lcd {
namespace {

constexpr LcdColor kLabel = 0xF09F1F;
constexpr LcdColor kValue = 0xFFFFFF;
constexpr int kTextPoints = 11;
constexpr int kTextWeight = 500;

struct CTextSlot {
    int width;
    int x;
    int y;
    LcdColor color;
    const wchar_t* label;  ///< the fixed text of a label; null for a value
};

// Indexed by CLcdCadInfoPage::Field. The labels are English on every system.
constexpr CTextSlot kSlots[CLcdCadInfoPage::kFieldCount] = {
    {250, 60, 9, kValue, nullptr},    {106, 16, 50, kLabel, L"Type:"},
    {188, 122, 50, kValue, nullptr},  {106, 16, 70, kLabel, L"Author:"},
    {188, 122, 70, kValue, nullptr},  {106, 16, 100, kLabel, L"File Size:"},
    {188, 122, 100, kValue, nullptr}, {106, 16, 120, kLabel, L"Created:"},
    {188, 122, 120, kValue, nullptr}, {106, 16, 140, kLabel, L"Last Saved:"},
    {188, 122, 140, kValue, nullptr}, {106, 16, 160, kLabel, L"Last Saved by:"},
    {188, 122, 160, kValue, nullptr}, {56, 16, 190, kLabel, L"Mass:"},
    {80, 72, 190, kValue, nullptr},   {61, 161, 190, kLabel, L"Material:"},
    {88, 222, 190, kValue, nullptr},  {56, 16, 210, kLabel, L"Volume:"},
    {80, 72, 210, kValue, nullptr},   {61, 161, 210, kLabel, L"Density:"},
    {88, 222, 210, kValue, nullptr},
};

/// The tip is laid out between the document block and the mass block.
constexpr int kTipAfter = CLcdCadInfoPage::kSavedByValue;
/// Where the tip sits: across the mass block.
constexpr int kTipTop = 186;

constexpr CLcdCadInfoPage::Field kDocumentValues[] = {
    CLcdCadInfoPage::kTypeValue,      CLcdCadInfoPage::kAuthorValue,
    CLcdCadInfoPage::kFileSizeValue,  CLcdCadInfoPage::kCreatedValue,
    CLcdCadInfoPage::kLastSavedValue, CLcdCadInfoPage::kSavedByValue,
};
constexpr CLcdCadInfoPage::Field kMassBlock[] = {
    CLcdCadInfoPage::kMassLabel,     CLcdCadInfoPage::kMassValue,
    CLcdCadInfoPage::kMaterialLabel, CLcdCadInfoPage::kMaterialValue,
    CLcdCadInfoPage::kVolumeLabel,   CLcdCadInfoPage::kVolumeValue,
    CLcdCadInfoPage::kDensityLabel,  CLcdCadInfoPage::kDensityValue,
};

/// One row of the theme table: the background and the small picture of a theme.
struct CThemeRow {
    std::int32_t background;
    std::int32_t smallBitmap;
    std::int32_t reserved[2];
};
static_assert(sizeof(CThemeRow) == 16);

// The page starts at row 1 and its buttons never leave it. Its small picture names no
// resource, so that object stays empty and hidden while remaining part of the layout.
constexpr CThemeRow kThemes[] = {
    {301, 306, {0, 0}},
    {300, 305, {0, 0}},
};
constexpr std::int32_t kThemeCount = sizeof kThemes / sizeof kThemes[0];
constexpr LcdSize kSmallBitmapSize{20, 14};
constexpr LcdPoint kSmallBitmapAt{288, 226};

constexpr wchar_t kTipText[] = L"Press OK to update mass properties";
constexpr wchar_t kNoDocumentText[] = L"No documents open";

}  // namespace

CLcdCadInfoPage::CLcdCadInfoPage(WindowId window, const std::shared_ptr<_Qvx::IFactory>& factory,
                                 IPageResources& resources)
    : CLcdPageImplT(resources), m_window(window) {
    if (factory) m_data.reset(factory->CreateInstance(_Qvx::kCidCadDocumentData, window));
}

// The message box and the tip take their objects off the page before the page goes.
CLcdCadInfoPage::~CLcdCadInfoPage() = default;

bool CLcdCadInfoPage::Create(const std::wstring& pageName) {
    m_pageName = pageName;
    if (!CreatePage()) return false;
    COvkLcdPage* page = LcdPage();
    COvkLcdConnection& connection = COvkLcdConnection::Instance();
    for (int field = 0; field < kFieldCount; ++field) {
        const CTextSlot& slot = kSlots[field];
        CLCDText* text = connection.CreateText(page, kTextPoints, slot.width, kTextWeight, 1);
        if (!text) return false;
        text->SetOrigin(slot.x, slot.y);
        text->SetForegroundColor(slot.color);
        if (slot.label) text->SetText(slot.label);
        m_texts[field] = text;
        if (field == kTipAfter) {
            m_tip = CLcdTip::Create(*page, Resources(), kPlateId, kTipText);
            if (!m_tip) return false;
            m_tip->MoveBy(0, kTipTop - CLcdTip::kTop);
        }
    }
    for (Field value : kDocumentValues) m_texts[value]->Show(false);
    m_smallBitmapObject = connection.CreateBitmap(page, kSmallBitmapSize.cx, kSmallBitmapSize.cy);
    if (!m_smallBitmapObject) return false;
    m_smallBitmapObject->SetOrigin(kSmallBitmapAt.x, kSmallBitmapAt.y);
    m_smallBitmap = Resources().LoadPlainBitmap(kThemes[m_theme].smallBitmap);
    m_smallBitmapObject->SetBitmap(m_smallBitmap.Get());
    m_smallBitmapObject->Show(static_cast<bool>(m_smallBitmap));
    Update();
    return true;
}

void CLcdCadInfoPage::Update() {
    if (LcdPage() && COvkLcdConnection::Instance().Impl().IsConnected()) Fill();
    if (IsVisible()) COvkLcdConnection::Instance().Update();
}

void CLcdCadInfoPage::Refresh() {
    if (IsVisible()) Update();
}

std::int32_t CLcdCadInfoPage::OnOk() {
    if (auto* model = dynamic_cast<_Qvx::ICadModel*>(m_data.get())) model->Update();
    Refresh();
    return 0;
}

// The theme buttons are kept as they always were: with the index starting at 1, neither
// test lets a button through, so both do nothing.
std::int32_t CLcdCadInfoPage::OnLeft() {
    if (m_theme < 2) return 0;
    --m_theme;
    LoadTheme();
    Refresh();
    return 0;
}

std::int32_t CLcdCadInfoPage::OnRight() {
    if (m_theme >= 1) return 0;
    ++m_theme;
    LoadTheme();
    Refresh();
    return 0;
}

void CLcdCadInfoPage::LoadTheme() {
    if (m_theme < 0 || m_theme >= kThemeCount) return;
    SetBackground(Resources().LoadPlainBitmap(kThemes[m_theme].background));
}

void CLcdCadInfoPage::ShowValue(Field field, const std::wstring& text) {
    m_texts[field]->SetText(text);
    m_texts[field]->Show(true);
}

void CLcdCadInfoPage::Fill() {
    for (Field field : kMassBlock) m_texts[field]->Show(false);
    for (Field field : kDocumentValues) m_texts[field]->Show(false);
    if (m_tip) m_tip->Show(false);

    auto* document = dynamic_cast<_Qvx::ICadDocument*>(m_data.get());
    if (!document || document->GetName().empty()) {
        m_texts[kTitle]->SetText(m_pageName);
        if (!m_messagebox) {
            m_messagebox = CLcdMessagebox::Create(*LcdPage(), Resources(), kPlateId, kMessageIconId,
                                                  kNoDocumentText);
            if (m_messagebox) m_messagebox->Show(true);
        }
        return;
    }
    m_messagebox.reset();
    ShowValue(kTitle, document->GetName());
    ShowValue(kTypeValue, document->GetType());
    ShowValue(kAuthorValue, document->GetAuthor());
    ShowValue(kFileSizeValue, std::to_wstring(document->GetFileSize()) + L" bytes");
    ShowValue(kCreatedValue, document->GetCreated());
    ShowValue(kLastSavedValue, document->GetLastSaved());
    ShowValue(kSavedByValue, document->GetLastSavedBy());

    auto* model = dynamic_cast<_Qvx::ICadModel*>(m_data.get());
    if (!model || !model->HasMassProperties()) return;
    // Mass properties are read only on OK; until then the tip says so.
    if (model->GetVolume().empty()) {
        if (m_tip) m_tip->Show(true);
        return;
    }
    ShowValue(kMassValue, model->GetMass() + L" " + model->GetMassUnit());
    ShowValue(kMaterialValue, model->GetMaterial());
    ShowValue(kVolumeValue, model->GetVolume() + L" " + model->GetVolumeUnit());
    ShowValue(kDensityValue, model->GetDensity() + L" " + model->GetDensityUnit());
    for (Field label : {kMassLabel, kMaterialLabel, kVolumeLabel, kDensityLabel}) {
        m_texts[label]->Show(true);
    }
}

std::unique_ptr<ILcdPage> MakeCadInfoPage(WindowId window,
                                          std::shared_ptr<_Qvx::IFactory> factory) {
    return std::make_unique<CLcdCadInfoPage>(window, factory);
}

}  // namespace qvx::lcd
