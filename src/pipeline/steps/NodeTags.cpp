#include <pipeline/steps/NodeTags.h>

#include <cstddef>

namespace Pipeline
{

NodeTags::NodeTags(Importing::SceneContainer& scene) : scene_(scene)
{
    notes_.reserve(scene.NodeLibrary.size());
    for (Importing::Node& node : scene.NodeLibrary)
        notes_.push_back(node.GetNote());
    for (std::size_t index = 0; index < notes_.size(); ++index)
        scene.NodeLibrary[index].SetNote(std::to_string(index));
}

NodeTags::~NodeTags()
{
    try
    {
        const std::vector<int> origins = Origins();
        for (std::size_t node = 0; node < origins.size(); ++node)
            scene_.NodeLibrary[node].SetNote(notes_[static_cast<std::size_t>(origins[node])]);
    }
    catch (...)  // NOLINT(bugprone-empty-catch): without memory the notes are lost
    {}
}

std::vector<int> NodeTags::Origins() const
{
    std::vector<int> origins;
    origins.reserve(scene_.NodeLibrary.size());
    for (Importing::Node& node : scene_.NodeLibrary)
        origins.push_back(std::stoi(node.GetNote()));
    return origins;
}

}  // namespace Pipeline
