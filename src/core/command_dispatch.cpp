// The two ways the driver gives orders: action identifiers and numeric command codes.
#include "core/qvxproe.h"

#include "catalogue/action.h"
#include "core/undostack_bypass.h"

#include <algorithm>
#include <exception>

bool CQvxProE::ConnectDriver() {
    // Until the driver client is in place there is nothing to connect; the table is filled so
    // that command codes reach their handlers.
    FillCommandTable();
    return true;
}

void CQvxProE::FillCommandTable() {
    for (const auto* group : {&qvx::nav::AnimatedZoomBindings(), &qvx::nav::ViewBindings(),
                              &qvx::nav::MenuBindings()}) {
        for (const qvx::nav::CCommandBinding& row : *group) m_commands[row.code] = row.handler;
    }
}

void CQvxProE::OnCommand(const char* id, bool pressed) {
    // Press only, parse, run, in a bypass scope, with nothing thrown back: the action's own
    // entry for the driver does exactly that.
    CAction::ExecuteFromDriver(id, pressed);
}

void CQvxProE::OnCommandEx(unsigned code, bool pressed, int* ints, float* floats) {
    try {
        CQvxUndostackClearBypass bypass(true);
        auto it = m_commands.find(code);
        if (it == m_commands.end()) return;
        // The driver client always passes arrays of sixteen; a missing one counts as zeros.
        boost::array<int, 16> intArray{};
        boost::array<float, 16> floatArray{};
        if (ints) std::copy(ints, ints + 16, intArray.begin());
        if (floats) std::copy(floats, floats + 16, floatArray.begin());
        // A copy: a nested command may run inside the handler and the table may change there.
        CommandHandler handler = it->second;
        handler(pressed, intArray, floatArray);
    } catch (const std::exception&) {
    } catch (...) {
        // Nothing of any kind goes back into the driver.
    }
}

void CQvxProE::OnValueChanged() {}
