#pragma once

#include <brindle/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>

/// Describes one type of channel to the host: a record of 136 bytes with fields at fixed offsets.
struct BRINDLE_API ChannelType
{
    /// Creates a record with all bytes 0.
    ChannelType();

    std::array<char, 80> name;              ///< the type name, terminated by a zero byte
    std::array<std::uint8_t, 16> id;        ///< the type identifier: the bytes of a GUID in memory
    std::array<std::uint8_t, 16> secondId;  ///< the second type identifier
    std::uint64_t reserved;                 ///< reserved for the host
    std::int32_t flag;                      ///< the type flag; the host defines its meaning
    std::int32_t unusedAfterFlag;           ///< padding before the trailing value
    std::int32_t trailing;                  ///< the trailing value; the host defines its meaning
    std::int32_t unusedAtEnd;               ///< padding at the end of the record
};

static_assert(sizeof(ChannelType) == 136);
static_assert(offsetof(ChannelType, name) == 0 && offsetof(ChannelType, id) == 80 &&
              offsetof(ChannelType, secondId) == 96 && offsetof(ChannelType, reserved) == 112 &&
              offsetof(ChannelType, flag) == 120 && offsetof(ChannelType, trailing) == 128);
