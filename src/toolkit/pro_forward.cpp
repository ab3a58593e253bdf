// One forwarding function per host function: the entry "<name>_v" is found on first use.
#include "toolkit/pro_toolkit.h"
#include "toolkit/host_table.h"

#include <cstdarg>

using qvx::toolkit::CallHost;
using qvx::toolkit::CHostEntry;

ProError ProCmdActionAdd(const char* name, ProUiCmdActFn action, int priority,
                         ProUiCmdAccessFn access, ProBoolean allowInNonActive,
                         ProBoolean allowInAccessory, uiCmdCmdId* id) {
    static CHostEntry<ProError(const char*, ProUiCmdActFn, int, ProUiCmdAccessFn, ProBoolean,
                               ProBoolean, uiCmdCmdId*)>
        entry("ProCmdActionAdd_v");
    return CallHost(entry, name, action, priority, access, allowInNonActive, allowInAccessory, id);
}

ProError ProCmdCmdIdFind(const char* name, uiCmdCmdId* id) {
    static CHostEntry<ProError(const char*, uiCmdCmdId*)> entry("ProCmdCmdIdFind_v");
    return CallHost(entry, name, id);
}

ProError ProCmdDesignate(uiCmdCmdId id, const char* label, const char* help,
                         const char* description, const wchar_t* messageFile) {
    static CHostEntry<ProError(uiCmdCmdId, const char*, const char*, const char*, const wchar_t*)>
        entry("ProCmdDesignate_v");
    return CallHost(entry, id, label, help, description, messageFile);
}

ProError ProCmdIconSet(uiCmdCmdId id, const char* iconFile) {
    static CHostEntry<ProError(uiCmdCmdId, const char*)> entry("ProCmdIconSet_v");
    return CallHost(entry, id, iconFile);
}

ProError ProConfigoptGet(const wchar_t* option, wchar_t* value) {
    static CHostEntry<ProError(const wchar_t*, wchar_t*)> entry("ProConfigoptGet_v");
    return CallHost(entry, option, value);
}

ProError ProConfigoptSet(const wchar_t* option, const wchar_t* value) {
    static CHostEntry<ProError(const wchar_t*, const wchar_t*)> entry("ProConfigoptSet_v");
    return CallHost(entry, option, value);
}

ProError ProMacroLoad(const wchar_t* macro) {
    static CHostEntry<ProError(const wchar_t*)> entry("ProMacroLoad_v");
    return CallHost(entry, macro);
}

ProError ProMaterialCurrentGet(ProSolid part, ProMaterial* material) {
    static CHostEntry<ProError(ProSolid, ProMaterial*)> entry("ProMaterialCurrentGet_v");
    return CallHost(entry, part, material);
}

ProError ProMaterialPropertyGet(ProModelitem* material, int property, ProParamvalue* value,
                                ProUnititem* units) {
    static CHostEntry<ProError(ProModelitem*, int, ProParamvalue*, ProUnititem*)> entry(
        "ProMaterialPropertyGet_v");
    return CallHost(entry, material, property, value, units);
}

ProError ProMdlCurrentGet(ProMdl* model) {
    static CHostEntry<ProError(ProMdl*)> entry("ProMdlCurrentGet_v");
    return CallHost(entry, model);
}

ProError ProMdlDataGet(ProMdl model, ProMdldata* data) {
    static CHostEntry<ProError(ProMdl, ProMdldata*)> entry("ProMdlDataGet_v");
    return CallHost(entry, model, data);
}

ProError ProMdlPrincipalunitsystemGet(ProMdl model, ProUnitsystem* system) {
    static CHostEntry<ProError(ProMdl, ProUnitsystem*)> entry("ProMdlPrincipalunitsystemGet_v");
    return CallHost(entry, model, system);
}

ProError ProMdlTypeGet(ProMdl model, ProMdlType* type) {
    static CHostEntry<ProError(ProMdl, ProMdlType*)> entry("ProMdlTypeGet_v");
    return CallHost(entry, model, type);
}

ProError ProMdlVerstampGet(ProMdl model, ProVerstamp* stamp) {
    static CHostEntry<ProError(ProMdl, ProVerstamp*)> entry("ProMdlVerstampGet_v");
    return CallHost(entry, model, stamp);
}

ProError ProMenubarMenuAdd(const char* menu, const char* label, const char* neighbour,
                           ProBoolean after, const wchar_t* messageFile) {
    static CHostEntry<ProError(const char*, const char*, const char*, ProBoolean, const wchar_t*)>
        entry("ProMenubarMenuAdd_v");
    return CallHost(entry, menu, label, neighbour, after, messageFile);
}

ProError ProMenubarmenuPushbuttonAdd(const char* menu, const char* item, const char* label,
                                     const char* help, const char* neighbour, ProBoolean after,
                                     uiCmdCmdId id, const wchar_t* messageFile) {
    static CHostEntry<ProError(const char*, const char*, const char*, const char*, const char*,
                               ProBoolean, uiCmdCmdId, const wchar_t*)>
        entry("ProMenubarmenuPushbuttonAdd_v");
    return CallHost(entry, menu, item, label, help, neighbour, after, id, messageFile);
}

ProError ProModeCurrentGet(ProMode* mode) {
    static CHostEntry<ProError(ProMode*)> entry("ProModeCurrentGet_v");
    return CallHost(entry, mode);
}

ProError ProModelitemByNameInit(ProMdl model, int type, const wchar_t* name, ProModelitem* item) {
    static CHostEntry<ProError(ProMdl, int, const wchar_t*, ProModelitem*)> entry(
        "ProModelitemByNameInit_v");
    return CallHost(entry, model, type, name, item);
}

