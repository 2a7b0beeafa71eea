#pragma once

#include <importing/base/ForReading.h>
#include <importing/plugin/SceneContainer.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Support
{

/// Compares two scenes record by record and field by field, floats by their bits, including the states of cached
/// hashes, and stores the first difference as text. Nothing is changed, not even a cached hash.
class SceneDifference
{
public:
    SceneDifference(const Importing::SceneContainer& a, const Importing::SceneContainer& b)
    {
        using Importing::ForReading;
        Libraries(a, b);
        Field("status", ForReading(a).GetStatus(), ForReading(b).GetStatus());
        Field("name", ForReading(a).GetName(), ForReading(b).GetName());
        Field("root node index", a.GetRootNodeIndex(), b.GetRootNodeIndex());
    }

    /// Returns the difference, or an empty text if there is none.
    const std::string& GetText() const { return text_; }

private:
    void Libraries(const Importing::SceneContainer& a, const Importing::SceneContainer& b)
    {
        Each("NodeLibrary", a.NodeLibrary, b.NodeLibrary);
        Each("SurfaceLibrary", a.SurfaceLibrary, b.SurfaceLibrary);
        Each("GeometryLibrary", a.GeometryLibrary, b.GeometryLibrary);
        Each("MaterialLibrary", a.MaterialLibrary, b.MaterialLibrary);
        Each("TextureLibrary", a.TextureLibrary, b.TextureLibrary);
        Each("CameraLibrary", a.CameraLibrary, b.CameraLibrary);
        Each("LightLibrary", a.LightLibrary, b.LightLibrary);
        Each("AnimationLibrary", a.AnimationLibrary, b.AnimationLibrary);
        Each("ReservedList", a.ReservedList, b.ReservedList);
    }

    template <typename Element>
    void Each(const char* name, const std::vector<Element>& a, const std::vector<Element>& b)
    {
        path_.emplace_back(name, -1);
        Field("size", a.size(), b.size());
        for (std::size_t i = 0; text_.empty() && i < a.size(); ++i)
        {
            path_.back().second = static_cast<std::ptrdiff_t>(i);
            Compare(Importing::ForReading(a[i]), Importing::ForReading(b[i]));
        }
        path_.pop_back();
    }

    template <typename Value>
    void Field(const char* name, const Value& a, const Value& b)
    {
        if (!text_.empty() || Same(a, b))
            return;
        std::ostringstream text;
        for (const auto& [list, index] : path_)
        {
            text << list;
            if (index >= 0)
                text << '[' << index << ']';
            text << ' ';
        }
        text << name << ": " << TextOf(a) << " against " << TextOf(b);
        text_ = text.str();
    }

    template <typename Value>
    static bool Same(const Value& a, const Value& b)
    {
        if constexpr (std::is_trivially_copyable_v<Value>)
        {
            using Bytes = std::array<unsigned char, sizeof(Value)>;
            return std::bit_cast<Bytes>(a) == std::bit_cast<Bytes>(b);
        }
        else
            return a == b;
    }

    template <typename Value>
    static std::string TextOf(const Value& value)
    {
        std::ostringstream text;
        if constexpr (std::is_same_v<Value, std::string>)
            text << '"' << value << '"';
        else if constexpr (std::is_integral_v<Value>)
            text << value;
        else
        {
            static_assert(sizeof(Value) % sizeof(std::uint32_t) == 0);
            const auto* bytes = reinterpret_cast<const unsigned char*>(&value);
            for (std::size_t i = 0; i < sizeof(Value); i += sizeof(std::uint32_t))
            {
                float number = 0;
                std::uint32_t bits = 0;
                std::memcpy(&number, bytes + i, sizeof(number));
                std::memcpy(&bits, bytes + i, sizeof(bits));
                text << (i == 0 ? "" : " ") << number << " (" << std::hex << bits << std::dec << ')';
            }
        }
        return text.str();
    }

    template <typename Record>
    void Hash(Record& a, Record& b)
    {
        const bool isValid = a.GetIsHashCodeValid();
        Field("hash is valid", isValid, b.GetIsHashCodeValid());
        if (isValid && text_.empty())
            Field("hash", a.GetHash(), b.GetHash());
    }

    void Placement(const char* name, const Importing::Transform& a, const Importing::Transform& b)
    {
        Field(name, a.GetStoredForm(), b.GetStoredForm());
    }

    void Compare(std::int32_t a, std::int32_t b) { Field("index", a, b); }
    void Compare(std::uint32_t a, std::uint32_t b) { Field("index", a, b); }
    void Compare(const std::string& a, const std::string& b) { Field("text", a, b); }
    void Compare(const D3DXVECTOR3& a, const D3DXVECTOR3& b) { Field("vector", a, b); }
    void Compare(const std::vector<Importing::Key>& a, const std::vector<Importing::Key>& b) { Each("keys", a, b); }

    void Compare(Importing::Key& a, Importing::Key& b)
    {
        Field("time", a.GetTime(), b.GetTime());
        Field("position", a.GetPosition(), b.GetPosition());
        Field("rotation", a.GetRotation(), b.GetRotation());
        Field("scale", a.GetScale(), b.GetScale());
    }

    void Compare(Importing::Node& a, Importing::Node& b)
    {
        Field("name", a.GetName(), b.GetName());
        Field("note", a.GetNote(), b.GetNote());
        Placement("local transform", a.GetLocalTransform(), b.GetLocalTransform());
        Field("animation", a.GetAnimationID(), b.GetAnimationID());
        Each("SurfaceList", a.SurfaceList, b.SurfaceList);
        Each("ChildList", a.ChildList, b.ChildList);
        Each("CameraList", a.CameraList, b.CameraList);
        Each("LightList", a.LightList, b.LightList);
    }

    void Compare(Importing::Surface& a, Importing::Surface& b)
    {
        Field("geometry", a.GetGeometryID(), b.GetGeometryID());
        Field("material", a.GetMaterialID(), b.GetMaterialID());
        Field("name", a.GetName(), b.GetName());
        Field("collision offset", a.GetCollisionOffset(), b.GetCollisionOffset());
        Each("MapList", a.MapList, b.MapList);
        Hash(a, b);
    }

    void Compare(Importing::Map& a, Importing::Map& b)
    {
        Field("texture", a.GetTextureID(), b.GetTextureID());
        Field("type", a.GetType(), b.GetType());
        Field("UV set", a.GetUVSetIndex(), b.GetUVSetIndex());
        Field("matrix", a.GetMatrix(), b.GetMatrix());
        Field("amount", a.GetAmount(), b.GetAmount());
        Hash(a, b);
    }

    void Compare(Importing::Material& a, Importing::Material& b)
    {
        Field("name", a.GetName(), b.GetName());
        Field("diffuse", a.GetDiffuse(), b.GetDiffuse());
        Field("emissive", a.GetEmissive(), b.GetEmissive());
        Field("specular", a.GetSpecular(), b.GetSpecular());
        Field("specular power", a.GetSpecularPower(), b.GetSpecularPower());
        Field("opacity", a.GetOpacity(), b.GetOpacity());
        Hash(a, b);
    }

    void Compare(Importing::Camera& a, Importing::Camera& b)
    {
        Field("name", a.GetName(), b.GetName());
        Placement("offset", a.GetOffsetMatrix(), b.GetOffsetMatrix());
        Field("FovX", a.GetFovX(), b.GetFovX());
        Field("FovY", a.GetFovY(), b.GetFovY());
        Field("NearZ", a.GetNearZ(), b.GetNearZ());
        Field("FarZ", a.GetFarZ(), b.GetFarZ());
        Hash(a, b);
    }

    void Compare(Importing::Light& a, Importing::Light& b)
    {
        Field("name", a.GetName(), b.GetName());
        Placement("offset", a.GetOffsetMatrix(), b.GetOffsetMatrix());
        Field("type", static_cast<int>(a.GetType()), static_cast<int>(b.GetType()));
        Field("diffuse", a.GetDiffuse(), b.GetDiffuse());
        Field("ambient", a.GetAmbient(), b.GetAmbient());
        Field("specular", a.GetSpecular(), b.GetSpecular());
        Field("attenuation", a.GetAttenuation(), b.GetAttenuation());
        Field("range", a.GetRange(), b.GetRange());
        Field("theta", a.GetTheta(), b.GetTheta());
        Field("phi", a.GetPhi(), b.GetPhi());
        Field("shadow cast", a.GetShadowCast(), b.GetShadowCast());
        Field("shadow density", a.GetShadowDensity(), b.GetShadowDensity());
        Hash(a, b);
    }

    void Compare(Importing::Geometry& a, Importing::Geometry& b)
    {
        Field("name", a.GetName(), b.GetName());
        Field("poly size", a.GetPolySize(), b.GetPolySize());
        Field("bind-shape transform", a.GetBindShapeTransform(), b.GetBindShapeTransform());
        Each("VertexArray", a.VertexArray, b.VertexArray);
        Each("IndexArray", a.IndexArray, b.IndexArray);
        Each("JointArray", a.JointArray, b.JointArray);
        Each("PointCachePositions", a.PointCachePositions, b.PointCachePositions);
        Each("PointCacheNormals", a.PointCacheNormals, b.PointCacheNormals);
        Hash(a, b);
    }

    void Compare(Importing::Joint& a, Importing::Joint& b)
    {
        Field("name", a.GetName(), b.GetName());
        Field("bind pose inverse", a.GetBindPoseInverse(), b.GetBindPoseInverse());
        Field("local matrix", a.GetLocalTM(), b.GetLocalTM());
        Field("parent", a.GetParentID(), b.GetParentID());
        Field("animation", a.GetAnimationID(), b.GetAnimationID());
    }

    void Compare(Importing::Vertex& a, Importing::Vertex& b)
    {
        Field("position", a.GetPosition(), b.GetPosition());
        Field("normal", a.GetNormal(), b.GetNormal());
        Field("number of UV sets", a.GetTexCoordCount(), b.GetTexCoordCount());
        for (int set = 0; text_.empty() && static_cast<std::uint64_t>(set) < a.GetTexCoordCount(); ++set)
            Field("texture coordinates", a.GetTexCoord(set), b.GetTexCoord(set));
        Field("number of weights", a.GetWeightsCount(), b.GetWeightsCount());
        for (std::uint64_t i = 0; text_.empty() && i < a.GetWeightsCount(); ++i)
        {
            Field("joint", a.GetWeight(i).first, b.GetWeight(i).first);
            Field("weight", a.GetWeight(i).second, b.GetWeight(i).second);
        }
        Hash(a, b);
    }

    std::vector<std::pair<const char*, std::ptrdiff_t>> path_;
    std::string text_;
};

/// EXPECT_TRUE(SameScene(actual, expected)) reports the first record and field that differ.
inline testing::AssertionResult SameScene(const Importing::SceneContainer& actual,
                                          const Importing::SceneContainer& expected)
{
    const SceneDifference difference(actual, expected);
    if (difference.GetText().empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << difference.GetText();
}

}  // namespace Support
