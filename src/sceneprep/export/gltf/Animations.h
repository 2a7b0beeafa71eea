#pragma once

#include <importing/records/Key.h>
#include <sceneprep/export/gltf/Buffers.h>

#include <vector>

namespace Sceneprep::Gltf
{

/// Collects the keys of animated nodes in one animation.
class AnimationWriter
{
public:
    AnimationWriter(Buffers& buffers, Document& document) : buffers_(buffers), document_(document) {}

    /// Animates a node. Times become seconds; keys that do not come after the key before them are dropped.
    void Add(std::vector<Importing::Key>& keys, int node);

    /// Adds the animation to the document if it has channels.
    void Finish();

private:
    template <typename T>
    void AddChannel(int times, const std::vector<T>& values, const char* type, const char* path, int node);

    Buffers& buffers_;
    Document& document_;
    Json channels_ = Json::array();
    Json samplers_ = Json::array();
};

}  // namespace Sceneprep::Gltf
