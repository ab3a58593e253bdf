// The host toolkit's types, as this plug-in uses them. Written from what the plug-in needs of
// each host call; the host's own headers are not used.
#pragma once

#include <cstdint>

/// Status of every host call; 0 is success. A call the host does not offer gives -1.
using ProError = int;
enum : ProError {
    PRO_TK_NO_ERROR = 0,
    PRO_TK_GENERAL_ERROR = -1,
    PRO_TK_BAD_INPUTS = -2,
    PRO_TK_USER_ABORT = -3,
    PRO_TK_E_NOT_FOUND = -4,
    PRO_TK_E_FOUND = -5,
    PRO_TK_BAD_CONTEXT = -15,
};

/// The host's mode; -1 unused, 0 sketcher, others by the host's numbering.
using ProMode = int;
inline constexpr ProMode PRO_MODE_UNUSED = -1;
inline constexpr ProMode PRO_MODE_SKETCHER = 0;

using ProBoolean = int;
using ProMatrix = double[4][4];
using ProVector = double[3];
using ProPoint3d = double[3];

using ProName = wchar_t[32];
using ProLine = wchar_t[80];
using ProPath = wchar_t[260];
using ProFileName = char[32];
using ProCharName = char[32];

struct ProMdlOpaque;
struct ProViewOpaque;
struct ProVerstampOpaque;
using ProMdl = ProMdlOpaque*;
using ProView = ProViewOpaque*;
using ProVerstamp = ProVerstampOpaque*;
using ProSolid = ProMdl;
/// Window ids are small integers; -1 names the current window.
using ProWindowId = int;
using ProMdlType = int;

/// Identifier of a host command or of a command the plug-in added.
using uiCmdCmdId = void*;
using uiCmdValue = void;
using ProUiCmdActFn = int (*)(uiCmdCmdId command, uiCmdValue* value, void* data);
using ProUiCmdAccessFn = int (*)(int access);

/// Why the host asks a command's access callback: 0 while it only looks at its menus, any
/// other value when the user chose the command.
using uiCmdAccessMode = int;
inline constexpr uiCmdAccessMode UI_CMD_ACCESS_LOOK = 0;
inline constexpr uiCmdAccessMode UI_CMD_ACCESS_CHOSEN = 1;
/// What an access callback answers: the command was handled in the callback (2), or it is
/// there to be chosen (3).
using uiCmdAccessState = int;
inline constexpr uiCmdAccessState ACCESS_HANDLED = 2;
inline constexpr uiCmdAccessState ACCESS_AVAILABLE = 3;
using ProFunction = int (*)();

/// Which toolkit notification a callback is for.
using ProNotifyType = int;

struct ProMdldata {
    ProName name;
    ProCharName type;
    ProPath path;
    ProName device;
    ProName host;
    int version;
};

struct ProModelitem {
    int type;
    int id;
    ProMdl owner;
};

struct ProMaterial {
    ProName matl_name;
    ProSolid part;
};

struct ProParamvalue {
    int type;
    double d_val;
};

struct ProUnititem {
    ProName name;
    ProMdl owner;
};

struct ProUnitsystem {
    ProName name;
    ProMdl owner;
};

struct ProMassProperty {
    double volume;
    double surface_area;
    double density;
    double mass;
    double center_of_gravity[3];
    double coor_sys_inertia[3][3];
    double coor_sys_inertia_tensor[3][3];
    double cg_inertia_tensor[3][3];
    double principal_moments[3];
    double principal_axes[3][3];
};
