#include <importing/records/HashObject.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

namespace
{

using Importing::HashObject;

std::string calls;

/// A record whose content is one number, which is also its hash.
class Record : public HashObject
{
public:
    explicit Record(std::uint32_t content = 1, std::string name = "") : content_(content), name_(std::move(name)) {}

    void SetContent(std::uint32_t content)
    {
        content_ = content;
        SetHashInvalid();
    }

    using HashObject::GetStoredHash;

protected:
    void CalculeteHash() override
    {
        calls += "CalculeteHash" + name_ + " ";
        StoreHash(content_);
    }

private:
    std::uint32_t content_;
    std::string name_;
};

class HashObjectTest : public testing::Test
{
protected:
    HashObjectTest() { calls.clear(); }
};

TEST_F(HashObjectTest, IsAbstract) { EXPECT_TRUE(std::is_abstract_v<HashObject>); }

TEST_F(HashObjectTest, NewRecordHasNoValidHash)
{
    Record record;
    EXPECT_FALSE(record.GetIsHashCodeValid());
    EXPECT_EQ(record.GetStoredHash(), 0U);
    EXPECT_EQ(calls, "");
}

TEST_F(HashObjectTest, GetHashComputesOnce)
{
    Record record(7);
    EXPECT_EQ(record.GetHash(), 7U);
    EXPECT_TRUE(record.GetIsHashCodeValid());
    EXPECT_EQ(record.GetHash(), 7U);
    EXPECT_EQ(calls, "CalculeteHash ");
}

TEST_F(HashObjectTest, ChangeIsReflectedByTheNextGetHash)
{
    Record record(7);
    record.GetHash();
    record.SetContent(8);
    EXPECT_FALSE(record.GetIsHashCodeValid());
    EXPECT_EQ(record.GetHash(), 8U);
}

TEST_F(HashObjectTest, ContentThatHashesToZeroIsComputedEveryTime)
{
    Record record(0);
    EXPECT_EQ(record.GetHash(), 0U);
    EXPECT_FALSE(record.GetIsHashCodeValid());
    EXPECT_EQ(record.GetHash(), 0U);
    EXPECT_EQ(calls, "CalculeteHash CalculeteHash ");
}

TEST_F(HashObjectTest, CopyOfAValidHashIsValidWithoutComputing)
{
    Record record(7);
    record.GetHash();
    calls.clear();
    Record copy(record);
    EXPECT_TRUE(copy.GetIsHashCodeValid());
    EXPECT_EQ(copy.GetHash(), 7U);
    Record assigned(9);
    assigned = record;
    EXPECT_EQ(assigned.GetHash(), 7U);
    EXPECT_EQ(calls, "");
}

TEST_F(HashObjectTest, CopyOfAnInvalidHashIsInvalid)
{
    Record record(7);
    Record assigned(9);
    assigned.GetHash();
    assigned = record;
    EXPECT_FALSE(assigned.GetIsHashCodeValid());
    EXPECT_FALSE(Record(record).GetIsHashCodeValid());
}

TEST_F(HashObjectTest, MovesTransferTheHash)
{
    Record record(7);
    record.GetHash();
    Record moved(std::move(record));
    EXPECT_EQ(moved.GetStoredHash(), 7U);
    // The hash is no longer that of the content.
    EXPECT_EQ(record.GetStoredHash(), 0U);  // NOLINT(bugprone-use-after-move)
    Record assigned(9);
    assigned.GetHash();
    assigned = std::move(moved);
    EXPECT_EQ(assigned.GetStoredHash(), 7U);
    EXPECT_EQ(moved.GetStoredHash(), 0U);  // NOLINT(bugprone-use-after-move)
}

TEST_F(HashObjectTest, ComparisonReadsTheHashOfTheOtherFirst)
{
    Record left(7, "Left");
    Record right(7, "Right");
    EXPECT_TRUE(left == right);
    EXPECT_EQ(calls, "CalculeteHashRight CalculeteHashLeft ");
}

TEST_F(HashObjectTest, ComparisonLeavesBothHashesValid)
{
    Record left(7);
    Record right(8);
    EXPECT_TRUE(left != right);
    EXPECT_TRUE(left.GetIsHashCodeValid());
    EXPECT_TRUE(right.GetIsHashCodeValid());
}

TEST_F(HashObjectTest, RecordsWithEqualHashesAreEqual)
{
    Record left(7, "Left");
    Record right(7, "Right");
    Record other(8);
    EXPECT_TRUE(left == right);
    EXPECT_FALSE(left != right);
    EXPECT_FALSE(left == other);
    EXPECT_TRUE(left != other);
    EXPECT_TRUE(left == left);
}

/// A record that overrides whether its hash is valid.
class DistrustfulRecord : public Record
{
public:
    using Record::Record;
    bool GetIsHashCodeValid() override
    {
        calls += "GetIsHashCodeValid ";
        return false;
    }
};

TEST_F(HashObjectTest, GetHashCallsTheOverrideOfGetIsHashCodeValid)
{
    DistrustfulRecord record(7);
    record.GetHash();
    record.GetHash();
    EXPECT_EQ(calls, "GetIsHashCodeValid CalculeteHash GetIsHashCodeValid CalculeteHash ");
}

/// A record that overrides its hash.
class FixedRecord : public Record
{
public:
    std::uint32_t GetHash() override { return 42; }
};

TEST_F(HashObjectTest, ComparisonCallsTheOverridesOfGetHash)
{
    FixedRecord fixed;
    Record record(42);
    EXPECT_TRUE(fixed == record);
    EXPECT_TRUE(record == fixed);
}

/// A record that is equal to nothing.
class LonelyRecord : public Record
{
public:
    using Record::operator==;
    bool operator==(HashObject&) override { return false; }
};

TEST_F(HashObjectTest, InequalityIsTheNegationOfTheOverriddenEquality)
{
    LonelyRecord record;
    EXPECT_TRUE(record.operator!=(record));
}

}  // namespace
