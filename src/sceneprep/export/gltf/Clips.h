#pragma once

#include <sceneprep/export/gltf/CarriedAccessors.h>
#include <sceneprep/export/gltf/MaterialWriter.h>
#include <sceneprep/export/gltf/NodeMeshes.h>
#include <sceneprep/export/gltf/NodeObjects.h>

#include <string>

namespace Sceneprep::Gltf
{

/// The objects of the document that channels of clips can refer to.
struct ClipTargets
{
    const WrittenNodes& nodes;
    const MaterialWriter& materials;
    const NodeMeshWriter& meshes;
    const NodeObjectWriter& objects;
};

/// Writes the clips of the input unchanged: names, channels, interpolation and keys. Accessors are written once.
class ClipWriter
{
public:
    ClipWriter(const Carried& carried, const ClipTargets& targets, CarriedAccessorList& accessors, Document& document)
        : carried_(carried), targets_(targets), accessors_(accessors), document_(document)
    {}

    /// Writes all clips. Channels whose target is not in the document are dropped with a note.
    void Write(Notes& notes);

private:
    Json TargetOf(const CarriedChannel& channel);
    Json PointerTarget(const CarriedChannel& channel);
    Json WriteSampler(const CarriedSampler& sampler);
    bool HasMorphTargets(int node) const;

    const Carried& carried_;
    const ClipTargets& targets_;
    CarriedAccessorList& accessors_;
    Document& document_;
};

}  // namespace Sceneprep::Gltf
