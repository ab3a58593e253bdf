// What the host hands the plug-in at load: the table of host functions and the few values the
// toolkit layer itself needs. This layout is ours; the simulated host builds it, and a real
// host's loader would be adapted to it in this one place.
#pragma once

#include <cstdarg>
#include <cstdint>

extern "C" {

/// One host function: its name with the suffix "_v", and its entry.
struct QvxHostFunction {
    const char* name;
    void* entry;
};

/// The arguments of a variadic host call, as its "_v" entry receives them.
struct QvxMessageArgs {
    va_list list;
};

/// The load-time argument of user_initialize_plus. `functions` is sorted by name as strcmp
/// orders it; the toolkit searches it by halving.
struct QvxToolkitArgs {
    std::uint32_t structSize;  ///< sizeof(QvxToolkitArgs) as the host knows it
    const QvxHostFunction* functions;
    std::uint32_t functionCount;
    const char* displayVersion;    ///< the host's product version for display, may be null
    const char* build;             ///< the host's build code, may be null
    const wchar_t* textDirectory;  ///< the application text directory the host registered
    std::uint32_t wcharSize;       ///< the host's sizeof(wchar_t)
    char* errorText;               ///< the host's error text buffer, may be null
    std::uint32_t errorTextSize;   ///< its size in bytes, terminator included
};

}  // extern "C"

namespace qvx::toolkit {

/// Makes `args` the table every forwarding function searches, and forgets every cached
/// entry. A null `args` empties the table (every host call then gives -1).
void InstallHostTable(const QvxToolkitArgs* args);

/// The entry named `name` (with "_v") or null. A miss is reported on standard output.
void* FindHostEntry(const char* name);

/// Changes whenever a table is installed, so cached entries know they are stale.
std::uint32_t HostTableGeneration();

/// Looks an entry up on first use and remembers it until another table is installed.
template <typename Fn>
class CHostEntry {
public:
    explicit constexpr CHostEntry(const char* name) : m_name(name) {}

    Fn* Get() {
        std::uint32_t generation = HostTableGeneration();
        if (generation != m_generation) {
            m_entry = reinterpret_cast<Fn*>(FindHostEntry(m_name));
            m_generation = generation;
        }
        return m_entry;
    }

private:
    const char* m_name;
    Fn* m_entry = nullptr;
    std::uint32_t m_generation = 0;
};

/// Calls a host entry, or gives -1 when the host does not have it.
template <typename Fn, typename... Args>
int CallHost(CHostEntry<Fn>& entry, Args... args) {
    Fn* fn = entry.Get();
    return fn ? fn(args...) : -1;
}

}  // namespace qvx::toolkit

/// The toolkit's own calls, answered from the load-time argument rather than by the host.
/// Writes the host's wchar_t size; 0 when it equals `pluginSize`.
int QvxTkWcharSizeCheck(int pluginSize, int* hostSize);
/// Copies the application text directory (terminated, cut to fit) into `buffer`.
void QvxTkTextDirectoryGet(wchar_t* buffer, int capacity);
