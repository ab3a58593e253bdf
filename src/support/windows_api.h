// The one header of ours that includes windows.h. Win32-bound files include this, never
// windows.h itself, so the macros that tame it are set in one place.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
