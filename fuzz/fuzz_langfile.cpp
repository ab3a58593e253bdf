// Any bytes as a language file, looked up with keys cut from the same bytes.
#include "catalogue/lang_file.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    CQvxProCmdLangFile language;
    language.OpenText(text);
    std::string out;
    std::size_t cut = size ? data[0] % (size + 1) : 0;
    std::string key = text.substr(0, cut);
    language.Lookup(out, key.c_str());
    language.Lookup(out, "command");
    return 0;
}
