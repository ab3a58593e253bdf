// Any bytes as a configuration file: the mapkey reader must neither crash nor leak.
#include "catalogue/mapkey_file.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    CMapkeyMap map;
    ReadMapkeyText(text.data(), L"img.png", map);
    return 0;
}
