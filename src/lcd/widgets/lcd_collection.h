// CLCDCollection: an object that holds other objects and draws the visible ones in the order
// they were added, each relative to the collection's origin.
#pragma once

#include "lcd/widgets/lcd_base.h"

#include <memory>
#include <vector>

namespace qvx::lcd {

class CLCDCollection : public CLCDBase {
public:
    /// Takes `object` over; returns it for the caller to set up.
    template <typename T>
    T* AddObject(std::unique_ptr<T> object) {
        T* raw = object.get();
        if (raw) m_objects.push_back(std::move(object));
        return raw;
    }
    /// Deletes `object`; false when it is not one of ours.
    bool RemoveObject(const CLCDBase* object);
    std::size_t ObjectCount() const { return m_objects.size(); }
    const std::vector<std::unique_ptr<CLCDBase>>& Objects() const { return m_objects; }

    void OnUpdate(std::uint32_t tick) override;
    void OnDraw(CLCDGfxBase& gfx) override;

private:
    std::vector<std::unique_ptr<CLCDBase>> m_objects;
};

}  // namespace qvx::lcd
