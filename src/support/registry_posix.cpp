// The native build's registry: a map in the process, filled by tests.
#include "support/registry.h"

#include <map>
#include <mutex>
#include <tuple>

namespace qvx::os {
namespace {

using Key = std::tuple<RegistryRoot, std::wstring, std::wstring>;

std::map<Key, std::wstring>& Values() {
    static std::map<Key, std::wstring> values;
    return values;
}
std::mutex g_registryMutex;

}  // namespace

std::optional<std::wstring> ReadRegistryString(RegistryRoot root, const std::wstring& key,
                                               const std::wstring& value, std::size_t capacity,
                                               RegistryView) {
    std::lock_guard lock(g_registryMutex);
    auto it = Values().find({root, key, value});
    if (it == Values().end()) return std::nullopt;
    std::wstring text = it->second;
    if (capacity > 0 && text.size() >= capacity) text.resize(capacity - 1);
    return text;
}

bool WriteRegistryString(RegistryRoot root, const std::wstring& key, const std::wstring& value,
                         const std::optional<std::wstring>& data) {
    std::lock_guard lock(g_registryMutex);
    if (data) {
        Values()[{root, key, value}] = *data;
    } else {
        Values().erase({root, key, value});
    }
    return true;
}

}  // namespace qvx::os
