#include "nav/menu_desktop.h"

namespace qvx::nav {
namespace {

IMenuDesktop* g_installed = nullptr;

}  // namespace

IMenuDesktop& MenuDesktop() { return g_installed ? *g_installed : SystemMenuDesktop(); }

void SetMenuDesktop(IMenuDesktop* desktop) { g_installed = desktop; }

}  // namespace qvx::nav
