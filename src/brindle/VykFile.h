#pragma once

#include <brindle/Export.h>

#include <cstddef>
#include <vector>

/// Collects what channels save, in memory.
class BRINDLE_API VykFileSaver
{
public:
    /// Appends size bytes.
    /// @return true.
    bool Write(const void* data, std::size_t size);

    const std::vector<unsigned char>& GetBytes() const;

private:
    std::vector<unsigned char> bytes_;
};

/// Gives saved bytes back, front to back.
class BRINDLE_API VykFileLoader
{
public:
    explicit VykFileLoader(std::vector<unsigned char> bytes);

    /// Copies the next size bytes.
    /// @return false when fewer are left: then nothing is written and nothing is consumed.
    bool Read(void* data, std::size_t size);

private:
    std::vector<unsigned char> bytes_;
    std::size_t position_ = 0;
};
