#pragma once

#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/PrepareOptions.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Pipeline
{

/// Why a surface is not merged with another one of the same material.
enum class MergeReason
{
    AnimatedNode,   ///< it moves with another animated node
    KeptNode,       ///< it moves with another node that stays: a joint, a hidden node, a target of an animation
    FrozenNode,     ///< its node is frozen
    Skinned,        ///< its mesh has joints
    MorphTargets,   ///< its mesh is pinned
    PointsOrLines,  ///< its mesh has no triangles
    SharedMesh,     ///< PrepareOptions::keepInstances keeps its mesh shared
    TextureLayers,  ///< its texture layers differ
    OtherCell,      ///< it is in another cell
    MinimumCount,   ///< there are fewer surfaces than PrepareOptions::minSurfaces
    VertexLimit,    ///< the merged mesh would exceed PrepareOptions::maxVertices
    NotFlattened,   ///< flattening was not run
    Other
};

/// Returns the name of a reason in reports, as "animated-node".
const char* NameOf(MergeReason reason);

/// A surface that is not merged, by names.
struct UnmergedSurface
{
    std::string node;
    std::string mesh;  ///< name of the mesh; of the surface if the mesh has none
    int surface = -1;  ///< index in the surface library
};

/// Surfaces of one material that are not merged for the same reason.
struct MergeReasonGroup
{
    /// As many surfaces of a group are listed.
    static constexpr std::size_t kMostListed = 100;

    std::string material;  ///< name; empty without material
    MergeReason reason = MergeReason::Other;
    std::string subject;                    ///< name of the node that is the reason; empty for other reasons
    std::size_t count = 0;                  ///< how many surfaces
    std::vector<UnmergedSurface> surfaces;  ///< the first ones
};

/// Why a scene has more draw calls than materials. A draw call is a reference of a node to a surface with a mesh.
struct MergeReasons
{
    std::size_t drawCalls = 0;
    std::size_t needed = 0;                ///< one for each material in use
    std::vector<MergeReasonGroup> groups;  ///< the largest first; their counts add up to drawCalls - needed
};

/// Finds out why surfaces that share a material are separate, in a scene that PrepareScene() has prepared.
///
/// One surface of each material is the one that the others could have joined: a rigid one, at the root if possible.
/// Each other surface is in the group of its reason. Takes n log n time in nodes and surfaces, and linear time in
/// vertices with cells.
///
/// With both a cell size and a vertex limit, the cells are those of the merged meshes, so a surface that the limit kept
/// separate may be counted as being in another cell.
MergeReasons FindMergeReasons(const WorkScene& scene, const PrepareOptions& options);

/// Returns the reason with its subject, as it follows a count: "below animated node 'rotor'".
std::string TextOf(MergeReason reason, const std::string& subject);

}  // namespace Pipeline
