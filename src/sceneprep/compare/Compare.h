#pragma once

#include <sceneprep/compare/Appearance.h>
#include <sceneprep/compare/Verdict.h>

#include <string>
#include <vector>

namespace Sceneprep
{

/// What is compared. By default everything is.
struct CompareOptions
{
    bool materials = true;
    bool winding = true;
    bool normals = true;  ///< and tangents, where both sides have them
    bool texCoords = true;
    bool attributes = true;  ///< colours, custom attributes and skin weights
    bool linesAndPoints = true;
    bool cameras = true;
    bool lights = true;
    bool clips = true;
    bool mayAddNormals = false;    ///< meshes without normals may get any
    double relativeTolerance = 0;  ///< of positions, as a share of the diagonal, in addition to rounding
};

/// Compares what two models show. Finds each difference beyond rounding: values that differ by more than a few units in
/// the last place of the coordinates, or by 1e-4 for attributes. Triangles that are thinner than that are not compared.
///
/// Time is linear in the number of triangles, apart from sorting.
/// @return one difference for each kind and material, those of most triangles first; at most 20, and one that counts
/// the
///         rest
std::vector<Difference> Compare(const Appearance& before, const Appearance& after, const CompareOptions& options = {});

/// Returns what Compare() compares, one line each.
std::vector<std::string> DescribeComparison(const Appearance& before, const CompareOptions& options);

}  // namespace Sceneprep
