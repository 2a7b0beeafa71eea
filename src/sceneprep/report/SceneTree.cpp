#include <sceneprep/report/SceneTree.h>

#include <fmt/format.h>
#include <pipeline/scene/Hierarchy.h>
#include <sceneprep/report/PrintableName.h>

namespace Sceneprep
{

using Pipeline::NodeWalk;
using Pipeline::WalkFromRoot;

namespace
{

std::string Listed(std::size_t count, const char* one, const char* several)
{
    return count == 0 ? "" : fmt::format(", {} {}", count, count == 1 ? one : several);
}

std::string Describe(Importing::Node& node)
{
    const std::string name = node.GetName();
    std::string lists = Listed(node.SurfaceList.size(), "surface", "surfaces") +
                        Listed(node.CameraList.size(), "camera", "cameras") +
                        Listed(node.LightList.size(), "light", "lights");
    if (node.GetAnimationID() >= 0)
        lists += ", animated";
    if (!lists.empty())
        lists = fmt::format(" ({})", lists.substr(2));
    return (name.empty() ? "(no name)" : PrintableName(name)) + lists;
}

}  // namespace

std::string TreeText(Importing::SceneContainer& scene)
{
    const NodeWalk walk = WalkFromRoot(scene);
    std::vector<std::size_t> depth(scene.NodeLibrary.size(), 0);
    std::string text;
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        if (walk.parent[position] >= 0)
            depth[position] = depth[static_cast<std::size_t>(walk.parent[position])] + 1;
        text += std::string(2 * depth[position], ' ') + Describe(scene.NodeLibrary[position]) + '\n';
    }
    return text;
}

}  // namespace Sceneprep
