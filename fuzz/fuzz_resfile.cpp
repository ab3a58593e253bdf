// Any bytes as a command resource file, translated through a language file made of the same
// bytes: the tolerant scan must neither crash nor leak.
#include "catalogue/cmd_res.h"
#include "catalogue/lang_file.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    CQvxProCmdLangFile language;
    language.OpenText(text);
    CQvxProCmdRes res;
    res.ParseText(text, size % 2 ? &language : nullptr);
    return 0;
}
