#include <importing/base/ForReading.h>

#include <gtest/gtest.h>

namespace
{

class Record
{
public:
    int GetValue() { return value_; }

private:
    int value_ = 7;
};

TEST(ForReading, ReturnsTheSameRecordWithAccessToItsGetters)
{
    const Record record;
    EXPECT_EQ(&Importing::ForReading(record), &record);
    EXPECT_EQ(Importing::ForReading(record).GetValue(), 7);
}

}  // namespace
