#include "client/oxapp/ox_image.h"

#include <cstring>
#include <stdexcept>
#include <utility>

namespace oxapp {

namespace {

const char* Text(const char* text) { return text ? text : ""; }

}  // namespace

void COxImage::ResourceName::Set(const char* name) {
    if (OxIsIntResource(name)) {
        isText = false;
        number = reinterpret_cast<std::uintptr_t>(name);
        text.clear();
    } else {
        isText = true;
        number = 0;
        text = name;
    }
}

COxImage::COxImage() { Repoint(); }

COxImage::COxImage(const oxImage_t& record) : m_id(Text(record.id)) {
    switch (record.type) {
        case kOxImageNone:
            break;
        case kOxImageFile:
            m_fileName = Text(record.file.fileName);
            m_index = record.file.index;
            break;
        case kOxImageResource:
            m_fileName = Text(record.resource.fileName);
            m_resourceId.Set(record.resource.resourceId);
            m_resourceType.Set(record.resource.resourceType);
            m_index = record.resource.index;
            break;
        case kOxImageData:
            if (record.memory.data) {
                m_data.assign(record.memory.data, record.memory.data + record.memory.dataSize);
            }
            m_index = record.memory.index;
            break;
        default:
            throw std::runtime_error("invalid image type");
    }
    m_record.type = record.type;
    Repoint();
}

COxImage::COxImage(const COxImage& other)
    : m_record(other.m_record),
      m_id(other.m_id),
      m_fileName(other.m_fileName),
      m_resourceId(other.m_resourceId),
      m_resourceType(other.m_resourceType),
      m_data(other.m_data),
      m_index(other.m_index) {
    Repoint();
}

COxImage::COxImage(COxImage&& other) noexcept
    : m_record(other.m_record),
      m_id(std::move(other.m_id)),
      m_fileName(std::move(other.m_fileName)),
      m_resourceId(std::move(other.m_resourceId)),
      m_resourceType(std::move(other.m_resourceType)),
      m_data(std::move(other.m_data)),
      m_index(other.m_index) {
    Repoint();
    other.Repoint();
}

COxImage& COxImage::operator=(const COxImage& other) {
    if (this != &other) *this = COxImage(other);
    return *this;
}

COxImage& COxImage::operator=(COxImage&& other) noexcept {
    if (this == &other) return *this;
    m_record = other.m_record;
    m_id = std::move(other.m_id);
    m_fileName = std::move(other.m_fileName);
    m_resourceId = std::move(other.m_resourceId);
    m_resourceType = std::move(other.m_resourceType);
    m_data = std::move(other.m_data);
    m_index = other.m_index;
    Repoint();
    other.Repoint();
    return *this;
}

void COxImage::Repoint() {
    std::uint32_t type = m_record.type;
    std::memset(&m_record, 0, sizeof(m_record));
    m_record.size = sizeof(oxImage_t);
    m_record.type = type;
    m_record.id = m_id.c_str();
    switch (type) {
        case kOxImageFile:
            m_record.file.fileName = m_fileName.c_str();
            m_record.file.index = m_index;
            break;
        case kOxImageResource:
            m_record.resource.fileName = m_fileName.c_str();
            m_record.resource.resourceId = m_resourceId.Pointer();
            m_record.resource.resourceType = m_resourceType.Pointer();
            m_record.resource.index = m_index;
            break;
        case kOxImageData:
            m_record.memory.data = m_data.empty() ? nullptr : m_data.data();
            m_record.memory.dataSize = static_cast<std::uint32_t>(m_data.size());
            m_record.memory.index = m_index;
            break;
        default:
            break;
    }
}

void COxImage::SetFile(const char* fileName, std::uint32_t index) {
    SetType(kOxImageFile);
    m_fileName = Text(fileName);
    m_index = index;
    Repoint();
}

void COxImage::SetResource(const char* fileName, const char* id, const char* type) {
    SetType(kOxImageResource);
    m_fileName = Text(fileName);
    // An integer becomes its text form, which resource functions read as the same integer.
    auto store = [](ResourceName& into, const char* name) {
        if (name && OxIsIntResource(name)) {
            into.Set(("#" + std::to_string(reinterpret_cast<std::uintptr_t>(name))).c_str());
        } else {
            into.Set(name);
        }
    };
    store(m_resourceId, id);
    store(m_resourceType, type);
    Repoint();
}

void COxImage::SetData(const void* bytes, std::uint32_t size) {
    SetType(kOxImageData);
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    if (first) m_data.assign(first, first + size);
    Repoint();
}

void COxImage::SetIndex(std::uint32_t index) {
    m_index = index;
    Repoint();
}

void COxImage::SetType(std::uint32_t type) {
    if (type > kOxImageData) throw std::runtime_error("invalid parameter OxImageType_t");
    bool keepsFile = (type == kOxImageFile || type == kOxImageResource) &&
                     (m_record.type == kOxImageFile || m_record.type == kOxImageResource);
    if (!keepsFile) m_fileName.clear();
    m_resourceId = {};
    m_resourceType = {};
    m_data.clear();
    m_record.type = type;
    Repoint();
}

void COxImage::SetFileName(const char* fileName) {
    if (m_record.type != kOxImageResource) SetType(kOxImageFile);
    if (m_record.type != kOxImageFile && m_record.type != kOxImageResource) {
        throw std::runtime_error("invalid image type");
    }
    m_fileName = Text(fileName);
    Repoint();
}

void COxImage::SetId(const char* id) {
    m_id = Text(id);
    Repoint();
}

std::uint32_t COxImage::Index() const { return m_record.type == kOxImageNone ? 0 : m_index; }

const char* COxImage::FileName() const {
    bool hasFile = m_record.type == kOxImageFile || m_record.type == kOxImageResource;
    return hasFile ? m_fileName.c_str() : "";
}

const char* COxImage::ResourceId() const {
    return m_record.type == kOxImageResource ? m_resourceId.Pointer() : nullptr;
}

const char* COxImage::ResourceType() const {
    return m_record.type == kOxImageResource ? m_resourceType.Pointer() : nullptr;
}

const std::uint8_t* COxImage::Data() const {
    return m_record.type == kOxImageData ? m_record.memory.data : nullptr;
}

std::uint32_t COxImage::DataSize() const {
    return m_record.type == kOxImageData ? m_record.memory.dataSize : 0;
}

std::vector<oxImage_t> ImageRecords(const std::vector<COxImage>& images) {
    std::vector<oxImage_t> records;
    records.reserve(images.size());
    for (const COxImage& image : images) records.push_back(image.Record());
    return records;
}

}  // namespace oxapp
