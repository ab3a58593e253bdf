#include "lcd/proe_data.h"

#include "lcd/proe_data_impl.h"
#include "support/os.h"
#include "toolkit/pro_toolkit.h"
#include "toolkit/undostack_bypass.h"

#include <cstring>
#include <ctime>
#include <cwchar>
#include <cwctype>
#include <sstream>
#include <vector>

namespace qvx::lcd {
namespace {

constexpr ProMdlType kAssembly = 1;
constexpr ProMdlType kPart = 2;
constexpr int kMaterialItem = 17001;
constexpr int kMassDensity = 34;
constexpr int kUnitLength = 0;
constexpr int kUnitMass = 1;
const std::wstring kUnknown = L"Unknown";
const std::wstring kNotSaved = L"Not saved";

/// A number as a stream writes it by default: three significant digits.
std::wstring Number(double value) {
    std::wostringstream out;
    out.precision(3);
    out << value;
    return out.str();
}

std::wstring UnitText(ProUnititem& unit) {
    ProLine expression = {};
    ProUnitExpressionGet(&unit, expression);
    return expression;
}

}  // namespace

std::wstring FormatFileTime(std::int64_t secondsSince1970) {
    std::time_t time = static_cast<std::time_t>(secondsSince1970);
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &time) != 0) return {};
#else
    if (!localtime_r(&time, &local)) return {};
#endif
    wchar_t buffer[128] = {};
    if (std::wcsftime(buffer, 128, L"%c", &local) == 0) return {};
    return buffer;
}

CLcdProeData::CLcdProeData(WindowId window, IAppletPlatform& platform)
    : m_impl(std::make_shared<CLcdProeDataImpl>(window, platform)),
      m_typeNames{{-1, L"Unknown"}, {1, L"Assembly"},      {2, L"Part"},
                  {4, L"Drawing"},  {7, L"3D Section"},    {11, L"2D Section"},
                  {19, L"Layout"},  {33, L"Drawing Form"}, {37, L"Manufacturing"},
                  {105, L"Report"}, {116, L"Markup"},      {121, L"Diagram"}} {}

CLcdProeData::~CLcdProeData() = default;

void CLcdProeData::Clear() {
    m_type.clear();
    m_fileSize = 0;
    for (std::wstring* text : {&m_volume, &m_mass, &m_unused, &m_density, &m_fileName, &m_material,
                               &m_massUnit, &m_volumeUnit, &m_densityUnit}) {
        text->clear();
    }
    m_hasMassProperties = false;
    m_author = kUnknown;
    m_lastSavedBy = kUnknown;
    m_created = kNotSaved;
    m_lastSaved = kNotSaved;
}

void CLcdProeData::Read(bool withMass) {
    CQvxUndostackClearBypass bypass(true);
    Clear();
    ProMdl model = nullptr;
    if (ProMdlCurrentGet(&model) != PRO_TK_NO_ERROR || !model) return;

    ProMdlType type = -1;
    if (ProMdlTypeGet(model, &type) == PRO_TK_NO_ERROR) {
        auto found = m_typeNames.find(type);
        if (found != m_typeNames.end()) m_type = found->second;
    }
    // The version stamp is fetched and freed at once; nothing reads it.
    ProVerstamp stamp = nullptr;
    char* stampText = nullptr;
    ProMdlVerstampGet(model, &stamp);
    ProVerstampStringGet(stamp, &stampText);
    ProVerstampFree(&stamp);
    ProVerstampStringFree(&stampText);

    ReadFile(model);
    if (type != kAssembly && type != kPart) return;
    m_hasMassProperties = true;
    ReadMaterial(model);
    if (withMass) ReadMassProperties(model);
}

void CLcdProeData::ReadFile(ProMdl model) {
    ProMdldata data{};
    if (ProMdlDataGet(model, &data) != PRO_TK_NO_ERROR) return;
    std::wstring name = data.name;
    name += L'.';
    name += os::WidenAcp(std::string(data.type, ::strnlen(data.type, sizeof data.type)));
    for (wchar_t& c : name) c = static_cast<wchar_t>(std::towlower(c));
    m_fileName = name;
    // A model of another machine is not looked for.
    if (data.host[0] != L'\0') return;

    std::wstring path = data.device;
    if (!path.empty()) path += L':';
    const std::wstring folder = data.path;
    if (folder.empty() || folder.front() != L'\\') path += L'\\';
    path += folder;
    if (folder.empty() || folder.back() != L'\\') path += L'\\';
    path += m_fileName;

    // The names tried are the model's own version as the suffix (for any version above 0),
    // then the bare name. A name is looked for once: a version in the billions would
    // otherwise ask for the same missing file as many times.
    std::vector<std::wstring> names;
    if (data.version > 0) names.push_back(path + L"." + std::to_wstring(data.version));
    if (data.version >= 0) names.push_back(path);
    for (const std::wstring& name : names) {
        auto status = os::StatFile(name);
        if (!status) continue;
        m_fileSize = static_cast<std::int64_t>(status->size);
        m_lastSaved = FormatFileTime(status->lastWriteSeconds);
        m_created = FormatFileTime(status->createdSeconds);
        return;
    }
}

void CLcdProeData::ReadMaterial(ProMdl model) {
    ProMaterial material{};
    if (ProMaterialCurrentGet(model, &material) != PRO_TK_NO_ERROR) return;
    m_material = material.matl_name;
    ProModelitem item{};
    if (ProModelitemByNameInit(model, kMaterialItem, material.matl_name, &item) != PRO_TK_NO_ERROR)
        return;
    ProParamvalue value{};
    ProUnititem unit{};
    if (ProMaterialPropertyGet(&item, kMassDensity, &value, &unit) != PRO_TK_NO_ERROR) return;
    m_densityUnit = UnitText(unit);
    m_density = Number(value.d_val);
}

void CLcdProeData::ReadMassProperties(ProMdl model) {
    ProMassProperty properties{};
    if (ProSolidMassPropertyGet(model, nullptr, &properties) != PRO_TK_NO_ERROR) return;
    m_mass = Number(properties.mass);
    m_volume = Number(properties.volume);
    // The material's density wins over the calculation's.
    if (m_density.empty()) m_density = Number(properties.density);
    ProUnitsystem system{};
    ProMdlPrincipalunitsystemGet(model, &system);
    ProUnititem unit{};
    ProUnitsystemUnitGet(&system, kUnitMass, &unit);
    m_massUnit = UnitText(unit);
    unit = ProUnititem{};
    ProUnitsystemUnitGet(&system, kUnitLength, &unit);
    m_volumeUnit = UnitText(unit) + L"^3";
    if (m_densityUnit.empty()) m_densityUnit = m_massUnit + L"//" + m_volumeUnit;
}

}  // namespace qvx::lcd
