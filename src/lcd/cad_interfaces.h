// The border between the LCD applet and the host: objects the applet asks a factory for by a
// class id in text form, and the document and model data they give.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace _Qvx {

/// Anything a factory makes; deleting it through this interface destroys it.
class IInstance {
public:
    virtual ~IInstance() = default;
};

class IFactory {
public:
    virtual ~IFactory() = default;
    /// A new object for `classId`, given the LCD window's handle; null for an unknown id.
    virtual IInstance* CreateInstance(const std::wstring& classId, std::uintptr_t parameter) = 0;
    virtual std::int32_t Reserved(std::int32_t) { return 0; }
};

class ICadDocument {
public:
    virtual ~ICadDocument() = default;
    virtual const std::wstring& GetType() const = 0;
    virtual const std::wstring& GetName() const = 0;
    virtual std::int64_t GetFileSize() const = 0;
    virtual const std::wstring& GetAuthor() const = 0;
    virtual const std::wstring& GetLastSavedBy() const = 0;
    virtual const std::wstring& GetCreated() const = 0;
    virtual const std::wstring& GetLastSaved() const = 0;
    virtual void Update() = 0;
};

class ICadModel {
public:
    virtual ~ICadModel() = default;
    virtual const std::wstring& GetMaterial() const = 0;
    virtual const std::wstring& GetDensity() const = 0;
    virtual const std::wstring& GetDensityUnit() const = 0;
    virtual const std::wstring& GetMass() const = 0;
    virtual const std::wstring& GetMassUnit() const = 0;
    virtual const std::wstring& GetVolume() const = 0;
    virtual const std::wstring& GetVolumeUnit() const = 0;
    virtual void Update() = 0;
    virtual bool HasMassProperties() const = 0;
};

/// Class ids a factory knows.
inline constexpr wchar_t kCidNotifyCallback[] = L"CID_NotifyCallback";
inline constexpr wchar_t kCidCadDocumentData[] = L"CID_CADDocumentData";

}  // namespace _Qvx
