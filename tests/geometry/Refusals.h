#pragma once

#include <support/SameBits.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace Support
{

/// Expects that an operation on a mesh throws an exception of this type and text and changes nothing, including all
/// hash states.
template <typename Exception, typename Operation>
void ExpectRefused(const Importing::Geometry& start, const std::string& text, Operation operation)
{
    Importing::Geometry mesh = start;
    try
    {
        std::invoke(operation, mesh);
        ADD_FAILURE() << "no exception was thrown";
    }
    catch (const Exception& error)
    {
        EXPECT_EQ(error.what(), text);
    }
    EXPECT_TRUE(SameGeometry(mesh, start));
}

template <typename Operation>
void ExpectBadSubscript(const Importing::Geometry& start, Operation operation)
{
    ExpectRefused<std::out_of_range>(start, "invalid vector<T> subscript", operation);
}

template <typename Operation>
void ExpectTooLong(const Importing::Geometry& start, Operation operation)
{
    ExpectRefused<std::length_error>(start, "vector<T> too long", operation);
}

/// Makes each of the first `count` indices bad in turn and expects that the operation refuses every such mesh.
template <typename Operation>
void ExpectEveryBadIndexRefused(const Importing::Geometry& start, std::size_t count, Operation operation)
{
    const auto end = static_cast<std::uint32_t>(start.VertexArray.size());
    for (std::size_t i = 0; i < count; ++i)
    {
        for (const std::uint32_t bad : {end, end + 1, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU})
        {
            SCOPED_TRACE("index " + std::to_string(i) + " is " + std::to_string(bad));
            Importing::Geometry mesh = start;
            mesh.IndexArray[i] = bad;
            ExpectBadSubscript(mesh, operation);
        }
    }
}

/// Computes all hashes, so that a test can see which of them an operation invalidates.
inline Importing::Geometry Hashed(Importing::Geometry mesh)
{
    mesh.GetHash();
    return mesh;
}

/// Expects that a call on a copy of the mesh returns the value and changes nothing, including all hash states.
template <typename Operation>
void ExpectUntouched(const Importing::Geometry& start, int result, Operation operation)
{
    Importing::Geometry mesh = Hashed(start);
    const Importing::Geometry before = mesh;
    EXPECT_EQ(std::invoke(operation, mesh), result);
    EXPECT_TRUE(SameGeometry(mesh, before));
}

}  // namespace Support
