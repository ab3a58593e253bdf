// The two ways the driver gives orders: action identifiers and numeric command codes.
#include "core/qvxproe.h"

bool CQvxProE::ConnectDriver() { return true; }

void CQvxProE::OnCommand(const char*, bool) {}

void CQvxProE::OnCommandEx(unsigned, bool, int*, float*) {}

void CQvxProE::OnValueChanged() {}
