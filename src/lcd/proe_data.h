// The host's side of the LCD applet's data border: the current model's document data (type,
// file name, size, times) and, for parts and assemblies, its material, density, mass and volume,
// all read through the host toolkit and kept as ready-made text. Only one may exist at a time:
// the notifications that tell the LCD window to read again are process-wide.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/cad_interfaces.h"
#include "toolkit/pro_types.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace qvx::lcd {

class CLcdProeDataImpl;

namespace detail {
// The document and the model both name their read Update(); these give each its own name so
// that one class can answer both differently.
class CDocumentUpdate : public _Qvx::ICadDocument {
public:
    void Update() final { UpdateDocument(); }
    virtual void UpdateDocument() = 0;
};
class CModelUpdate : public _Qvx::ICadModel {
public:
    void Update() final { UpdateModel(); }
    virtual void UpdateModel() = 0;
};
}  // namespace detail

class CLcdProeData : public detail::CDocumentUpdate,
                     public detail::CModelUpdate,
                     public _Qvx::IInstance {
public:
    /// `window` is the LCD window told to read again when the host's document changes.
    explicit CLcdProeData(WindowId window, IAppletPlatform& platform = SystemAppletPlatform());
    ~CLcdProeData() override;

    // ICadDocument
    const std::wstring& GetType() const override { return m_type; }
    /// Lower case "name.extension"; empty without a model.
    const std::wstring& GetName() const override { return m_fileName; }
    std::int64_t GetFileSize() const override { return m_fileSize; }
    const std::wstring& GetAuthor() const override { return m_author; }
    const std::wstring& GetLastSavedBy() const override { return m_lastSavedBy; }
    const std::wstring& GetCreated() const override { return m_created; }
    const std::wstring& GetLastSaved() const override { return m_lastSaved; }
    /// ICadDocument::Update: reads everything but the mass properties, and drops any mass
    /// value held.
    void UpdateDocument() override { Read(false); }
    /// ICadModel::Update: reads everything, the mass properties included.
    void UpdateModel() override { Read(true); }

    // ICadModel
    const std::wstring& GetMaterial() const override { return m_material; }
    const std::wstring& GetDensity() const override { return m_density; }
    const std::wstring& GetDensityUnit() const override { return m_densityUnit; }
    const std::wstring& GetMass() const override { return m_mass; }
    const std::wstring& GetMassUnit() const override { return m_massUnit; }
    const std::wstring& GetVolume() const override { return m_volume; }
    const std::wstring& GetVolumeUnit() const override { return m_volumeUnit; }
    bool HasMassProperties() const override { return m_hasMassProperties; }

    /// The one read behind both updates; the mass properties only `withMass`.
    void Read(bool withMass);

private:
    void Clear();
    void ReadFile(ProMdl model);
    void ReadMaterial(ProMdl model);
    void ReadMassProperties(ProMdl model);

    std::shared_ptr<CLcdProeDataImpl> m_impl;
    std::wstring m_type;
    std::int64_t m_fileSize = 0;
    std::wstring m_volume;
    std::wstring m_mass;
    std::wstring m_unused;  ///< cleared with the others and never filled
    std::wstring m_density;
    std::wstring m_fileName;
    std::wstring m_author;
    std::wstring m_lastSavedBy;
    std::wstring m_created;
    std::wstring m_lastSaved;
    std::wstring m_material;
    std::wstring m_massUnit;
    std::wstring m_volumeUnit;
    std::wstring m_densityUnit;
    bool m_hasMassProperties = false;
    std::map<ProMdlType, std::wstring> m_typeNames;
};

/// A calendar time as the C library's "%c" writes it in local time; empty when it cannot.
std::wstring FormatFileTime(std::int64_t secondsSince1970);

}  // namespace qvx::lcd
