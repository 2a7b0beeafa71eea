#include <records/CountedAllocations.h>

#include <cstdlib>
#include <limits>
#include <new>

namespace
{

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

std::size_t taken = 0;
std::size_t inUse = 0;
std::size_t left = kNoLimit;

void* Take(std::size_t size)
{
    if (left == 0)
        throw std::bad_alloc();
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr)
        throw std::bad_alloc();
    if (left != kNoLimit)
        --left;
    ++taken;
    ++inUse;
    return block;
}

void GiveBack(void* block) noexcept
{
    if (block == nullptr)
        return;
    --inUse;
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return Take(size); }
void* operator new[](std::size_t size) { return Take(size); }
void operator delete(void* block) noexcept { GiveBack(block); }
void operator delete[](void* block) noexcept { GiveBack(block); }
void operator delete(void* block, std::size_t) noexcept { GiveBack(block); }
void operator delete[](void* block, std::size_t) noexcept { GiveBack(block); }

namespace Support
{

std::size_t CountedAllocations::Taken() { return taken; }

std::size_t CountedAllocations::InUse() { return inUse; }

void CountedAllocations::FailAfter(std::size_t count) { left = count; }

void CountedAllocations::Recover() { left = kNoLimit; }

}  // namespace Support
