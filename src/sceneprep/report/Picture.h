#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/WorldMeasure.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Sceneprep::Report
{

/// Triangles that follow one another in a picture and come from one surface of one node.
struct Part
{
    std::int32_t triangles = 0;
    std::int32_t node = 0;       ///< counts the nodes that show something, in the order of the walk from the root
    std::int32_t material = -1;  ///< in the material library; -1 for none
    std::int32_t collisionOffset = 0;

    friend bool operator==(const Part&, const Part&) = default;
};

/// A corner of a triangle: how far along each side of the picture's box it lies, in parts of 65535.
using Corner = std::array<std::uint16_t, 3>;

/// What a scene looks like, apart from the scene: 18 bytes a triangle, so that the state before the steps can be kept.
struct Picture
{
    std::array<double, 3> min = {};
    std::array<double, 3> max = {};
    std::size_t triangles = 0;    ///< that the scene shows; the picture holds these or, when they are many, some
    std::vector<Corner> corners;  ///< [3 triangles held] turned so that who looks at a front sees them anticlockwise
    std::vector<Part> parts;      ///< in the order of the corners
    std::vector<std::string> nodeNames;         ///< of the first nodes; cut where long
    std::vector<std::string> materialNames;     ///< of the first materials; cut where long
    std::vector<std::uint32_t> materialColors;  ///< of all materials: diffuse, as 0xRRGGBB
};

/// How many triangles a picture holds at most: about 10 MB of a page.
inline constexpr std::size_t kMostTriangles = 400'000;
inline constexpr std::size_t kMostNames = 20'000;
inline constexpr std::size_t kLongestName = 100;  ///< in bytes

/// Draws triangles with a corner at infinity or nowhere not at all, and of more than the limit some, spread evenly.
/// @param world  what was measured of the same scene
/// @throws std::out_of_range as Measure() does.
Picture TakePicture(Importing::SceneContainer& scene, const Pipeline::WorldMeasure& world,
                    std::size_t limit = kMostTriangles);

}  // namespace Sceneprep::Report
