// Where the Windows benchmarks find the simulated driver: where the tests find it, beside
// the benchmark programs in the build folder.
#pragma once

#include "support/windows_api.h"

#include <string>

namespace qvx::bench {

inline std::wstring SimDriverPath() {
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    std::wstring folder(exe);
    folder.resize(folder.find_last_of(L'\\') + 1);
    return folder + L"tests\\simdriver\\full\\oxappdll.dll";
}

}  // namespace qvx::bench
