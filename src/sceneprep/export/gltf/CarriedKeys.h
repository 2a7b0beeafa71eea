#pragma once

#include <sceneprep/model/Model.h>

#include <set>
#include <vector>

namespace Sceneprep::Gltf
{

/// Returns the key of a record; -1 if the list has no such entry.
inline int KeyAt(const std::vector<int>& keys, int index)
{
    const auto position = static_cast<std::size_t>(index);
    return index >= 0 && position < keys.size() ? keys[position] : -1;
}

/// Returns the carried data of a node of the scene; null for nodes that were not read from glTF.
const CarriedNode* CarriedNodeOf(const Model& model, int node);

/// Returns the carried data of a geometry; null for geometries that were not read from glTF.
const CarriedMesh* CarriedMeshOf(const Model& model, int geometry);

/// The objects that the carried clips animate.
struct AnimatedKeys
{
    std::set<int> nodes;      ///< keys of nodes whose translation, rotation or scale is animated
    std::set<int> materials;  ///< indices into Carried::materials
};

AnimatedKeys FindAnimatedKeys(const Carried& carried);

/// The parts of a pointer of KHR_animation_pointer to an entry of a list.
struct EntryPointer
{
    std::string list;  ///< "/materials/"; empty if the pointer does not refer to an entry of a list
    int index = -1;
    std::string rest;  ///< "/emissiveFactor"
};

/// Splits "/materials/3/emissiveFactor" or "/extensions/KHR_lights_punctual/lights/3/color" at the number.
EntryPointer SplitPointer(const std::string& pointer);

}  // namespace Sceneprep::Gltf
