// The simulated CAD host's session: everything the host functions read and change, kept in
// memory, plus the table of host functions handed to the plug-in at load. One per process,
// like the host; tests reset it between cases.
#pragma once

#include "toolkit/host_table.h"
#include "toolkit/pro_types.h"

#include <cstdarg>

#include "sim/host/cad_model.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace sim {

class CSession {
public:
    static CSession& Instance();

    /// Back to a fresh host: empty message area and logs, default version and sizes, every
    /// function present.
    void Reset();

    // -- The load-time argument --------------------------------------------------------------
    /// Leaves a host function (by name without "_v") out of the table, as an older host would.
    void Omit(const std::string& name) { m_omitted.insert(name); }
    /// The argument for user_initialize_plus; valid until the next call or Reset().
    const QvxToolkitArgs* Args();

    std::string displayVersion = "8.0.4.0";
    std::string build = "M040";
    std::wstring textDirectory;
    std::uint32_t wcharSize = 2;
    char errorText[256] = {};

    // -- What the plug-in did to the host ------------------------------------------------------
    /// Texts shown in the message area, after the key's places were filled.
    std::vector<std::string> messages;
    /// Every host call, one readable line each, in order.
    std::vector<std::string> calls;
    /// Called with each new line of `calls`, e.g. to echo it into a session log.
    std::function<void(const std::string&)> onCall;

    void Record(std::string line);

    // -- The CAD session -------------------------------------------------------------------
    /// The current model; without one there is no window and view calls fail.
    std::optional<CModel> model;
    /// The current view's orientation and the current window's pan-zoom matrix.
    Matrix4 orientation = Identity();
    Matrix4 panZoom = Identity();
    std::string displayStyle = "Shading";
    /// Views stored by name in the current model: orientation and pan-zoom.
    std::map<std::wstring, std::pair<Matrix4, Matrix4>> savedViews;
    /// The host's configuration options, as text.
    std::map<std::wstring, std::wstring> configOptions;

    /// Opens the sample part as the current model of `type`, in the default view, fitted, in a
    /// window of its own: the model retrieved (18), then its window made current (24). A model
    /// that was current before stays open behind it.
    void OpenModel(const std::string& name, int type = kModelPart);
    /// Closes the current model and its window; the model opened last before it becomes
    /// current (24). The host's mode is not re-evaluated when none is left.
    void CloseModel();
    /// Makes the open model `name` current (24); false when no such model is open.
    bool ActivateWindow(const std::string& name);
    /// The open model whose handle is `handle` (current or behind), or null.
    CModel* FindModel(ProMdl handle);
    /// The handle the host gives out for `model`.
    static ProMdl HandleOf(const CModel& model);
    /// Version stamps and their texts handed out and not yet freed.
    int verstampsOpen = 0;
    /// What the host's refit command does: fit the model's box into the window.
    void Refit();

    // -- Notifications and the host's mode ---------------------------------------------------
    /// The callback the plug-in registered for each notification type.
    std::map<ProNotifyType, ProFunction> notifications;
    /// Types whose registration the host refuses, with the status it gives.
    std::map<ProNotifyType, ProError> refusedNotifications;
    /// Calls the callback registered for `type`, as the host does inside its own work; the
    /// callback's status, or 0 when none is registered. Recorded as a call.
    ProError Notify(ProNotifyType type);
    /// What ProModeCurrentGet gives: `forcedMode` when set, else the current model's (part 1,
    /// assembly 5, drawing 6); without a model the call fails and leaves the mode alone.
    std::optional<ProMode> forcedMode;
    std::optional<ProMode> CurrentMode() const;
    /// What ProSectionIsActive writes: 1 while a sketch section is edited; other values on
    /// purpose.
    ProBoolean sectionActive = 0;

    /// Host command names that ProCmdCmdIdFind does not know; every other name is known.
    std::set<std::string> unknownCommands;
    /// The identifiers handed out by ProCmdCmdIdFind, by name; each name keeps its first one.
    std::map<std::string, std::uintptr_t> commandIds;

    /// Every macro text received, UTF-8, in order.
    std::vector<std::string> macros;
    /// Refuse macros with a command the host does not know (otherwise they are taken).
    bool refuseUnknownMacros = false;
    /// Macro texts the host refuses whatever they hold.
    std::set<std::string> refusedMacros;
    int refreshCount = 0;
    int repaintCount = 0;

