#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "VersionImageBuilder.h"
#include "platform/portable/PeResource.h"
#include "support/TestMachine.h"

namespace {

using namespace version_image::layout;
using platform::portable::findVersionResource;
using version_image::put16;
using version_image::put32;

std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// The resource's bytes and where they start in the image.
struct Found {
    std::string bytes;
    std::size_t offset;
};

std::optional<Found> versionResource(std::string_view image) {
    const auto resource = findVersionResource(bytesOf(image));
    if (!resource) {
        return std::nullopt;
    }
    const auto offset = std::size_t(resource->data() - bytesOf(image).data());
    EXPECT_LE(offset + resource->size(), image.size());
    return Found{std::string(reinterpret_cast<const char*>(resource->data()), resource->size()),
                 offset};
}

const std::string kResource = version_image::block(0x0001000200030004, u"040904b0",
                                                   {{u"FileVersion", u"1.2.3.4"}}, 0x04B00409);

TEST(PeResource, FindsTheVersionResourceOfRealImagesOfBothBitnesses) {
    for (const char* name : {"zlib1-x64.dll", "zlib1-x86.dll", "libwinpthread-1.dll"}) {
        SCOPED_TRACE(name);
        const auto found = versionResource(testing_support::readTestData(name));
        ASSERT_TRUE(found);
        // The resource is the VS_VERSIONINFO node: its wLength is its size.
        EXPECT_EQ(std::uint8_t(found->bytes[0]) | std::uint8_t(found->bytes[1]) << 8,
                  int(found->bytes.size()));
        EXPECT_EQ(found->bytes.substr(6, 6), std::string("V\0S\0_\0", 6));
    }
    for (bool pe32Plus : {true, false}) {
        const auto found = versionResource(version_image::peImage(kResource, pe32Plus));
        ASSERT_TRUE(found);
        EXPECT_EQ(found->bytes, kResource);
    }
}

TEST(PeResource, APrefixOfAnImageHasTheResourceOnlyWhenItHoldsAllOfIt) {
    const std::string image = testing_support::readTestData("zlib1-x64.dll");
    const auto whole = versionResource(image);
    ASSERT_TRUE(whole);
    const std::size_t end = whole->offset + whole->bytes.size();
    for (std::size_t length = 0; length < image.size(); length += (length < 2048 ? 1 : 61)) {
        const auto found = versionResource(std::string_view(image).substr(0, length));
        ASSERT_EQ(found.has_value(), length >= end) << length;
    }
    for (std::size_t cut = end - 8; cut <= end + 8; ++cut) {
        const auto found = versionResource(std::string_view(image).substr(0, cut));
        ASSERT_EQ(found.has_value(), cut >= end) << cut;
        if (found) {
            EXPECT_EQ(found->bytes, whole->bytes);
        }
    }
}

TEST(PeResource, DamagedHeadersAndOffsetsMeanNoResource) {
    const std::string good = version_image::peImage(kResource);
    const std::size_t tree = kResources;
    struct Patch {
        std::size_t offset;
        std::uint32_t value;
        bool word = false;  // a 16-bit field
    };
    struct Damage {
        const char* what;
        std::vector<Patch> patches;
    };
    const Damage damages[] = {
        {"no MZ", {{0, 0x5A4E, true}}},
        {"PE header past the end", {{kPeOffsetField, 0xFFFFFFF0u}}},
        {"PE header in the last bytes", {{kPeOffsetField, std::uint32_t(good.size() - 2)}}},
        {"no PE signature", {{0x40, 0x00004551}}},
        {"unknown optional-header magic", {{kOptionalHeader, 0x0107, true}}},
        {"too few data directories", {{kDirectoryCount, 2}}},
        {"optional header too short for the resource directory",
         {{kOptionalHeaderSizeField, 100, true}}},
        {"no resource directory", {{kResourceDirectory, 0}}},
        {"resource RVA in no section", {{kResourceDirectory, 0x9000}}},
        {"section data past the end", {{kSectionRawOffset, 0xFFFFFF00u}}},
        {"section data cut before the resource", {{kSectionRawSize, kData + 16}}},
        {"resource size past its section", {{tree + kDataEntry + 4, 0x10000}}},
        {"resource RVA that wraps round", {{tree + kDataEntry, 0xFFFFFFF0u}}},
        {"no RT_VERSION type", {{kTypeEntry, 14}}},
        {"no RT_VERSION among more entries than the tree holds",
         {{kTypeEntry, 14}, {tree + 14, 0xFFFF, true}}},
        {"type entry that is not a directory", {{kTypeEntry + 4, kNameDirectory}}},
        {"language entry that is a directory",
         {{tree + kLanguageDirectory + 20, 0x80000000u | kDataEntry}}},
        {"directory offset past the tree", {{tree + kNameDirectory + 20, 0x8FFFFFF0u}}},
    };
    for (const Damage& damage : damages) {
        std::string image = good;
        for (const Patch& patch : damage.patches) {
            if (patch.word) {
                put16(image, patch.offset, std::uint16_t(patch.value));
            } else {
                put32(image, patch.offset, patch.value);
            }
        }
        EXPECT_FALSE(versionResource(image)) << damage.what;
    }
}

TEST(PeResource, DirectoriesThatPointBackUpEndTheWalk) {
    const std::string good = version_image::peImage(kResource);
    const std::pair<std::size_t, std::uint32_t> loops[] = {
        {kTypeEntry + 4, 0x80000000u},                                     // type -> root
        {kResources + kNameDirectory + 20, 0x80000000u | kNameDirectory},  // name -> itself
        {kResources + kLanguageDirectory + 20, 0x80000000u | kLanguageDirectory},
    };
    for (const auto& [offset, target] : loops) {
        std::string image = good;
        put32(image, offset, target);
        EXPECT_FALSE(versionResource(image)) << offset;
    }
}

TEST(PeResource, AnyNameServesWhenThereIsNoVersionInfoNamedOne) {
    std::string image = version_image::peImage(kResource);
    put32(image, kResources + kNameDirectory + 16, 7);
    const auto found = versionResource(image);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->bytes, kResource);
}

TEST(PeResource, NoSingleDamagedByteOfTheHeadersOrTreeReadsOutside) {
    const std::string good = version_image::peImage(kResource);
    for (std::size_t offset = 0; offset < kResources + kData; ++offset) {
        for (char value : {'\x00', '\x7F', '\x80', '\xFF'}) {
            std::string image = good;
            image[offset] = value;
            versionResource(image);  // checks that the answer lies within the image
        }
    }
}

}  // namespace
