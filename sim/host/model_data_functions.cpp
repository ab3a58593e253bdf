// The simulated host's model data: the current model, its type, file data and version stamp,
// its material and mass properties, and its unit system.
#include "sim/host/host_entry.h"
#include "sim/host/session.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>

namespace sim {
namespace {

/// The host's model item type of a material, and its mass density property.
constexpr int kMaterialItem = 17001;
constexpr int kMassDensity = 34;
constexpr int kUnitMass = 1;
constexpr int kUnitLength = 0;

CSession& S() { return CSession::Instance(); }

template <std::size_t N>
void Copy(wchar_t (&to)[N], const std::wstring& from) {
    std::wcsncpy(to, from.c_str(), N - 1);
    to[N - 1] = L'\0';
}

std::wstring Upper(const std::string& text) {
    std::wstring out;
    for (unsigned char c : text) out += static_cast<wchar_t>(std::towupper(c));
    return out;
}

ProError MdlCurrentGet(ProMdl* model) {
    if (!model) return PRO_TK_BAD_INPUTS;
    if (!S().model) return PRO_TK_E_NOT_FOUND;
    *model = CSession::HandleOf(*S().model);
    return PRO_TK_NO_ERROR;
}

ProError MdlTypeGet(ProMdl handle, ProMdlType* type) {
    const CModel* model = S().FindModel(handle);
    if (!model || !type) return PRO_TK_BAD_INPUTS;
    *type = model->type;
    return PRO_TK_NO_ERROR;
}

ProError MdlDataGet(ProMdl handle, ProMdldata* data) {
    const CModel* model = S().FindModel(handle);
    if (!model || !data) return PRO_TK_BAD_INPUTS;
    *data = ProMdldata{};
    std::size_t dot = model->name.rfind('.');
    Copy(data->name, Upper(model->name.substr(0, dot)));
    std::string extension = dot == std::string::npos ? "" : model->name.substr(dot + 1);
    std::snprintf(data->type, sizeof data->type, "%ls", Upper(extension).c_str());
    Copy(data->path, model->folder);
    Copy(data->device, model->device);
    Copy(data->host, model->host);
    data->version = model->version;
    return PRO_TK_NO_ERROR;
}

ProError MdlVerstampGet(ProMdl handle, ProVerstamp* stamp) {
    if (!S().FindModel(handle) || !stamp) return PRO_TK_BAD_INPUTS;
    *stamp = reinterpret_cast<ProVerstamp>(new int(1));
    ++S().verstampsOpen;
    return PRO_TK_NO_ERROR;
}

ProError VerstampStringGet(ProVerstamp stamp, char** text) {
    if (!stamp || !text) return PRO_TK_BAD_INPUTS;
    *text = static_cast<char*>(std::malloc(16));
    std::strcpy(*text, "stamp-1");
    ++S().verstampsOpen;
    return PRO_TK_NO_ERROR;
}

ProError VerstampFree(ProVerstamp* stamp) {
    if (!stamp || !*stamp) return PRO_TK_BAD_INPUTS;
    delete reinterpret_cast<int*>(*stamp);
    *stamp = nullptr;
    --S().verstampsOpen;
    return PRO_TK_NO_ERROR;
}

ProError VerstampStringFree(char** text) {
    if (!text || !*text) return PRO_TK_BAD_INPUTS;
    std::free(*text);
    *text = nullptr;
    --S().verstampsOpen;
    return PRO_TK_NO_ERROR;
}

ProError MaterialCurrentGet(ProSolid part, ProMaterial* material) {
    const CModel* model = S().FindModel(part);
    if (!model || !material) return PRO_TK_BAD_INPUTS;
    if (!model->material) return PRO_TK_E_NOT_FOUND;
    Copy(material->matl_name, model->material->name);
    material->part = part;
    return PRO_TK_NO_ERROR;
}

ProError ModelitemByNameInit(ProMdl handle, int type, const wchar_t* name, ProModelitem* item) {
    const CModel* model = S().FindModel(handle);
    if (!model || !name || !item) return PRO_TK_BAD_INPUTS;
    if (type != kMaterialItem || !model->material || model->material->name != name) {
        return PRO_TK_E_NOT_FOUND;
    }
    *item = ProModelitem{kMaterialItem, 1, handle};
    return PRO_TK_NO_ERROR;
}

ProError MaterialPropertyGet(ProModelitem* item, int property, ProParamvalue* value,
                             ProUnititem* units) {
    if (!item || !value || !units || item->type != kMaterialItem) return PRO_TK_BAD_INPUTS;
    const CModel* model = S().FindModel(item->owner);
    if (!model || !model->material || property != kMassDensity) return PRO_TK_E_NOT_FOUND;
    *value = ProParamvalue{/*type=*/1, model->material->density};
    Copy(units->name, model->material->densityUnit);
    units->owner = item->owner;
    return PRO_TK_NO_ERROR;
}

ProError SolidMassPropertyGet(ProSolid solid, const wchar_t*, ProMassProperty* properties) {
    const CModel* model = S().FindModel(solid);
    if (!model || !properties) return PRO_TK_BAD_INPUTS;
    if (!model->mass || (model->type != kModelPart && model->type != kModelAssembly)) {
        return PRO_TK_E_NOT_FOUND;
    }
    *properties = ProMassProperty{};
    properties->volume = model->mass->volume;
    properties->density = model->mass->density;
    properties->mass = model->mass->mass;
    return PRO_TK_NO_ERROR;
}

ProError MdlPrincipalunitsystemGet(ProMdl handle, ProUnitsystem* system) {
    if (!S().FindModel(handle) || !system) return PRO_TK_BAD_INPUTS;
    Copy(system->name, L"principal");
    system->owner = handle;
    return PRO_TK_NO_ERROR;
}

ProError UnitsystemUnitGet(ProUnitsystem* system, int unitType, ProUnititem* unit) {
    if (!system || !unit) return PRO_TK_BAD_INPUTS;
    const CModel* model = S().FindModel(system->owner);
    if (!model || (unitType != kUnitMass && unitType != kUnitLength)) return PRO_TK_E_NOT_FOUND;
    Copy(unit->name, unitType == kUnitMass ? model->massUnit : model->lengthUnit);
    unit->owner = system->owner;
    return PRO_TK_NO_ERROR;
}

ProError UnitExpressionGet(ProUnititem* unit, wchar_t* expression) {
    if (!unit || !expression) return PRO_TK_BAD_INPUTS;
    std::wcsncpy(expression, unit->name, 79);
    expression[79] = L'\0';
    return PRO_TK_NO_ERROR;
}

}  // namespace

void AddModelDataFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&MdlCurrentGet>(table, "ProMdlCurrentGet_v");
    AddHostFunction<&MdlTypeGet>(table, "ProMdlTypeGet_v");
    AddHostFunction<&MdlDataGet>(table, "ProMdlDataGet_v");
    AddHostFunction<&MdlVerstampGet>(table, "ProMdlVerstampGet_v");
    AddHostFunction<&VerstampStringGet>(table, "ProVerstampStringGet_v");
    AddHostFunction<&VerstampFree>(table, "ProVerstampFree_v");
    AddHostFunction<&VerstampStringFree>(table, "ProVerstampStringFree_v");
    AddHostFunction<&MaterialCurrentGet>(table, "ProMaterialCurrentGet_v");
    AddHostFunction<&ModelitemByNameInit>(table, "ProModelitemByNameInit_v");
    AddHostFunction<&MaterialPropertyGet>(table, "ProMaterialPropertyGet_v");
    AddHostFunction<&SolidMassPropertyGet>(table, "ProSolidMassPropertyGet_v");
    AddHostFunction<&MdlPrincipalunitsystemGet>(table, "ProMdlPrincipalunitsystemGet_v");
    AddHostFunction<&UnitsystemUnitGet>(table, "ProUnitsystemUnitGet_v");
    AddHostFunction<&UnitExpressionGet>(table, "ProUnitExpressionGet_v");
}

}  // namespace sim
