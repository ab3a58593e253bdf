// Faults by call number for fault-injection runs of the stand-ins: a function named here fails
// on its Nth call of the run, and every call of every function is counted, so that a runner
// learns how many call sites a run reaches and can fail each in turn. The plan outlives the
// stand-in's own resets: it belongs to the run, not to the simulated program's life.
// Not thread-safe: the owner calls it under its own lock.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace sim {

class CCallFaults {
public:
    /// `name` fails with `error` on its `nth` call from now (1: the next one); a function may
    /// be planned to fail at several calls (a scenario's own fault and a runner's).
    void FailCall(const std::string& name, std::int32_t error, std::uint32_t nth) {
        m_plans[name][m_totals[name] + nth] = error;
    }

    /// Counts one call of `name`; the error it fails with, or 0 when it goes on.
    std::int32_t Take(const std::string& name) {
        std::uint64_t number = ++m_totals[name];
        auto plan = m_plans.find(name);
        if (plan == m_plans.end()) return 0;
        auto at = plan->second.find(number);
        return at == plan->second.end() ? 0 : at->second;
    }

    /// One line per function called: "NAME COUNT".
    std::string Totals() const {
        std::string text;
        for (const auto& [name, count] : m_totals)
            text += name + ' ' + std::to_string(count) + '\n';
        return text;
    }

private:
    /// By function: the error for each call number that fails.
    std::map<std::string, std::map<std::uint64_t, std::int32_t>> m_plans;
    std::map<std::string, std::uint64_t> m_totals;
};

}  // namespace sim
