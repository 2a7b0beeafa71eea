#pragma once

#include <importing/base/Export.h>

#include <cstdint>
#include <utility>

namespace Importing
{

/// Base of the records whose identity is their content.
///
/// It keeps one 32-bit content hash, computed when it is first asked for. The value 0 means "not computed"; there is
/// no other flag, so a record whose content folds to 0 is computed anew every time it is asked.
///
/// Contract for derived records: whatever changes hashed content stores the new value and then calls
/// SetHashInvalid(). Copying a record carries the state of its hash along.
///
/// Not safe for concurrent use: GetHash() and the comparisons write the cache.
class IMPORTING_API HashObject
{
public:
    HashObject() = default;
    HashObject(const HashObject&) = default;
    HashObject& operator=(const HashObject&) = default;
    /// The record that was moved from has other content now: its hash is not computed.
    HashObject(HashObject&& other) noexcept : hash_(std::exchange(other.hash_, 0)) {}
    HashObject& operator=(HashObject&& other) noexcept
    {
        hash_ = std::exchange(other.hash_, 0);
        return *this;
    }

    virtual ~HashObject();

    /// Content equality: equality of the two hashes, no field is compared. The other's hash is fetched first; both
    /// may be computed on the way, which is why nothing here is const.
    virtual bool operator==(HashObject& other);
    virtual bool operator!=(HashObject& other);

    /// @return the content hash, computed now unless GetIsHashCodeValid() says that the cached one stands.
    virtual std::uint32_t GetHash();

    /// @return whether the cached hash stands for the content.
    virtual bool GetIsHashCodeValid();

protected:
    virtual void SetHashInvalid() { hash_ = 0; }

    /// Computes the hash of the content and keeps it with StoreHash(). The spelling is part of the interface.
    virtual void CalculeteHash() = 0;

    void StoreHash(std::uint32_t hash) { hash_ = hash; }
    std::uint32_t GetStoredHash() const { return hash_; }

private:
    std::uint32_t hash_ = 0;
};

}  // namespace Importing
