#include "lcd/widgets/lcd_collection.h"

#include "lcd/widgets/lcd_gfx.h"

#include <algorithm>

namespace qvx::lcd {

bool CLCDCollection::RemoveObject(const CLCDBase* object) {
    auto found = std::find_if(m_objects.begin(), m_objects.end(),
                              [&](const auto& held) { return held.get() == object; });
    if (found == m_objects.end()) return false;
    m_objects.erase(found);
    return true;
}

void CLCDCollection::OnUpdate(std::uint32_t tick) {
    for (const auto& object : m_objects) object->OnUpdate(tick);
}

void CLCDCollection::OnDraw(CLCDGfxBase& gfx) {
    COffsetScope shift(gfx, GetOrigin());
    for (const auto& object : m_objects) {
        if (object->IsVisible()) object->OnDraw(gfx);
    }
}

}  // namespace qvx::lcd
