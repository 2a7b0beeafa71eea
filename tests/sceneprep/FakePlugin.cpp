// A plug-in with one defect, which the build selects.
#include <brindle/Brindle.h>

#include <cstring>

#define ENTRY_POINT extern "C" __attribute__((visibility("default")))

#if !defined(FAKE_NoInit)
ENTRY_POINT Vyk_Channel* InitDLL()
{
#if defined(FAKE_NoMemory)
    return nullptr;
#else
    return new Vyk_Channel;
#endif
}
#endif

ENTRY_POINT ChannelType* GetType()
{
    static ChannelType type;
#if defined(FAKE_OtherName)
    std::strcpy(type.name.data(), "SomethingElse");
#else
    std::strcpy(type.name.data(), "SceneContainer");
#endif
    type.id = {0xFA, 0x27, 0xB2, 0x7B, 0x4B, 0xA2, 0xB7, 0x4B, 0xB1, 0xB4, 0xDF, 0x66, 0x5D, 0x60, 0xCB, 0xE8};
    type.secondId = type.id;
#if defined(FAKE_OtherId)
    type.secondId[15] = 0;
#endif
#if defined(FAKE_NoType)
    return nullptr;
#else
    return &type;
#endif
}
