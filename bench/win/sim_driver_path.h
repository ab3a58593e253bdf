// Where the Windows benchmarks find the simulated driver: where the tests find it, beside
// the benchmark programs in the build folder.
#pragma once

#include "support/os.h"

#include <string>

namespace qvx::bench {

inline std::wstring SimDriverPath() {
    std::wstring exe = qvx::os::ExecutablePath();
    return exe.substr(0, exe.find_last_of(L'\\') + 1) + L"tests\\simdriver\\full\\oxappdll.dll";
}

}  // namespace qvx::bench
