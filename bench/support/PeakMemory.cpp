#include <support/PeakMemory.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace
{

bool isFollowing = false;
std::ptrdiff_t inUse = 0;
std::ptrdiff_t most = 0;

/// Precedes every block and stores its size. It is as long as the strictest alignment, so that blocks stay aligned.
constexpr std::size_t kHeader = alignof(std::max_align_t);
static_assert(kHeader >= sizeof(std::size_t));

void* Take(std::size_t size)
{
    auto* start = static_cast<unsigned char*>(std::malloc(kHeader + size));
    if (start == nullptr)
        throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(start) = size;
    if (isFollowing)
    {
        inUse += static_cast<std::ptrdiff_t>(size);
        most = std::max(most, inUse);
    }
    return start + kHeader;
}

void GiveBack(void* block) noexcept
{
    if (block == nullptr)
        return;
    unsigned char* start = static_cast<unsigned char*>(block) - kHeader;
    if (isFollowing)
        inUse -= static_cast<std::ptrdiff_t>(*reinterpret_cast<std::size_t*>(start));
    std::free(start);
}

}  // namespace

void* operator new(std::size_t size) { return Take(size); }
void* operator new[](std::size_t size) { return Take(size); }
void operator delete(void* block) noexcept { GiveBack(block); }
void operator delete[](void* block) noexcept { GiveBack(block); }
void operator delete(void* block, std::size_t) noexcept { GiveBack(block); }
void operator delete[](void* block, std::size_t) noexcept { GiveBack(block); }

PeakMemory::PeakMemory()
{
    isFollowing = true;
    inUse = 0;
    most = 0;
}

PeakMemory::~PeakMemory() { isFollowing = false; }

std::size_t PeakMemory::GetBytes() const { return static_cast<std::size_t>(most); }