    struct CPanZoomFrame {
        std::uint64_t ms;
        Matrix4 matrix;
    };
    /// Where the mouse is, in window units (0..1000 across, 0..843.75 up); none: tracking
    /// fails, unless a graphics window is given.
    std::optional<Point3> cursor;
    /// A real window whose mouse moves ProMouseTrack waits for (Windows only); null: none.
    void* graphicsWindow = nullptr;
    /// The pan-zoom space point at window units `w`.
    Point3 PanZoomPoint(const Point3& w) const;

    /// Every pan-zoom matrix the plug-in set, with the time it came.
    std::vector<CPanZoomFrame> panZoomFrames;

    /// What the last successful ProMouseTrack handed out: the pan-zoom point and the window
    /// units of the mouse position it was found at.
    struct CTrackedPoint {
        Point3 point;
        Point3 at;
    };
    std::optional<CTrackedPoint> lastTrack;

    // -- The menu bar and the commands the plug-in added ------------------------------------
    /// A command added with ProCmdActionAdd, with what ProCmdDesignate and ProCmdIconSet gave.
    struct CAddedCommand {
        std::string name;
        ProUiCmdActFn action = nullptr;
        ProUiCmdAccessFn access = nullptr;
        std::string label;  ///< empty until designated
        std::string icon;   ///< empty until an icon is set
    };
    /// By the id the host handed out (also in commandIds, so ProCmdCmdIdFind finds them).
    std::map<std::uintptr_t, CAddedCommand> addedCommands;
    struct CMenuEntry {
        std::string item;
        std::string label;
        std::uintptr_t command = 0;
    };
    struct CMenu {
        std::string name;
        std::string label;
        std::vector<CMenuEntry> entries;
    };
    /// The main menu bar, left to right; the host's own menus have no entries here.
    std::vector<CMenu> menuBar;
    /// Every compiled help file and page the plug-in asked the help viewer to show.
    std::vector<std::string> helpShown;

    // -- Faults on purpose -----------------------------------------------------------------
    enum class EFault { None, Status, Throw };
    struct CFault {
        EFault kind = EFault::None;
        ProError status = PRO_TK_GENERAL_ERROR;
        /// Fails only the nth call from when the fault was set (1: the next); 0: every call.
        int nth = 0;
        int calls = 0;
    };
    /// Host functions by name without "_v" that fail with a status or throw.
    std::map<std::string, CFault> faults;
    /// Every call of every host function in the table since the reset, by name without "_v".
    std::map<std::string, std::uint64_t> callTotals;
    /// Counts a call of `name` and tells whether it is to fail, and how; the call is logged.
    EFault TakeFault(const std::string& name);

private:
    CSession() = default;
    /// A window of the session with its own model and view.
    struct CWindow {
        CModel model;
        Matrix4 orientation;
        Matrix4 panZoom;
        std::map<std::wstring, std::pair<Matrix4, Matrix4>> savedViews;
        std::string displayStyle;
    };
    /// Open windows that are not current, oldest first.
    std::vector<CWindow> m_behind;
    void PutCurrentBehind();
    void BringForward(std::size_t index);
    std::set<std::string> m_omitted;
    std::vector<QvxHostFunction> m_table;
    QvxToolkitArgs m_args{};
};

/// Every host function the simulated host offers, sorted by name with the "_v" suffix.
std::vector<QvxHostFunction> AllHostFunctions();

/// The groups of host functions, each from the file that implements them.
void AddMessageFunctions(std::vector<QvxHostFunction>& table);
void AddViewFunctions(std::vector<QvxHostFunction>& table);
void AddMacroFunctions(std::vector<QvxHostFunction>& table);
void AddMouseFunctions(std::vector<QvxHostFunction>& table);
void AddCommandFunctions(std::vector<QvxHostFunction>& table);
void AddNotifyFunctions(std::vector<QvxHostFunction>& table);
void AddModelDataFunctions(std::vector<QvxHostFunction>& table);
void AddMenuFunctions(std::vector<QvxHostFunction>& table);

/// What the host does when the user chooses the menu entry `item`: the command's access
/// callback with the mode of a choice, then its action callback. Both results are logged.
struct CMenuChoice {
    bool found = false;  ///< some menu has the entry
    int access = 0;
    int action = 0;
};
CMenuChoice ChooseMenuEntry(const std::string& item);

/// Runs a macro as the host would; the status the host returns.
ProError RunMacro(const std::string& macro);

/// Fills a message key's "%0s" style places from `args`, in order: s narrow text, w wide
/// text, d int, f double. Unknown places are left as they stand.
std::string FormatMessageKey(const char* key, va_list args);

}  // namespace sim
