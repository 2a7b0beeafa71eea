#pragma once

#include <string>
#include <vector>

namespace Sceneprep
{

/// One difference between what two files show.
struct Difference
{
    std::string kind;  ///< "material", "triangles", "winding", "normals", "texture-coordinates", "attributes",
                       ///< "tangents", "lines", "points", "camera", "light", "clip", "area", "unreadable" or "measure"
    std::string name;  ///< of the material, camera, light or clip; may be empty
    std::string text;  ///< one line
};

/// The result of a comparison.
struct Verdict
{
    bool isVerified = false;            ///< whether the written file was read back
    std::string reason = {};            ///< why it was not
    std::vector<std::string> compared;  ///< what was compared, one line each
    std::vector<Difference> differences;
};

}  // namespace Sceneprep
