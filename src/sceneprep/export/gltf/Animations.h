#pragma once

#include <importing/records/Key.h>
#include <sceneprep/export/gltf/Buffers.h>

#include <vector>

namespace Sceneprep::Gltf
{

/// Gathers the movements of a model's nodes in one animation.
class AnimationWriter
{
public:
    AnimationWriter(Buffers& buffers, tinygltf::Model& model) : buffers_(buffers), model_(model) {}

    /// Moves a node through keys. Times become seconds; where keys do not follow each other in time, those that come
    /// too late are left out.
    void Add(std::vector<Importing::Key>& keys, int node);

    /// Hands the animation over to the model, if anything moves.
    void Finish();

private:
    template <typename T>
    void AddChannel(int times, const std::vector<T>& values, int type, const char* path, int node);

    Buffers& buffers_;
    tinygltf::Model& model_;
    tinygltf::Animation animation_;
};

}  // namespace Sceneprep::Gltf
