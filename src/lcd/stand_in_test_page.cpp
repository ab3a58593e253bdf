#include "lcd/stand_in_test_page.h"

#include "lcd/cad_info_page_factory.h"
#include "lcd/ovk_lcd_connection.h"

namespace qvx::lcd {
namespace {

constexpr LcdColor kBackground = 0x3A2A1E;
constexpr LcdColor kLabel = 0xF09F1F;
constexpr LcdColor kValue = 0xFFFFFF;
constexpr int kPressesForFullBar = 10;

class CStandInConfigureCallBack : public _Qvx::IOvkLcdFunctor, public _Qvx::IInstance {
public:
    void operator()(std::uint32_t) override {}
};

CLCDText* PlaceText(COvkLcdPage* page, int points, int weight, int x, int y, LcdColor color,
                    const std::wstring& text) {
    CLCDText* object = COvkLcdConnection::Instance().CreateText(page, points, 300, weight, 1);
    if (!object) return nullptr;
    object->SetOrigin(x, y);
    object->SetForegroundColor(color);
    object->SetText(text);
    return object;
}

}  // namespace

CStandInTestPage::~CStandInTestPage() {
    if (m_page) COvkLcdConnection::Instance().RemovePage(m_page);
}

bool CStandInTestPage::Create(const std::wstring& pageName) {
    COvkLcdConnection& connection = COvkLcdConnection::Instance();
    m_page = connection.CreatePage(kColorPage);
    if (!m_page) return false;
    m_page->SetBackgroundColor(kBackground);
    m_title = PlaceText(m_page, 16, 700, 10, 8, kValue, pageName);
    m_subtitle = PlaceText(m_page, 11, 500, 10, 40, kLabel, L"Stand-in test page");
    m_pressLine = PlaceText(m_page, 11, 500, 10, 80, kValue, L"");
    m_lastLine = PlaceText(m_page, 11, 500, 10, 104, kValue, L"");
    m_refreshLine = PlaceText(m_page, 11, 500, 10, 128, kValue, L"");
    m_bar = m_page->AddProgressBar(300, 14);
    if (!m_title || !m_subtitle || !m_pressLine || !m_lastLine || !m_refreshLine || !m_bar) {
        return false;
    }
    m_bar->SetOrigin(10, 170);
    m_bar->SetForegroundColor(kLabel);
    m_bar->SetRange(0, kPressesForFullBar);
    Update();
    return true;
}

void CStandInTestPage::Update() {
    if (!m_page) return;
    m_pressLine->SetText(L"Buttons pressed: " + std::to_wstring(m_presses));
    m_lastLine->SetText(L"Last button: " + m_lastButton);
    m_refreshLine->SetText(L"Refreshes: " + std::to_wstring(m_refreshes));
    m_bar->SetPos(static_cast<float>(m_presses % (kPressesForFullBar + 1)));
    if (IsVisible()) COvkLcdConnection::Instance().Update();
}

void CStandInTestPage::Show() {
    if (m_page) COvkLcdConnection::Instance().ShowPage(m_page, true);
}

bool CStandInTestPage::IsVisible() const {
    return m_page && COvkLcdConnection::Instance().IsPageVisible(m_page);
}

void CStandInTestPage::Refresh() {
    ++m_refreshes;
    if (IsVisible()) Update();
}

std::int32_t CStandInTestPage::Pressed(const wchar_t* button) {
    ++m_presses;
    m_lastButton = button;
    Update();
    return 0;
}

_Qvx::IInstance* CStandInFactory::CreateInstance(const std::wstring& classId, std::uintptr_t) {
    if (classId == _Qvx::kCidNotifyCallback) return new CStandInConfigureCallBack();
    return nullptr;
}

std::unique_ptr<ILcdPage> MakeCadInfoPage(WindowId, std::shared_ptr<_Qvx::IFactory>) {
    return std::make_unique<CStandInTestPage>();
}

}  // namespace qvx::lcd
