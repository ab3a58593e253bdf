// The native build has no windows to show the about box in.
#include "lcd/proe_configure_callback.h"

namespace qvx::lcd {

void CLcdProeConfigureCallBack::operator()(std::uint32_t) {}

}  // namespace qvx::lcd
