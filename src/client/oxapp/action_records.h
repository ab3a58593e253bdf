// The two records with which an application publishes its actions to the driver: the nodes of
// the action tree and the images matched to them by identifier. The driver's library reads
// them as laid out here; in a 32-bit process every pointer is one 32-bit word and both
// records are 28 bytes.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

/// The `type` of an action node.
enum OxActionNodeType_t : std::uint32_t {
    kOxActionSet = 0,
    kOxActionCategory = 1,
    kOxAction = 2,
};

/// A node of the action tree. `next` and `children` point at other nodes' records; the three
/// texts are zero-terminated narrow texts, or null.
struct oxActionNodeEx_s {
    std::uint32_t size;  ///< the size of this record in this process: 28 in a 32-bit one
    std::uint32_t type;  ///< an OxActionNodeType_t
    oxActionNodeEx_s* next;
    oxActionNodeEx_s* children;
    const char* id;
    const char* label;
    const char* description;
};

/// The forms of an image.
enum OxImageType_t : std::uint32_t {
    kOxImageNone = 0,
    kOxImageFile = 1,
    kOxImageResource = 2,  ///< a resource in a module
    kOxImageData = 3,      ///< bytes in memory
};

/// An image of an action. `id` is the identifier of the node it belongs to. A resource's id
/// and type are texts, or integers when their value is at most 65535 (OxIsIntResource).
struct oxImage_t {
    std::uint32_t size;  ///< the size of this record in this process: 28 in a 32-bit one
    std::uint32_t type;  ///< an OxImageType_t, which chooses the member of the union
    const char* id;
    union {
        struct {
            const char* fileName;
            std::uint32_t index;
        } file;
        struct {
            const char* fileName;  ///< the module that holds the resource
            const char* resourceId;
            const char* resourceType;
            std::uint32_t index;
        } resource;
        struct {
            const std::uint8_t* data;
            std::uint32_t dataSize;
            std::uint32_t index;
        } memory;
    };
};

}  // extern "C"

/// Whether a resource id or type holds an integer (at most 65535) instead of a text.
inline bool OxIsIntResource(const char* name) {
    return reinterpret_cast<std::uintptr_t>(name) <= 0xFFFF;
}

/// The integer resource id or type `value`, as a resource name holds it.
inline const char* OxMakeIntResource(std::uint16_t value) {
    return reinterpret_cast<const char*>(static_cast<std::uintptr_t>(value));
}

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(oxActionNodeEx_s) == 28);
static_assert(offsetof(oxActionNodeEx_s, type) == 4);
static_assert(offsetof(oxActionNodeEx_s, next) == 8);
static_assert(offsetof(oxActionNodeEx_s, children) == 12);
static_assert(offsetof(oxActionNodeEx_s, id) == 16);
static_assert(offsetof(oxActionNodeEx_s, label) == 20);
static_assert(offsetof(oxActionNodeEx_s, description) == 24);

static_assert(sizeof(oxImage_t) == 28);
static_assert(offsetof(oxImage_t, type) == 4);
static_assert(offsetof(oxImage_t, id) == 8);
static_assert(offsetof(oxImage_t, file.fileName) == 12);
static_assert(offsetof(oxImage_t, file.index) == 16);
static_assert(offsetof(oxImage_t, resource.fileName) == 12);
static_assert(offsetof(oxImage_t, resource.resourceId) == 16);
static_assert(offsetof(oxImage_t, resource.resourceType) == 20);
static_assert(offsetof(oxImage_t, resource.index) == 24);
static_assert(offsetof(oxImage_t, memory.data) == 12);
static_assert(offsetof(oxImage_t, memory.dataSize) == 16);
static_assert(offsetof(oxImage_t, memory.index) == 20);
#else
// The same fields in their natural places for 64-bit pointers.
static_assert(sizeof(oxActionNodeEx_s) == 48);
static_assert(offsetof(oxActionNodeEx_s, type) == 4);
static_assert(offsetof(oxActionNodeEx_s, next) == 8);
static_assert(offsetof(oxActionNodeEx_s, children) == 16);
static_assert(offsetof(oxActionNodeEx_s, id) == 24);
static_assert(offsetof(oxActionNodeEx_s, label) == 32);
static_assert(offsetof(oxActionNodeEx_s, description) == 40);

static_assert(sizeof(oxImage_t) == 48);
static_assert(offsetof(oxImage_t, type) == 4);
static_assert(offsetof(oxImage_t, id) == 8);
static_assert(offsetof(oxImage_t, file.fileName) == 16);
static_assert(offsetof(oxImage_t, file.index) == 24);
static_assert(offsetof(oxImage_t, resource.fileName) == 16);
static_assert(offsetof(oxImage_t, resource.resourceId) == 24);
static_assert(offsetof(oxImage_t, resource.resourceType) == 32);
static_assert(offsetof(oxImage_t, resource.index) == 40);
static_assert(offsetof(oxImage_t, memory.data) == 16);
static_assert(offsetof(oxImage_t, memory.dataSize) == 24);
static_assert(offsetof(oxImage_t, memory.index) == 28);
#endif
