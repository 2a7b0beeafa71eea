#pragma once

#include <pipeline/steps/UVMapping.h>

#include <vector>

namespace Pipeline
{

/// Which steps `prepare` runs, in the order in which it runs them. Names of surfaces are made distinct last of all,
/// once surfaceNames has given them.
struct StepOptions
{
    bool resolveInstances = false;
    bool repairMirrors = false;
    bool checkOrientation = false;
    bool fixCulling = false;
    bool weld = false;
    bool normals = false;
    bool unifyNormals = false;
    std::vector<UVMapping> uvs = {};
    bool uniqueNames = false;
    bool flatten = false;
    int minSurfaces = 2;           ///< for flatten
    int maxVertices = -1;          ///< for flatten; negative: no limit
    bool ignoreAnimation = false;  ///< for flatten
    bool surfaceNames = false;
    bool collisionOffsets = false;
};

}  // namespace Pipeline
