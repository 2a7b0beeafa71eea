#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/WorldMeasure.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Sceneprep::Report
{

/// Consecutive triangles of a view that come from one surface of one node.
struct Part
{
    std::int32_t triangles = 0;
    std::int32_t node = 0;       ///< index among the nodes that show something, in the order of the walk from the root
    std::int32_t material = -1;  ///< in the material library; -1 for none
    std::int32_t collisionOffset = 0;

    friend bool operator==(const Part&, const Part&) = default;
};

/// A corner of a triangle: its position along each side of the view's bounds, in units of 1/65535.
using Corner = std::array<std::uint16_t, 3>;

/// The appearance of a scene, independent of the scene: 18 bytes a triangle, so that the state before the steps can be
/// kept.
struct Picture
{
    std::array<double, 3> min = {};
    std::array<double, 3> max = {};
    std::size_t triangles = 0;               ///< of the scene; the view has all of them or, if there are too many, some
    std::vector<Corner> corners;             ///< [3 * held triangles] counterclockwise seen from the front
    std::vector<Part> parts;                 ///< in the order of the corners
    std::vector<std::string> nodeNames;      ///< of the first nodes; cut if too long
    std::vector<std::string> materialNames;  ///< of the first materials; cut if too long
    std::vector<std::uint32_t> materialColors;  ///< of all materials: diffuse, as 0xRRGGBB
};

/// The largest number of triangles of a view: about 10 MB of the HTML report.
inline constexpr std::size_t kMostTriangles = 400'000;
inline constexpr std::size_t kMostNames = 20'000;
inline constexpr std::size_t kLongestName = 100;  ///< in bytes

/// Skips triangles with NaN or infinite positions. Of more than `limit` triangles, takes some, spread evenly.
/// @param world  the measure of the same scene
/// @throws std::out_of_range as Measure() does.
Picture TakePicture(Importing::SceneContainer& scene, const Pipeline::WorldMeasure& world,
                    std::size_t limit = kMostTriangles);

}  // namespace Sceneprep::Report