ProError ProMouseTrack(int options, int* buttonState, ProPoint3d point) {
    static CHostEntry<ProError(int, int*, double*)> entry("ProMouseTrack_v");
    return CallHost(entry, options, buttonState, point);
}

ProError ProNotificationSet(ProNotifyType type, ProFunction callback) {
    static CHostEntry<ProError(ProNotifyType, ProFunction)> entry("ProNotificationSet_v");
    return CallHost(entry, type, callback);
}

ProError ProNotificationUnset(ProNotifyType type) {
    static CHostEntry<ProError(ProNotifyType)> entry("ProNotificationUnset_v");
    return CallHost(entry, type);
}

ProError ProSectionIsActive(ProBoolean* active) {
    static CHostEntry<ProError(ProBoolean*)> entry("ProSectionIsActive_v");
    return CallHost(entry, active);
}

ProError ProSolidMassPropertyGet(ProSolid solid, const wchar_t* coordinateSystem,
                                 ProMassProperty* properties) {
    static CHostEntry<ProError(ProSolid, const wchar_t*, ProMassProperty*)> entry(
        "ProSolidMassPropertyGet_v");
    return CallHost(entry, solid, coordinateSystem, properties);
}

ProError ProUnitExpressionGet(ProUnititem* unit, wchar_t* expression) {
    static CHostEntry<ProError(ProUnititem*, wchar_t*)> entry("ProUnitExpressionGet_v");
    return CallHost(entry, unit, expression);
}

ProError ProUnitsystemUnitGet(ProUnitsystem* system, int unitType, ProUnititem* unit) {
    static CHostEntry<ProError(ProUnitsystem*, int, ProUnititem*)> entry("ProUnitsystemUnitGet_v");
    return CallHost(entry, system, unitType, unit);
}

ProError ProVerstampFree(ProVerstamp* stamp) {
    static CHostEntry<ProError(ProVerstamp*)> entry("ProVerstampFree_v");
    return CallHost(entry, stamp);
}

ProError ProVerstampStringFree(char** text) {
    static CHostEntry<ProError(char**)> entry("ProVerstampStringFree_v");
    return CallHost(entry, text);
}

ProError ProVerstampStringGet(ProVerstamp stamp, char** text) {
    static CHostEntry<ProError(ProVerstamp, char**)> entry("ProVerstampStringGet_v");
    return CallHost(entry, stamp, text);
}

ProError ProViewMatrixGet(ProMdl model, ProView view, ProMatrix matrix) {
    static CHostEntry<ProError(ProMdl, ProView, double(*)[4])> entry("ProViewMatrixGet_v");
    return CallHost(entry, model, view, matrix);
}

ProError ProViewMatrixSet(ProMdl model, ProView view, ProMatrix matrix) {
    static CHostEntry<ProError(ProMdl, ProView, double(*)[4])> entry("ProViewMatrixSet_v");
    return CallHost(entry, model, view, matrix);
}

ProError ProViewRetrieve(ProMdl model, const wchar_t* name, ProView* view) {
    static CHostEntry<ProError(ProMdl, const wchar_t*, ProView*)> entry("ProViewRetrieve_v");
    return CallHost(entry, model, name, view);
}

ProError ProViewRotate(ProMdl model, ProView view, int axis, double angle) {
    static CHostEntry<ProError(ProMdl, ProView, int, double)> entry("ProViewRotate_v");
    return CallHost(entry, model, view, axis, angle);
}

ProError ProViewStore(ProMdl model, const wchar_t* name, ProView* view) {
    static CHostEntry<ProError(ProMdl, const wchar_t*, ProView*)> entry("ProViewStore_v");
    return CallHost(entry, model, name, view);
}

ProError ProWindowActivate(ProWindowId window) {
    static CHostEntry<ProError(ProWindowId)> entry("ProWindowActivate_v");
    return CallHost(entry, window);
}

ProError ProWindowCurrentGet(ProWindowId* window) {
    static CHostEntry<ProError(ProWindowId*)> entry("ProWindowCurrentGet_v");
    return CallHost(entry, window);
}

ProError ProWindowCurrentMatrixGet(ProMatrix matrix) {
    static CHostEntry<ProError(double(*)[4])> entry("ProWindowCurrentMatrixGet_v");
    return CallHost(entry, matrix);
}

ProError ProWindowPanZoomMatrixSet(ProWindowId window, ProMatrix matrix) {
    static CHostEntry<ProError(ProWindowId, double(*)[4])> entry("ProWindowPanZoomMatrixSet_v");
    return CallHost(entry, window, matrix);
}

ProError ProWindowRefresh(ProWindowId window) {
    static CHostEntry<ProError(ProWindowId)> entry("ProWindowRefresh_v");
    return CallHost(entry, window);
}

// The host's entry takes the arguments as a va_list, since a variadic call cannot be
// forwarded; it gets them wrapped in a struct, which keeps the type free of the ABI's
// attributes.
ProError ProMessageDisplay(const wchar_t* messageFile, const char* key, ...) {
    static CHostEntry<ProError(const wchar_t*, const char*, QvxMessageArgs*)> entry(
        "ProMessageDisplay_v");
    auto* fn = entry.Get();
    if (!fn) return -1;
    QvxMessageArgs args;
    va_start(args.list, key);
    ProError status = fn(messageFile, key, &args);
    va_end(args.list);
    return status;
}
