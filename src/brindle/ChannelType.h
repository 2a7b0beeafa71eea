#pragma once

#include <brindle/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>

/// Describes one type of channel to the host: 136 bytes with fields at fixed places.
struct BRINDLE_API ChannelType
{
    /// All bytes 0.
    ChannelType();

    std::array<char, 80> name;              ///< type name, terminated by a zero byte
    std::array<std::uint8_t, 16> id;        ///< type identifier, a GUID as it lies in memory
    std::array<std::uint8_t, 16> secondId;  ///< second type identifier
    std::uint64_t reserved;                 ///< the host's own
    std::int32_t flag;                      ///< type flag; its meaning is the host's
    std::int32_t unusedAfterFlag;           ///< fills the gap up to the trailing value
    std::int32_t trailing;                  ///< trailing value; its meaning is the host's
    std::int32_t unusedAtEnd;               ///< fills the record up
};

static_assert(sizeof(ChannelType) == 136);
static_assert(offsetof(ChannelType, name) == 0 && offsetof(ChannelType, id) == 80 &&
              offsetof(ChannelType, secondId) == 96 && offsetof(ChannelType, reserved) == 112 &&
              offsetof(ChannelType, flag) == 120 && offsetof(ChannelType, trailing) == 128);
