#include <brindle/ChannelType.h>

ChannelType::ChannelType()
    : name{}, id{}, secondId{}, reserved(0), flag(0), unusedAfterFlag(0), trailing(0), unusedAtEnd(0)
{}
