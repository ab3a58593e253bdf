// The one catch-all of the plug-in's boundaries. Everything that the host, the driver, a
// system timer or a thread of our own calls into runs its body through CallAtBoundary: a
// result comes back as the body gave it, and any exception is turned into the boundary's own
// result and one line on standard output ("<where> failed error=<what>"). No exception ever
// crosses into the caller.
//
//     LRESULT CALLBACK WindowProc(HWND w, UINT m, WPARAM wp, LPARAM lp) {
//         return qvx::CallAtBoundary("CClientWindowImpl::WindowProc", LRESULT{0},
//                                    [&] { return Handle(w, m, wp, lp); });
//     }
#pragma once

#include <cstdint>
#include <exception>
#include <type_traits>
#include <utility>

namespace qvx {

namespace boundary_detail {
/// Writes the line for an exception that stopped at `where` and counts it; never throws.
void Report(const char* where, const char* what) noexcept;
/// The text of the exception being handled, or "unknown" for one that is no std::exception.
const char* CurrentWhat() noexcept;
}  // namespace boundary_detail

/// Runs `body()`; returns its result, or `fallback` when it throws.
template <typename Result, typename Body>
Result CallAtBoundary(const char* where, Result fallback, Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        boundary_detail::Report(where, boundary_detail::CurrentWhat());
        return fallback;
    }
}

/// Runs `body()` for a boundary that gives nothing back.
template <typename Body>
void CallAtBoundary(const char* where, Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
    } catch (...) {
        boundary_detail::Report(where, boundary_detail::CurrentWhat());
    }
}

/// How many exceptions the boundaries have stopped in this process; for tests and soak runs.
std::uint64_t BoundaryCatchCount() noexcept;

}  // namespace qvx
