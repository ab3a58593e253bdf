// CLcdCadInfoPage: the panel's one page. It tells the current document's name, type, author,
// size and dates and, for parts and assemblies, mass, material, volume and density. All
// objects are made once when the page is laid out; bringing the page up to date only sets
// their texts and shows or hides them. The data come through the document and model
// interfaces of the object the host's factory makes for the page.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/lcd_page_impl.h"
#include "lcd/lcd_tip.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace qvx::lcd {

class CLcdCadInfoPage : public CLcdPageImplT<CLcdCadInfoPage> {
public:
    /// The page's texts, in the order they are laid out.
    enum Field {
        kTitle,
        kTypeLabel,
        kTypeValue,
        kAuthorLabel,
        kAuthorValue,
        kFileSizeLabel,
        kFileSizeValue,
        kCreatedLabel,
        kCreatedValue,
        kLastSavedLabel,
        kLastSavedValue,
        kSavedByLabel,
        kSavedByValue,
        kMassLabel,
        kMassValue,
        kMaterialLabel,
        kMaterialValue,
        kVolumeLabel,
        kVolumeValue,
        kDensityLabel,
        kDensityValue,
        kFieldCount
    };
    static constexpr int kPlateId = 299;
    static constexpr int kMessageIconId = 297;

    /// Asks `factory` for the document data, giving it the LCD window's handle.
    CLcdCadInfoPage(WindowId window, const std::shared_ptr<_Qvx::IFactory>& factory,
                    IPageResources& resources = SystemPageResources());
    ~CLcdCadInfoPage() override;

    bool Create(const std::wstring& pageName) override;
    /// Fills the page from the data when it is laid out and connected, and sends it to the
    /// panel when it shows there.
    void Update() override;
    /// Reads the mass properties too, then refreshes.
    std::int32_t OnOk() override;
    std::int32_t OnLeft() override;
    std::int32_t OnRight() override;
    void Refresh() override;
    _Qvx::IInstance* Data() const override { return m_data.get(); }

    const CLCDText* Text(Field field) const { return m_texts[field]; }
    const CLcdTip* Tip() const { return m_tip.get(); }
    /// The message box while there is no document; null otherwise.
    const CLcdMessagebox* Messagebox() const { return m_messagebox.get(); }
    const CLCDBitmap* SmallBitmap() const { return m_smallBitmapObject; }
    std::int32_t Theme() const { return m_theme; }

private:
    /// Sets every text and shows or hides it after the data.
    void Fill();
    void LoadTheme();
    void ShowValue(Field field, const std::wstring& text);

    WindowId m_window;
    std::shared_ptr<_Qvx::IInstance> m_data;
    std::shared_ptr<CLcdMessagebox> m_messagebox;
    std::shared_ptr<CLcdTip> m_tip;
    CLcdPicture m_smallBitmap;
    std::array<CLCDText*, kFieldCount> m_texts{};
    CLCDBitmap* m_smallBitmapObject = nullptr;
    std::int32_t m_theme = 1;
    std::wstring m_pageName;
};

}  // namespace qvx::lcd
