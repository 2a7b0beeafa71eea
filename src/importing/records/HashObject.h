#pragma once

#include <importing/base/Export.h>

#include <cstdint>
#include <utility>

namespace Importing
{

/// Base of the records that are compared by content.
///
/// A record caches one 32-bit content hash, which is computed when it is first needed. The value 0 means "not
/// computed". There is no other flag, so a record whose content hashes to 0 is computed again at every call.
///
/// Contract for derived records: an operation that changes hashed content stores the new value and then calls
/// SetHashInvalid(). Copies have the hash state of the original.
///
/// Not safe for concurrent use: GetHash() and the comparisons write the cache.
class IMPORTING_API HashObject
{
public:
    HashObject() = default;
    HashObject(const HashObject&) = default;
    HashObject& operator=(const HashObject&) = default;
    /// Moves the hash. The hash of the moved-from record becomes "not computed", because its content has changed.
    HashObject(HashObject&& other) noexcept : hash_(std::exchange(other.hash_, 0)) {}
    HashObject& operator=(HashObject&& other) noexcept
    {
        hash_ = std::exchange(other.hash_, 0);
        return *this;
    }

    virtual ~HashObject();

    /// Returns whether the content hashes are equal. No field is compared, so different content with equal hashes
    /// counts as equal. The hash of the other record is read first. Both hashes may be computed, so the operators are
    /// not const.
    /// Cost: that of computing the hashes, linear in the content; constant when both are cached.
    virtual bool operator==(HashObject& other);
    virtual bool operator!=(HashObject& other);

    /// Returns the content hash. It is computed first unless GetIsHashCodeValid() returns true.
    /// Cost: linear in the content; constant when the hash is cached.
    virtual std::uint32_t GetHash();

    /// Returns whether the cached hash is the hash of the content.
    virtual bool GetIsHashCodeValid();

protected:
    /// Marks the hash as not computed.
    virtual void SetHashInvalid() { hash_ = 0; }

    /// Computes the hash of the content and stores it with StoreHash(). The spelling is part of the interface.
    virtual void CalculeteHash() = 0;

    void StoreHash(std::uint32_t hash) { hash_ = hash; }
    std::uint32_t GetStoredHash() const { return hash_; }

private:
    std::uint32_t hash_ = 0;
};

}  // namespace Importing
