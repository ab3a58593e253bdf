// The host function table: installation, search and the toolkit's own answers.
#include "toolkit/host_table.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>

namespace qvx::toolkit {
namespace {

struct HostTable {
    const QvxHostFunction* functions = nullptr;
    std::uint32_t count = 0;
    std::uint32_t wcharSize = 0;
    std::wstring textDirectory;
    std::uint32_t generation = 1;
};

HostTable& Table() {
    static HostTable table;
    return table;
}

}  // namespace

void InstallHostTable(const QvxToolkitArgs* args) {
    HostTable& table = Table();
    table.functions = args ? args->functions : nullptr;
    table.count = args && args->functions ? args->functionCount : 0;
    table.wcharSize = args ? args->wcharSize : 0;
    table.textDirectory = args && args->textDirectory ? args->textDirectory : L"";
    ++table.generation;
}

std::uint32_t HostTableGeneration() { return Table().generation; }

void* FindHostEntry(const char* name) {
    const HostTable& table = Table();
    std::uint32_t low = 0;
    std::uint32_t high = table.count;
    while (low < high) {
        std::uint32_t mid = low + (high - low) / 2;
        const char* candidate = table.functions[mid].name;
        int order = candidate ? std::strcmp(candidate, name) : -1;
        if (order == 0) return table.functions[mid].entry;
        if (order < 0) {
            low = mid + 1;
        } else {
            high = mid;
        }
    }
    std::printf("couldn't find pointer to ProE-side function %s\n", name);
    std::fflush(stdout);
    return nullptr;
}

}  // namespace qvx::toolkit

int QvxTkWcharSizeCheck(int pluginSize, int* hostSize) {
    int size = static_cast<int>(qvx::toolkit::Table().wcharSize);
    if (hostSize) *hostSize = size;
    return size == pluginSize ? 0 : -1;
}

void QvxTkTextDirectoryGet(wchar_t* buffer, int capacity) {
    if (!buffer || capacity <= 0) return;
    const std::wstring& dir = qvx::toolkit::Table().textDirectory;
    std::size_t n = std::min<std::size_t>(dir.size(), static_cast<std::size_t>(capacity - 1));
    std::wmemcpy(buffer, dir.data(), n);
    buffer[n] = L'\0';
}
