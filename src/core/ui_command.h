// CQvxUiCommand<fn>: one command the plug-in adds to the host, run by the static function
// `fn`. Each instantiation has at most one object, which the host's callbacks find through a
// static pointer, since the host hands them nothing but the command id and the access mode.
//
//     CQvxUiCommand<&CQvxProE::ProQvxHelpCmdActFn> help("ProQvxHelp");
//     help.Add();  // the host now knows "ProQvxHelp"; help.Id() names it in menus
#pragma once

#include "support/boundary.h"
#include "toolkit/pro_toolkit.h"

#include <cstdio>
#include <stdexcept>
#include <string>

template <int (*fn)(uiCmdCmdId, uiCmdValue*, void*)>
class CQvxUiCommand {
public:
    /// Throws std::logic_error("Only one instance allowed") when this `fn` has an object.
    explicit CQvxUiCommand(std::string name) : m_name(std::move(name)) {
        if (s_instance) throw std::logic_error("Only one instance allowed");
        s_instance = this;
    }
    CQvxUiCommand(const CQvxUiCommand&) = delete;
    CQvxUiCommand& operator=(const CQvxUiCommand&) = delete;
    virtual ~CQvxUiCommand() {
        if (s_instance == this) s_instance = nullptr;
    }

    /// Registers the command with the host under its name; the host's status, 0 on success.
    ProError Add() {
        ProError status = ProCmdActionAdd(m_name.c_str(), &ProUiCmdCmdActFn, /*priority=*/1,
                                          &ProUiCmdAccessFn, /*allowInNonActive=*/0,
                                          /*allowInAccessory=*/1, &m_id);
        if (status != PRO_TK_NO_ERROR) {
            Say("CQvxUiCommand::ProCmdActionAdd(%s...) failed error=%d\n", m_name.c_str(), status);
        }
        return status;
    }

    /// The host's id of the command; null until Add() succeeded.
    uiCmdCmdId Id() const { return m_id; }
    const std::string& Name() const { return m_name; }

    /// The host's action callback. It only reports itself: the host runs it after the
    /// access callback, which has done the work by then.
    static int ProUiCmdCmdActFn(uiCmdCmdId id, uiCmdValue*, void*) {
        return qvx::CallAtBoundary("CQvxUiCommand::ProUiCmdCmdActFn", 0, [&] {
            Say("CQvxUiCommand::ProUiCmdCmdActFn uiCmdCmdId=%p\n", id);
            return 0;
        });
    }

    /// The host's access callback. A look at the menus (mode 0) answers "available" and runs
    /// nothing; a choice runs `fn` and then gives the focus back to the host's window, which
    /// a dialog of `fn` may have taken.
    static int ProUiCmdAccessFn(uiCmdAccessMode mode) {
        return qvx::CallAtBoundary("CQvxUiCommand::ProUiCmdAccessFn", ACCESS_HANDLED, [&] {
            Say("CQvxUiCommand::ProUiCmdAccessFn(uiCmdAccessMode=%d)\n", mode);
            if (mode == UI_CMD_ACCESS_LOOK) return ACCESS_AVAILABLE;
            if (s_instance) s_instance->Run();
            return ACCESS_HANDLED;
        });
    }

private:
    // Diagnostics go out at once: the host may end the process without flushing ours.
    template <typename... Args>
    static void Say(const char* format, Args... args) {
        std::printf(format, args...);
        std::fflush(stdout);
    }

    void Run() {
        ProWindowId window = 0;
        ProError status = ProWindowCurrentGet(&window);
        if (status != PRO_TK_NO_ERROR) {
            Say("ProWindowCurrentGet() failed error=%d\n", status);
        }
        fn(m_id, nullptr, nullptr);
        status = ProWindowActivate(window);
        if (status != PRO_TK_NO_ERROR) {
            Say("ProWindowActivate(%d ) failed error=%d\n", window, status);
        }
    }

    uiCmdCmdId m_id = nullptr;
    std::string m_name;
    static inline CQvxUiCommand* s_instance = nullptr;
};
