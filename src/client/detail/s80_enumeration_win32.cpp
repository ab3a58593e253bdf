// CS80ClientImpl: the attached devices, from the system's raw input list.
#include "client/detail/s80_client_win32.h"

#include <vector>

namespace oxapp::detail {

namespace {

constexpr DWORD kVendorA = 0x7A10;
constexpr DWORD kVendorB = 0x7A20;
constexpr DWORD kFirstProductB = 0x50E0;
constexpr DWORD kLastProductB = 0x5106;
// Six-axis devices report themselves as multi-axis controllers of the generic desktop page.
constexpr USHORT kGenericDesktopPage = 1;
constexpr USHORT kMultiAxisControllerUsage = 8;

/// The products of the attached six-axis devices, in the system's order.
std::vector<DWORD> AttachedProducts() {
    std::vector<DWORD> products;
    UINT count = 0;
    if (GetRawInputDeviceList(nullptr, &count, sizeof(RAWINPUTDEVICELIST)) != 0 || count == 0) {
        return products;
    }
    std::vector<RAWINPUTDEVICELIST> list(count);
    UINT got = GetRawInputDeviceList(list.data(), &count, sizeof(RAWINPUTDEVICELIST));
    if (got == static_cast<UINT>(-1)) return products;
    list.resize(got);
    for (const auto& entry : list) {
        RID_DEVICE_INFO info{};
        info.cbSize = sizeof(info);
        UINT size = sizeof(info);
        if (GetRawInputDeviceInfoW(entry.hDevice, RIDI_DEVICEINFO, &info, &size) ==
                static_cast<UINT>(-1) ||
            info.dwType != RIM_TYPEHID) {
            continue;
        }
        const RID_DEVICE_INFO_HID& hid = info.hid;
        bool ours = hid.dwVendorId == kVendorA ||
                    (hid.dwVendorId == kVendorB && hid.dwProductId >= kFirstProductB &&
                     hid.dwProductId <= kLastProductB);
        if (ours && hid.usUsagePage == kGenericDesktopPage &&
            hid.usUsage == kMultiAxisControllerUsage) {
            products.push_back(hid.dwProductId);
        }
    }
    return products;
}

}  // namespace

std::uint32_t CS80ClientImpl::GetAttachedDeviceCount() {
    return static_cast<std::uint32_t>(AttachedProducts().size());
}

bool CS80ClientImpl::GetProductIdAt(std::uint32_t index, std::uint32_t& pid) {
    std::vector<DWORD> products = AttachedProducts();
    if (index >= products.size()) return false;
    pid = products[index];
    return true;
}

}  // namespace oxapp::detail
