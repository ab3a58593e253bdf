// One entry of the host's function table: the host function behind a gate that can make it
// fail or throw on purpose (CSession::FailFunction), for fault-injection runs of the plug-in.
#pragma once

#include "sim/host/session.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace sim {

template <auto Fn, typename Signature>
struct CHostEntryOf;

template <auto Fn, typename... Args>
struct CHostEntryOf<Fn, ProError (*)(Args...)> {
    /// The function's name without "_v", set when it goes into a table.
    static inline std::string name;

    static ProError Call(Args... args) {
        switch (CSession::Instance().TakeFault(name)) {
            case CSession::EFault::None:
                return Fn(args...);
            case CSession::EFault::Status:
                return CSession::Instance().faults.at(name).status;
            case CSession::EFault::Throw:
                // Leaves this module on purpose: the plug-in's boundary must stop it.
                throw std::runtime_error("simulated host failure in " + name);
        }
        return PRO_TK_GENERAL_ERROR;
    }
};

/// Adds `Fn` under `name` (with the "_v" suffix) behind the fault gate.
template <auto Fn>
void AddHostFunction(std::vector<QvxHostFunction>& table, const char* name) {
    using Entry = CHostEntryOf<Fn, decltype(Fn)>;
    std::string plain = name;
    if (plain.size() > 2 && plain.compare(plain.size() - 2, 2, "_v") == 0)
        plain.resize(plain.size() - 2);
    Entry::name = plain;
    table.push_back({name, reinterpret_cast<void*>(&Entry::Call)});
}

}  // namespace sim
