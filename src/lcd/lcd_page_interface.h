// ILcdPage: a page of the applet, as the window drives it: brought up to date, shown, and
// given the panel's buttons.
#pragma once

#include "lcd/cad_interfaces.h"

#include <cstdint>
#include <string>

namespace qvx::lcd {

class ILcdPage {
public:
    virtual ~ILcdPage() = default;
    /// Lays the page out on the connection under `pageName`; false when a step failed.
    virtual bool Create(const std::wstring& pageName) = 0;
    virtual void Update() = 0;
    virtual void Show() = 0;
    virtual bool IsVisible() const = 0;
    virtual std::int32_t OnOk() = 0;
    virtual std::int32_t OnCancel() = 0;
    virtual std::int32_t OnLeft() = 0;
    virtual std::int32_t OnRight() = 0;
    virtual std::int32_t OnUp() = 0;
    virtual std::int32_t OnDown() = 0;
    virtual std::int32_t OnSpare() = 0;
    virtual void Refresh() = 0;
    /// The data object behind the page, if it has one.
    virtual _Qvx::IInstance* Data() const { return nullptr; }
};

}  // namespace qvx::lcd
