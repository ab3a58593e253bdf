// COxImage: one image of an action, as the driver reads it, and everything its record points
// at. Copies are deep: texts and bytes are duplicated, while a resource id or type that holds
// an integer stays that integer.
#pragma once

#include "client/oxapp/action_records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace oxapp {

class COxImage {
public:
    /// An image of type 0 with an empty id.
    COxImage();
    /// A deep copy of `record`. A type over 3 throws std::runtime_error("invalid image type").
    explicit COxImage(const oxImage_t& record);
    COxImage(const COxImage& other);
    COxImage(COxImage&& other) noexcept;
    COxImage& operator=(const COxImage& other);
    COxImage& operator=(COxImage&& other) noexcept;
    ~COxImage() = default;

    /// Type 1: the image is a file.
    void SetFile(const char* fileName, std::uint32_t index);
    /// Type 2: resource `id` of type `type` in the module `fileName`; the index stays. A
    /// non-zero integer id or type is stored as the text "#" and its decimal number.
    void SetResource(const char* fileName, const char* id, const char* type);
    /// Type 3: a copy of `size` bytes; the index stays.
    void SetData(const void* bytes, std::uint32_t size);
    void SetIndex(std::uint32_t index);
    /// Converts in place: the file name goes along between types 1 and 2, the index always;
    /// the resource's id and type and the bytes are dropped. A type over 3 throws
    /// std::runtime_error("invalid parameter OxImageType_t").
    void SetType(std::uint32_t type);
    /// A type other than 2 becomes type 1 first, so a data image loses its bytes.
    void SetFileName(const char* fileName);
    /// A null text counts as empty.
    void SetId(const char* id);

    std::uint32_t Type() const { return m_record.type; }
    const char* Id() const { return m_id.c_str(); }
    /// These give 0 (the empty text for FileName) for a type that has no such field.
    std::uint32_t Index() const;
    const char* FileName() const;
    const char* ResourceId() const;
    const char* ResourceType() const;
    const std::uint8_t* Data() const;
    std::uint32_t DataSize() const;

    /// Turns a resource image into a data image with a copy of the resource's bytes; false,
    /// and the image unchanged, when the module or the resource cannot be read or the image
    /// is no resource. The module is loaded as a library; the resource's type is the first of
    /// the module's types that holds the id, whatever type the image names.
    bool Load();

    /// The record handed to the driver; valid until this image changes.
    const oxImage_t& Record() const { return m_record; }

private:
    /// A resource id or type: a text, or an integer of at most 65535 (0 for none).
    struct ResourceName {
        std::string text;
        std::uintptr_t number = 0;
        bool isText = false;
        void Set(const char* name);
        const char* Pointer() const {
            return isText ? text.c_str() : reinterpret_cast<const char*>(number);
        }
    };

    /// Writes the record from the fields, for the current type.
    void Repoint();

    oxImage_t m_record{};
    std::string m_id;
    std::string m_fileName;
    ResourceName m_resourceId;
    ResourceName m_resourceType;
    std::vector<std::uint8_t> m_data;
    std::uint32_t m_index = 0;
};

/// The records of `images`, in order, as one block for the driver; valid while `images` is
/// unchanged.
std::vector<oxImage_t> ImageRecords(const std::vector<COxImage>& images);

}  // namespace oxapp
