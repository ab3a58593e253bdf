// Images of actions: deep copies, integer resource names, and conversions between types.
#include "client/oxapp/ox_image.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace {

using oxapp::COxImage;

std::string ThrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(OxImage, CopyDuplicatesTextsAndBytes) {
    const std::uint8_t bytes[] = {0x89, 'P', 'N', 'G', 0, 7};
    COxImage original;
    original.SetId("Fit");
    original.SetData(bytes, sizeof bytes);
    original.SetIndex(3);

    COxImage copy(original);
    const oxImage_t& record = copy.Record();
    EXPECT_EQ(record.size, sizeof(oxImage_t));
    EXPECT_EQ(record.type, 3u);
    EXPECT_STREQ(record.id, "Fit");
    EXPECT_NE(record.id, original.Record().id);
    ASSERT_EQ(record.memory.dataSize, sizeof bytes);
    EXPECT_NE(record.memory.data, original.Data());
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(record.memory.data), sizeof bytes),
              std::string(reinterpret_cast<const char*>(bytes), sizeof bytes));
    EXPECT_EQ(record.memory.index, 3u);

    COxImage moved(std::move(copy));
    EXPECT_STREQ(moved.Record().id, "Fit") << "the record follows its storage";
    EXPECT_EQ(moved.Record().memory.data, moved.Data());
}

TEST(OxImage, ResourceNamesUpTo65535StayIntegersInACopy) {
    oxImage_t record{};
    record.size = sizeof record;
    record.type = kOxImageResource;
    record.id = "Top";
    record.resource.fileName = "icons.dll";
    record.resource.resourceId = OxMakeIntResource(65535);
    const std::string type = "PNG";
    record.resource.resourceType = type.c_str();

    COxImage copy(record);
    EXPECT_EQ(copy.ResourceId(), OxMakeIntResource(65535));
    ASSERT_FALSE(OxIsIntResource(copy.ResourceType()));
    EXPECT_STREQ(copy.ResourceType(), "PNG");
    EXPECT_NE(copy.ResourceType(), type.c_str()) << "a text is duplicated";

    std::string name = "BIG";
    record.resource.resourceId = name.c_str();
    EXPECT_TRUE(OxIsIntResource(OxMakeIntResource(65535)));
    EXPECT_FALSE(OxIsIntResource(reinterpret_cast<const char*>(std::uintptr_t{65536})));
    EXPECT_STREQ(COxImage(record).ResourceId(), "BIG");

    record.type = 4;
    EXPECT_EQ(ThrownBy([&] { COxImage{record}; }), "invalid image type");
}

TEST(OxImage, SetResourceStoresIntegersAsNumberText) {
    COxImage image;
    image.SetIndex(2);
    image.SetResource("icons.dll", OxMakeIntResource(101), OxMakeIntResource(10));
    EXPECT_EQ(image.Type(), 2u);
    EXPECT_STREQ(image.ResourceId(), "#101");
    EXPECT_STREQ(image.ResourceType(), "#10");
    EXPECT_EQ(image.Index(), 2u);
    image.SetResource("icons.dll", "FIT", nullptr);
    EXPECT_STREQ(image.ResourceId(), "FIT");
    EXPECT_EQ(image.ResourceType(), nullptr);
}

TEST(OxImage, SetTypeKeepsTheFileBetweenFileAndResourceAndTheIndexAlways) {
    COxImage image;
    image.SetFile("fit.png", 4);
    image.SetType(kOxImageResource);
    EXPECT_STREQ(image.FileName(), "fit.png");
    EXPECT_EQ(image.Record().resource.index, 4u);
    EXPECT_EQ(image.ResourceId(), nullptr);

    image.SetResource("icons.dll", "FIT", "PNG");
    image.SetType(kOxImageData);
    EXPECT_STREQ(image.FileName(), "") << "other types have no file";
    EXPECT_EQ(image.ResourceId(), nullptr);
    EXPECT_EQ(image.Record().memory.index, 4u);
    image.SetType(kOxImageFile);
    EXPECT_STREQ(image.FileName(), "");
    EXPECT_EQ(image.Index(), 4u);

    EXPECT_EQ(ThrownBy([&] { image.SetType(4); }), "invalid parameter OxImageType_t");
    EXPECT_EQ(image.Type(), 1u) << "a refused type changes nothing";
}

TEST(OxImage, SetFileNameTurnsADataImageIntoAFile) {
    const std::uint8_t bytes[] = {1, 2, 3};
    COxImage image;
    image.SetData(bytes, sizeof bytes);
    image.SetFileName("top.png");
    EXPECT_EQ(image.Type(), 1u);
    EXPECT_EQ(image.Data(), nullptr);
    EXPECT_EQ(image.DataSize(), 0u);
    EXPECT_STREQ(image.Record().file.fileName, "top.png");

    image.SetResource("icons.dll", "TOP", nullptr);
    image.SetFileName("other.dll");
    EXPECT_EQ(image.Type(), 2u) << "a resource keeps its type";
    EXPECT_STREQ(image.ResourceId(), "TOP");
}

}  // namespace
