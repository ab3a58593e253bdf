#include "support/boundary.h"

#include <atomic>
#include <cstdio>

namespace qvx {
namespace {
std::atomic<std::uint64_t> g_catches{0};
}

namespace boundary_detail {

void Report(const char* where, const char* what) noexcept {
    g_catches.fetch_add(1, std::memory_order_relaxed);
    std::printf("%s failed error=%s\n", where ? where : "?", what ? what : "unknown");
    std::fflush(stdout);
}

const char* CurrentWhat() noexcept {
    // Asked inside a catch-all: rethrow to learn the kind, and never let the rethrow escape.
    try {
        throw;
    } catch (const std::exception& e) {
        return e.what();
    } catch (...) {
        return "unknown";
    }
}

}  // namespace boundary_detail

std::uint64_t BoundaryCatchCount() noexcept { return g_catches.load(std::memory_order_relaxed); }

}  // namespace qvx
