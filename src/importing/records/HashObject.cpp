#include <importing/records/HashObject.h>

namespace Importing
{

HashObject::~HashObject() = default;

bool HashObject::operator==(HashObject& other)
{
    const std::uint32_t otherHash = other.GetHash();
    return otherHash == GetHash();
}

bool HashObject::operator!=(HashObject& other) { return !(*this == other); }

std::uint32_t HashObject::GetHash()
{
    if (!GetIsHashCodeValid())
        CalculeteHash();
    return hash_;
}

bool HashObject::GetIsHashCodeValid() { return hash_ != 0; }

}  // namespace Importing
