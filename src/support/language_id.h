// The plug-in's user-interface language, chosen once at start-up and read by every text
// loaded by id.
#pragma once

#include <cstdint>
#include <string>

/// Language of every text loaded by id; 0x0409 until start-up says otherwise.
extern std::uint16_t g_langId;
/// The language's folder name, e.g. "en-US".
extern std::wstring g_langCode;
