#include <importing/plugin/EntryPoints.h>

#include <brindle/ChannelType.h>
#include <importing/plugin/SceneContainer.h>

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

namespace
{

constexpr std::string_view kTypeName = "SceneContainer";

/// The bytes of {7BB227FA-A24B-4BB7-B1B4-DF665D60CBE8} in memory.
constexpr std::array<std::uint8_t, 16> kTypeID = {0xFA, 0x27, 0xB2, 0x7B, 0x4B, 0xA2, 0xB7, 0x4B,
                                                  0xB1, 0xB4, 0xDF, 0x66, 0x5D, 0x60, 0xCB, 0xE8};

ChannelType channelType;

}  // namespace

Vyk_Channel* InitDLL()
{
    try
    {
        return new Importing::SceneContainer;
    }
    catch (const std::bad_alloc&)
    {
        // An exception must not leave an entry point with C linkage.
        return nullptr;
    }
}

ChannelType* GetType()
{
    channelType.name.fill('\0');
    std::copy_n(kTypeName.begin(), std::min(kTypeName.size(), channelType.name.size() - 1), channelType.name.begin());
    channelType.id = kTypeID;
    channelType.secondId = kTypeID;
    channelType.flag = 1;
    channelType.trailing = 0;
    return &channelType;
}
