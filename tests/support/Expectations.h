#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/plugin/SceneContainer.h>
#include <support/SameScene.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace Support
{

/// Expects an exception of this type and text.
template <typename Exception, typename Action>
void ExpectThrow(Action action, const std::string& text)
{
    try
    {
        action();
        ADD_FAILURE() << "no exception was thrown, expected: " << text;
    }
    catch (const Exception& exception)
    {
        EXPECT_EQ(std::string(exception.what()), text);
    }
}

/// Expects the exception for a bad index, and that the scene does not change.
template <typename Action>
void ExpectBadIndex(Importing::SceneContainer& scene, Action action)
{
    // The action changes the scene if anything goes wrong. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const Importing::SceneContainer before(scene);
    ExpectThrow<std::out_of_range>(action, "invalid vector<T> subscript");
    EXPECT_TRUE(SameScene(scene, before));
}

/// Expects the exception for a cycle, and that the scene does not change.
template <typename Action>
void ExpectCycle(Importing::SceneContainer& scene, Action action)
{
    // The action changes the scene if anything goes wrong. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const Importing::SceneContainer before(scene);
    ExpectThrow<std::runtime_error>(action, "cycle in the node hierarchy");
    EXPECT_TRUE(SameScene(scene, before));
}

/// Returns the smallest corner of a mesh's bounds.
inline D3DXVECTOR3 Low(const Importing::Geometry& mesh)
{
    D3DXVECTOR3 low;
    D3DXVECTOR3 high;
    mesh.GetBoundingBox(low, high);
    return low;
}

/// Returns the largest corner of a mesh's bounds.
inline D3DXVECTOR3 High(const Importing::Geometry& mesh)
{
    D3DXVECTOR3 low;
    D3DXVECTOR3 high;
    mesh.GetBoundingBox(low, high);
    return high;
}

/// Returns a chain: node 0 at the top, every further node the only child of the one before it and one step in x from
/// it.
inline Importing::SceneContainer Chain(std::size_t levels)
{
    D3DXMATRIX step;
    D3DXMatrixTranslation(&step, 1, 0, 0);
    Importing::SceneContainer scene;
    scene.NodeLibrary.resize(levels);
    for (std::size_t i = 0; i < levels; ++i)
    {
        if (i > 0)
            scene.NodeLibrary[i].SetLocalTransform(Importing::Transform(step));
        if (i + 1 < levels)
            scene.NodeLibrary[i].ChildList.push_back(static_cast<int>(i + 1));
    }
    scene.SetRootNodeIndex(0);
    return scene;
}

inline constexpr std::size_t kDeep = 1000000;

}  // namespace Support
