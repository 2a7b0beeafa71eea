#pragma once

#include <importing/records/ContentHash.h>
#include <importing/records/HashObject.h>
#include <importing/records/Transform.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Support
{

/// A plain model of the content hash: collects the digests of all fields in a list and combines them at the end.
class HashModel
{
public:
    HashModel& Bytes(const void* data, std::size_t size)
    {
        digests_.push_back(Importing::Digest(data, size));
        return *this;
    }

    template <typename Number>
    HashModel& Raw(Number number)
    {
        return Bytes(&number, sizeof(number));
    }

    HashModel& Float(float value) { return Raw(std::bit_cast<std::uint32_t>(value) & 0xFFFFFF00U); }

    HashModel& Floats(const std::vector<float>& values)
    {
        for (const float value : values)
            Float(value);
        return *this;
    }

    HashModel& Text(const std::string& text) { return Bytes(text.data(), text.size()); }

    /// Adds the 16 stored floats and the type.
    HashModel& Placement(const Importing::Transform& transform)
    {
        const Importing::Transform::StoredForm& form = transform.GetStoredForm();
        unsigned char image[68];
        std::memcpy(image, form.values, 64);
        std::memcpy(image + 64, &form.type, 4);
        return Bytes(image, sizeof(image));
    }

    std::uint32_t Fold() const
    {
        std::uint64_t hash = 0;
        for (const std::uint32_t digest : digests_)
            hash = ((hash * 31U) & 0xFFFFFFFFU) ^ digest;
        return static_cast<std::uint32_t>(hash);
    }

private:
    std::vector<std::uint32_t> digests_;
};

/// A named change of a record.
template <typename Record>
using Change = std::pair<std::string, std::function<void(Record&)>>;

/// Expects that each change invalidates the cached hash and changes the hash, and that all hashes are different.
template <typename Record>
void ExpectHashed(const Record& original, const std::vector<Change<Record>>& changes)
{
    std::vector<std::uint32_t> hashes;
    for (const auto& [name, change] : changes)
    {
        Record record = original;
        const std::uint32_t before = record.GetHash();
        EXPECT_TRUE(record.GetIsHashCodeValid()) << name;
        change(record);
        EXPECT_FALSE(record.GetIsHashCodeValid()) << name << " does not invalidate the hash";
        EXPECT_NE(record.GetHash(), before) << name << " is not hashed";
        for (const std::uint32_t other : hashes)
            EXPECT_NE(record.GetHash(), other) << name << " has the hash of another change";
        hashes.push_back(record.GetHash());
    }
}

/// Expects that each change invalidates the cached hash and results in the same hash.
template <typename Record>
void ExpectSameHash(const Record& original, const std::vector<Change<Record>>& changes)
{
    for (const auto& [name, change] : changes)
    {
        Record record = original;
        const std::uint32_t before = record.GetHash();
        change(record);
        EXPECT_FALSE(record.GetIsHashCodeValid()) << name << " does not invalidate the hash";
        EXPECT_EQ(record.GetHash(), before) << name;
    }
}

/// Expects that copies have the hash state of the original, by construction and by assignment.
template <typename Record>
void ExpectCopiesCarryTheHash(Record& record)
{
    Record invalid;
    EXPECT_FALSE(Record(invalid).GetIsHashCodeValid());

    const std::uint32_t hash = record.GetHash();
    Record copy(record);
    EXPECT_TRUE(copy.GetIsHashCodeValid());
    EXPECT_EQ(copy.GetHash(), hash);
    Record assigned;
    assigned = record;
    EXPECT_TRUE(assigned.GetIsHashCodeValid());
    EXPECT_EQ(assigned.GetHash(), hash);
    assigned = invalid;
    EXPECT_FALSE(assigned.GetIsHashCodeValid());
}

}  // namespace Support
