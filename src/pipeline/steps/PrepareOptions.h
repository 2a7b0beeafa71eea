#pragma once

#include <pipeline/steps/UVMapping.h>

#include <string>
#include <vector>

namespace Pipeline
{

/// Which steps PrepareScene() runs, in the order in which it runs them. By default it runs none; RecommendedSteps()
/// returns the recommended choice. Steps() describes every step.
struct PrepareOptions
{
    bool resolveInstances = false;
    int keepInstances = 0;  ///< for resolveInstances; meshes with at least so many uses stay shared; 0: none
    bool repairMirrors = false;
    bool checkOrientation = false;
    bool fixCulling = false;
    bool weld = false;
    bool normals = false;
    bool unifyNormals = false;
    std::vector<UVMapping> uvs = {};
    bool uniqueNames = false;
    bool flatten = false;
    int minSurfaces = 2;                 ///< for flatten; as in SceneContainer::MergeSurfaces()
    int maxVertices = -1;                ///< for flatten; the largest mesh that merging makes; negative: no limit
    bool ignoreAnimation = false;        ///< for flatten; animated nodes collapse, too
    std::vector<std::string> keep = {};  ///< for flatten; patterns of names of nodes that are frozen, see FreezeNodes()
    double cellSize = 0;  ///< for flatten; only surfaces of one cell are merged, see FindCells(); 0: no cells
    bool surfaceNames = false;
    bool collisionOffsets = false;
};

}  // namespace Pipeline
