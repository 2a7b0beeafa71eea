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

/// The content hash as plainly as it can be written: the digests of all fields in a list, folded at the end.
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

    /// The 16 stored floats and the type.
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

/// A way to change a record, with a name.
template <typename Record>
using Change = std::pair<std::string, std::function<void(Record&)>>;

/// Each change must invalidate the cached hash and lead to another one; the hashes of all must be different.
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
        EXPECT_FALSE(record.GetIsHashCodeValid()) << name << " leaves the hash valid";
        EXPECT_NE(record.GetHash(), before) << name << " is not hashed";
        for (const std::uint32_t other : hashes)
            EXPECT_NE(record.GetHash(), other) << name << " hashes like another change";
        hashes.push_back(record.GetHash());
    }
}

/// Each change must invalidate the cached hash and lead to the same one again.
template <typename Record>
void ExpectSameHash(const Record& original, const std::vector<Change<Record>>& changes)
{
    for (const auto& [name, change] : changes)
    {
        Record record = original;
        const std::uint32_t before = record.GetHash();
        change(record);
        EXPECT_FALSE(record.GetIsHashCodeValid()) << name << " leaves the hash valid";
        EXPECT_EQ(record.GetHash(), before) << name;
    }
}

/// A copy must have the state of the hash of its original, both by construction and by assignment.
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
