#include "support/language_id.h"

std::uint16_t g_langId = 0x0409;
std::wstring g_langCode = L"en-US";
