#pragma once

#include <sceneprep/model/Model.h>

#include <set>
#include <vector>

namespace Sceneprep::Gltf
{

/// @return the key of a record; -1 where the list of keys has none.
inline int KeyAt(const std::vector<int>& keys, int index)
{
    const auto place = static_cast<std::size_t>(index);
    return index >= 0 && place < keys.size() ? keys[place] : -1;
}

/// @return what the input's glTF held of a node of the scene; null for nodes that did not come from glTF.
const CarriedNode* CarriedNodeOf(const Model& model, int node);

/// @return what the input's glTF held of a geometry; null for geometries that did not come from glTF.
const CarriedMesh* CarriedMeshOf(const Model& model, int geometry);

/// What the carried clips animate.
struct AnimatedKeys
{
    std::set<int> nodes;      ///< keys of nodes whose translation, rotation or scale is animated
    std::set<int> materials;  ///< indices into Carried::materials
};

AnimatedKeys FindAnimatedKeys(const Carried& carried);

/// A pointer of KHR_animation_pointer to an entry of a list, taken apart.
struct EntryPointer
{
    std::string list;  ///< "/materials/"; empty where the pointer does not lead to an entry of a list
    int index = -1;
    std::string rest;  ///< "/emissiveFactor"
};

/// Takes "/materials/3/emissiveFactor" or "/extensions/KHR_lights_punctual/lights/3/color" apart at the number.
EntryPointer SplitPointer(const std::string& pointer);

}  // namespace Sceneprep::Gltf
