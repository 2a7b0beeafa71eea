#pragma once

#include <importing/base/CheckedAccess.h>
#include <importing/math/D3DXMath.h>
#include <importing/plugin/SceneContainer.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// Plain models of the operations on a whole scene: step by step, recursive, with a full scan for every search. They
/// work on a scene's libraries and call only accessors of the container. The library's operations must result in the
/// same scenes, including hash states.
namespace Models
{

using Importing::SceneContainer;

void EraseNode(SceneContainer& scene, int index);
int FindParent(const SceneContainer& scene, int index);
D3DXMATRIX GlobalMatrix(const SceneContainer& scene, int index);
int AddMaterial(SceneContainer& scene, Importing::Material& material);
int AddTexture(SceneContainer& scene, const std::string& texture);

void MoveSurfaces(SceneContainer& scene, int toNode, int fromNode, const D3DXMATRIX& matrix);
void MoveCameras(SceneContainer& scene, int toNode, int fromNode, const D3DXMATRIX& matrix);
void MoveLights(SceneContainer& scene, int toNode, int fromNode, const D3DXMATRIX& matrix);

void MergeSurfaces(SceneContainer& scene, int node, int minSurfaces, int maxVertices);

/// The arguments of a flattening that do not change during the walk, and the nodes to erase.
struct Flattening
{
    int targetNode = -1;
    D3DXMATRIX targetMatrix;
    bool ignoreAnimation = false;
    std::vector<std::uint32_t> erased;
};

int FlatHierarchyInternal(SceneContainer& scene, Flattening& flattening, int node, const D3DXMATRIX& nodeMatrix);
void FlatHierarchy(SceneContainer& scene, Flattening flattening, int startNode, const D3DXMATRIX& startMatrix,
                   int minSurfaces, int maxVertices);

/// Renames the records of one library.
template <typename Record>
void MakeNamesUnambiguous(std::vector<Record>& library)
{
    std::map<std::string, std::uint32_t> counts;
    for (Record& record : library)
        ++counts[record.GetName()];
    for (Record& record : library)
    {
        const std::string name = record.GetName();
        const std::uint32_t count = counts[name];
        if (count < 2)
            continue;
        counts[name] = count - 1;
        const std::string base = name + "(" + std::to_string(count - 1) + ")";
        std::string candidate = base;
        for (int retry = 1; counts[candidate] != 0; ++retry)
            candidate = base + "[" + std::to_string(retry) + "]";
        record.SetName(candidate);
    }
}

void CreateSurfaceNames(SceneContainer& scene);

void AppendSC(SceneContainer& scene, SceneContainer& other);

void CalculateSurfaceCollisionOffset(SceneContainer& scene);

void ResolveGeomInstances(SceneContainer& scene);
void GetBoundingBox(const SceneContainer& scene, D3DXVECTOR3& min, D3DXVECTOR3& max);

void CheckFacesOrientation(SceneContainer& scene, int node, const D3DXMATRIX& worldMatrix);
void RemoveNegativeScaleMatricies(SceneContainer& scene, int node, const D3DXMATRIX& pendingScale,
                                  const D3DXMATRIX& parentWorld);

}  // namespace Models
