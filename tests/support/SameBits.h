#pragma once

#include <importing/base/ForReading.h>
#include <importing/geometry/Geometry.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <ios>
#include <sstream>
#include <string>
#include <vector>

namespace Support
{

/// How two NaNs compare. The payload and sign of a NaN that is computed depend on the compiler, which may swap
/// operands. A NaN that is only copied keeps its bits.
enum class NaNs
{
    ByBits,
    AllAlike
};

/// Finds the first difference between two values, field by field, and stores it as text. Floats are compared by their
/// bits, so +0 differs from -0. Nothing is changed, not even a cached hash.
class Difference
{
public:
    explicit Difference(NaNs nans = NaNs::ByBits) : nans_(nans) {}

    /// Returns the difference, or an empty text if there is none.
    const std::string& GetText() const { return text_; }

    template <typename Value>
    void Floats(const std::string& name, const Value& actual, const Value& expected)
    {
        const auto a = FloatsOf(actual);
        const auto b = FloatsOf(expected);
        for (std::size_t i = 0; i < a.size(); ++i)
            if (text_.empty() && !Same(a[i], b[i]))
                text_ = name + (a.size() > 1 ? " float " + std::to_string(i) : "") + ": " + TextOf(a[i]) +
                        ", expected " + TextOf(b[i]);
    }

    template <typename Value>
    void Plain(const std::string& name, const Value& actual, const Value& expected)
    {
        if (!text_.empty() || actual == expected)
            return;
        std::ostringstream text;
        text << std::boolalpha << name << ": " << actual << ", expected " << expected;
        text_ = text.str();
    }

    /// Compares whether the cached hashes are valid, and the hashes themselves if both are.
    template <typename Record>
    void Hashes(const std::string& name, Record& actual, Record& expected)
    {
        const bool areValid = actual.GetIsHashCodeValid() && expected.GetIsHashCodeValid();
        Plain(name + " hash validity", actual.GetIsHashCodeValid(), expected.GetIsHashCodeValid());
        if (areValid)
            Plain(name + " hash", actual.GetHash(), expected.GetHash());
    }

    void Vertices(const std::string& name, const Importing::Vertex& actual, const Importing::Vertex& expected)
    {
        Importing::Vertex& a = Importing::ForReading(actual);
        Importing::Vertex& b = Importing::ForReading(expected);
        Floats(name + " position", a.GetPosition(), b.GetPosition());
        Floats(name + " normal", a.GetNormal(), b.GetNormal());
        Plain(name + " number of UV sets", a.GetTexCoordCount(), b.GetTexCoordCount());
        for (int set = 0; text_.empty() && set < static_cast<int>(a.GetTexCoordCount()); ++set)
            Floats(name + " UV set " + std::to_string(set), a.GetTexCoord(set), b.GetTexCoord(set));
        Plain(name + " number of weights", a.GetWeightsCount(), b.GetWeightsCount());
        for (std::uint64_t i = 0; text_.empty() && i < a.GetWeightsCount(); ++i)
        {
            Plain(name + " joint of weight " + std::to_string(i), a.GetWeight(i).first, b.GetWeight(i).first);
            Floats(name + " weight " + std::to_string(i), a.GetWeight(i).second, b.GetWeight(i).second);
        }
        Hashes(name, a, b);
    }

    void Joints(const std::string& name, const Importing::Joint& actual, const Importing::Joint& expected)
    {
        Importing::Joint& a = Importing::ForReading(actual);
        Importing::Joint& b = Importing::ForReading(expected);
        Plain(name + " name", a.GetName(), b.GetName());
        Floats(name + " local matrix", a.GetLocalTM(), b.GetLocalTM());
        Floats(name + " bind pose inverse", a.GetBindPoseInverse(), b.GetBindPoseInverse());
        Plain(name + " parent", a.GetParentID(), b.GetParentID());
        Plain(name + " animation", a.GetAnimationID(), b.GetAnimationID());
    }

    /// Compares every field, and the hash states of the mesh and of each vertex.
    void Meshes(const Importing::Geometry& actual, const Importing::Geometry& expected)
    {
        Importing::Geometry& a = Importing::ForReading(actual);
        Importing::Geometry& b = Importing::ForReading(expected);
        Plain("name", a.GetName(), b.GetName());
        Plain("poly size", a.GetPolySize(), b.GetPolySize());
        Floats("bind-shape transform", a.GetBindShapeTransform(), b.GetBindShapeTransform());
        Each("vertex", a.VertexArray, b.VertexArray,
             [this](const auto& name, const auto& x, const auto& y) { Vertices(name, x, y); });
        Each("index", a.IndexArray, b.IndexArray,
             [this](const auto& name, const auto& x, const auto& y) { Plain(name, x, y); });
        Each("joint", a.JointArray, b.JointArray,
             [this](const auto& name, const auto& x, const auto& y) { Joints(name, x, y); });
        const auto floats = [this](const auto& name, const auto& x, const auto& y) { Floats(name, x, y); };
        Each("point-cache position", a.PointCachePositions, b.PointCachePositions, floats);
        Each("point-cache normal", a.PointCacheNormals, b.PointCacheNormals, floats);
        Hashes("mesh", a, b);
    }

private:
    template <typename Value>
    static auto FloatsOf(const Value& value)
    {
        constexpr std::size_t kFloatSize = 4;
        static_assert(sizeof(float) == kFloatSize && sizeof(Value) % kFloatSize == 0);
        return std::bit_cast<std::array<float, sizeof(Value) / kFloatSize>>(value);
    }

    bool Same(float a, float b) const
    {
        if (nans_ == NaNs::AllAlike && std::isnan(a) && std::isnan(b))
            return true;
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
    }

    static std::string TextOf(float value)
    {
        std::ostringstream text;
        text << value << " (0x" << std::hex << std::bit_cast<std::uint32_t>(value) << ')';
        return text.str();
    }

    template <typename Element, typename Compare>
    void Each(const std::string& name, const std::vector<Element>& actual, const std::vector<Element>& expected,
              Compare compare)
    {
        Plain("number of " + name + " entries", actual.size(), expected.size());
        for (std::size_t i = 0; text_.empty() && i < actual.size(); ++i)
            compare(name + ' ' + std::to_string(i), actual[i], expected[i]);
    }

    NaNs nans_;
    std::string text_;
};

inline testing::AssertionResult NoDifference(const Difference& difference)
{
    return difference.GetText().empty() ? testing::AssertionSuccess()
                                        : testing::AssertionFailure() << difference.GetText();
}

/// EXPECT_TRUE(SameFloats(actual, expected)): floats, vectors and matrices, bit by bit.
template <typename Value>
testing::AssertionResult SameFloats(const Value& actual, const Value& expected, NaNs nans = NaNs::ByBits)
{
    Difference difference(nans);
    difference.Floats("value", actual, expected);
    return NoDifference(difference);
}

/// EXPECT_TRUE(SameVertex(actual, expected)): every field and the state of the hash.
inline testing::AssertionResult SameVertex(const Importing::Vertex& actual, const Importing::Vertex& expected,
                                           NaNs nans = NaNs::ByBits)
{
    Difference difference(nans);
    difference.Vertices("vertex", actual, expected);
    return NoDifference(difference);
}

/// EXPECT_TRUE(SameGeometry(actual, expected)): every field of the mesh and of its parts, and the states of all hashes.
inline testing::AssertionResult SameGeometry(const Importing::Geometry& actual, const Importing::Geometry& expected,
                                             NaNs nans = NaNs::ByBits)
{
    Difference difference(nans);
    difference.Meshes(actual, expected);
    return NoDifference(difference);
}

}  // namespace Support
