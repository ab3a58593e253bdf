// The plug-in's doors: the two functions the host's loader calls, and the plug-in's own entry
// functions behind them. Nothing the host calls lets an exception out.
#pragma once

#include "toolkit/host_table.h"

#ifdef _WIN32
#define QVX_EXPORT extern "C" __declspec(dllexport)
#else
#define QVX_EXPORT extern "C"
#endif

/// At load: installs the host's table of functions, then runs user_initialize. Always 0.
QVX_EXPORT int user_initialize_plus(const QvxToolkitArgs* args);
/// At unload: runs user_terminate, then empties the table of host functions.
QVX_EXPORT void user_terminate_plus();

/// Makes and starts the one CQvxProE, unless one exists or the host's wchar_t differs from
/// ours (then the host's message area and `errbuf` get the error text). Always 0.
int user_initialize(int argc, char* argv[], const char* version, const char* build, char* errbuf);
/// Stops and deletes the CQvxProE, if any, and says so on standard output.
void user_terminate();
