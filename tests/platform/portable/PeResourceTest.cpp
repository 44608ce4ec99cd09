#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "VersionImageBuilder.h"
#include "platform/portable/PeResource.h"
#include "support/TestMachine.h"

namespace {

using namespace version_image::layout;
using version_image::put;

// The resource's bytes, which must end within the image.
std::optional<std::string> versionResource(std::string_view image) {
    const auto* data = reinterpret_cast<const std::uint8_t*>(image.data());
    const auto resource = platform::portable::findVersionResource({data, image.size()});
    if (!resource) {
        return std::nullopt;
    }
    EXPECT_LE(resource->data() + resource->size(), data + image.size());
    return std::string(reinterpret_cast<const char*>(resource->data()), resource->size());
}

// A file cut short has the resource only when it holds all of it.
TEST(PeResource, ATruncatedImageHasNoResource) {
    const std::string image = testing_support::readTestData("zlib1-x64.dll");
    const auto whole = versionResource(image);
    ASSERT_TRUE(whole);
    const std::size_t end = image.find(*whole) + whole->size();
    // Within the DOS header, the optional header, the section table, the tree and the resource.
    const std::size_t lengths[] = {0x3E, 0x100, 0x200, 0x20A20, end - 1};
    for (std::size_t length : lengths) {
        EXPECT_FALSE(versionResource(std::string_view(image).substr(0, length))) << length;
    }
    EXPECT_EQ(versionResource(std::string_view(image).substr(0, end)), whole);
}

TEST(PeResource, DamagedHeadersAndOffsetsMeanNoResource) {
    const std::string resource = "any bytes";
    const std::string good = version_image::peImage(resource);
    ASSERT_EQ(versionResource(good), resource);
    const std::size_t tree = kResources;
    const struct {
        const char* what;
        std::size_t offset;
        std::uint32_t value;
        unsigned size = 4;
    } damages[] = {
        {"no MZ", 0, 0x5A4E, 2},
        {"PE header past the end", kPeOffsetField, 0xFFFFFFF0u},
        {"PE header in the last bytes", kPeOffsetField, std::uint32_t(good.size() - 2)},
        {"no PE signature", 0x40, 0x00004551},
        {"unknown optional-header magic", kOptionalHeader, 0x0107, 2},
        {"too few data directories", kDirectoryCount, 2},
        {"optional header too short for the resource directory", kOptionalHeaderSizeField, 100, 2},
        {"no resource directory", kResourceDirectory, 0},
        {"resource RVA in no section", kResourceDirectory, 0x9000},
        {"section data past the end", kSectionHeader + 20, 0xFFFFFF00u},
        {"section data cut before the resource", kSectionHeader + 16, kData + 4},
        {"resource size past its section", tree + kDataEntry + 4, 0x10000},
        {"resource RVA that wraps round", tree + kDataEntry, 0xFFFFFFF0u},
        {"no RT_VERSION type", tree + 16, 14},
        {"no RT_VERSION (14) among 0xFFFF entries, more than the tree holds", tree + 14,
         0x000EFFFF},
        {"type entry that is not a directory", tree + 20, kNameDirectory},
        {"directory offset past the tree", tree + kNameDirectory + 20, 0x8FFFFFF0u},
        // Directories that point back up: the walk has three levels, it cannot go round.
        {"type entry pointing at the root", tree + 20, 0x80000000u},
        {"name entry pointing at its own directory", tree + kNameDirectory + 20,
         0x80000000u | kNameDirectory},
        {"language entry pointing at its own directory", tree + kLanguageDirectory + 20,
         0x80000000u | kLanguageDirectory},
    };
    for (const auto& damage : damages) {
        std::string image = good;
        put(image, damage.offset, damage.value, damage.size);
        EXPECT_FALSE(versionResource(image)) << damage.what;
    }

    // Without a name 1 (VS_VERSION_INFO) the first name serves.
    std::string otherName = good;
    put(otherName, tree + kNameDirectory + 16, 7);
    EXPECT_EQ(versionResource(otherName), resource);
}

}  // namespace
