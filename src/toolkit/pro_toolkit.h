// The host functions the plug-in calls. Each is a forwarding function of the toolkit layer
// that finds the host's entry of the same name plus "_v" on first use; a host without that
// entry gives -1 and nothing is called.
#pragma once

#include "toolkit/pro_types.h"

ProError ProCmdActionAdd(const char* name, ProUiCmdActFn action, int priority,
                         ProUiCmdAccessFn access, ProBoolean allowInNonActive,
                         ProBoolean allowInAccessory, uiCmdCmdId* id);
ProError ProCmdCmdIdFind(const char* name, uiCmdCmdId* id);
ProError ProCmdDesignate(uiCmdCmdId id, const char* label, const char* help,
                         const char* description, const wchar_t* messageFile);
ProError ProCmdIconSet(uiCmdCmdId id, const char* iconFile);
ProError ProConfigoptGet(const wchar_t* option, wchar_t* value /* ProLine */);
ProError ProConfigoptSet(const wchar_t* option, const wchar_t* value);
ProError ProMacroLoad(const wchar_t* macro);
ProError ProMaterialCurrentGet(ProSolid part, ProMaterial* material);
ProError ProMaterialPropertyGet(ProModelitem* material, int property, ProParamvalue* value,
                                ProUnititem* units);
ProError ProMdlCurrentGet(ProMdl* model);
ProError ProMdlDataGet(ProMdl model, ProMdldata* data);
ProError ProMdlPrincipalunitsystemGet(ProMdl model, ProUnitsystem* system);
ProError ProMdlTypeGet(ProMdl model, ProMdlType* type);
ProError ProMdlVerstampGet(ProMdl model, ProVerstamp* stamp);
ProError ProMenubarMenuAdd(const char* menu, const char* label, const char* neighbour,
                           ProBoolean after, const wchar_t* messageFile);
ProError ProMenubarmenuPushbuttonAdd(const char* menu, const char* item, const char* label,
                                     const char* help, const char* neighbour, ProBoolean after,
                                     uiCmdCmdId id, const wchar_t* messageFile);
/// Shows a text from a message file in the host's message area; the arguments fill the
/// key's "%0s"-style places in order ("s" narrow text, "w" wide text, "d" int, "f" double).
ProError ProMessageDisplay(const wchar_t* messageFile, const char* key, ...);
ProError ProModeCurrentGet(ProMode* mode);
ProError ProModelitemByNameInit(ProMdl model, int type, const wchar_t* name, ProModelitem* item);
/// Blocks until the mouse moves in the graphics window; gives the model point under it.
ProError ProMouseTrack(int options, int* buttonState, ProPoint3d point);
ProError ProNotificationSet(ProNotifyType type, ProFunction callback);
ProError ProNotificationUnset(ProNotifyType type);
ProError ProSectionIsActive(ProBoolean* active);
ProError ProSolidMassPropertyGet(ProSolid solid, const wchar_t* coordinateSystem,
                                 ProMassProperty* properties);
ProError ProUnitExpressionGet(ProUnititem* unit, wchar_t* expression /* ProLine */);
ProError ProUnitsystemUnitGet(ProUnitsystem* system, int unitType, ProUnititem* unit);
ProError ProVerstampFree(ProVerstamp* stamp);
ProError ProVerstampStringFree(char** text);
ProError ProVerstampStringGet(ProVerstamp stamp, char** text);
ProError ProViewMatrixGet(ProMdl model, ProView view, ProMatrix matrix);
ProError ProViewMatrixSet(ProMdl model, ProView view, ProMatrix matrix);
ProError ProViewRetrieve(ProMdl model, const wchar_t* name, ProView* view);
/// Rotates the current view by `angle` degrees about `axis` (103: out of the screen).
ProError ProViewRotate(ProMdl model, ProView view, int axis, double angle);
ProError ProViewStore(ProMdl model, const wchar_t* name, ProView* view);
ProError ProWindowActivate(ProWindowId window);
ProError ProWindowCurrentGet(ProWindowId* window);
ProError ProWindowCurrentMatrixGet(ProMatrix matrix);
ProError ProWindowPanZoomMatrixSet(ProWindowId window, ProMatrix matrix);
ProError ProWindowRefresh(ProWindowId window);
