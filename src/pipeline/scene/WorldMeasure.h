#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/PartCounter.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace Pipeline
{

/// The appearance of a scene in numbers that do not depend on its hierarchy. Every reference to a surface below the
/// root counts.
struct WorldMeasure
{
    std::size_t triangles = 0;
    std::size_t degenerate = 0;  ///< triangles without area
    std::size_t broken = 0;      ///< triangles with infinite or NaN positions; the following members ignore them
    std::array<double, 3> min = {};
    std::array<double, 3> max = {};  ///< minimum and maximum are 0 if there are no triangles
    double area = 0;
    /// The sum of the signed volumes of the tetrahedra from the origin to each triangle, with the winding of mirrored
    /// surfaces flipped, as viewers do. It changes if faces are flipped.
    double volume = 0;

    double Diagonal() const;
    /// The diagonal or the largest coordinate, whichever is larger.
    double Extent() const;
};

/// Measures the scene. Positions are transformed and summed in double precision. Takes linear time.
WorldMeasure Measure(Importing::SceneContainer& scene, const PartListener& listener = IgnorePart);

/// Returns one note for each kind of suspicious triangles.
std::vector<std::string> NotesOnTriangles(const WorldMeasure& world);

}  // namespace Pipeline
