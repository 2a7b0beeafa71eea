#pragma once

#include <brindle/Export.h>

#include <cstddef>
#include <vector>

/// Collects the bytes that channels save, in memory.
class BRINDLE_API VykFileSaver
{
public:
    /// Appends size bytes. If memory runs out, nothing is appended.
    /// @return always true.
    bool Write(const void* data, std::size_t size);

    const std::vector<unsigned char>& GetBytes() const;

private:
    std::vector<unsigned char> bytes_;
};

/// Reads saved bytes in the order in which they were written.
class BRINDLE_API VykFileLoader
{
public:
    explicit VykFileLoader(std::vector<unsigned char> bytes);

    /// Copies the next size bytes.
    /// @return true; or false when fewer bytes are left, and then nothing is copied.
    bool Read(void* data, std::size_t size);

private:
    std::vector<unsigned char> bytes_;
    std::size_t position_ = 0;
};
