#include <sceneprep/import/gltf/NodeTree.h>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace Sceneprep::GltfImport
{

namespace
{

void CheckReachable(const NodeTree& tree, const Field& nodes)
{
    std::vector<bool> isReached(tree.parent.size(), false);
    std::vector<int> pending;
    for (std::size_t node = 0; node < tree.parent.size(); ++node)
    {
        if (tree.parent[node] < 0)
            pending.push_back(static_cast<int>(node));
    }
    while (!pending.empty())
    {
        const auto node = static_cast<std::size_t>(pending.back());
        pending.pop_back();
        isReached[node] = true;
        pending.insert(pending.end(), tree.children[node].begin(), tree.children[node].end());
    }
    const auto lost = std::find(isReached.begin(), isReached.end(), false);
    if (lost != isReached.end())
        nodes.Element(static_cast<std::size_t>(lost - isReached.begin())).Fail("the node is its own ancestor");
}

std::optional<int> NumberOf(std::string_view text)
{
    int number = 0;
    const auto [read, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && read == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

int FindScene(const Field& scenes, const std::string& wanted)
{
    for (std::size_t i = 0; i < scenes.Size(); ++i)
    {
        const Field scene = scenes.Element(i);
        if (scene.Has("name") && scene.Member("name").Text() == wanted)
            return static_cast<int>(i);
    }
    const std::optional<int> number = NumberOf(wanted);
    if (!number || *number < 0 || static_cast<std::size_t>(*number) >= scenes.Size())
        scenes.Fail(fmt::format("there is no scene '{}' among the {} scenes", wanted, scenes.Size()));
    return *number;
}

std::vector<int> RootsOf(const Field& scene, const NodeTree& tree)
{
    std::vector<int> roots;
    std::vector<bool> isListed(tree.parent.size(), false);
    for (std::size_t i = 0; i < scene.SizeOf("nodes"); ++i)
    {
        const Field reference = scene.Member("nodes").Element(i);
        const int root = reference.IndexBelow(tree.parent.size());
        const auto node = static_cast<std::size_t>(root);
        if (tree.parent[node] >= 0)
            reference.Fail(fmt::format("node {} is not a root but a child of node {}", root, tree.parent[node]));
        if (isListed[node])
            reference.Fail(fmt::format("node {} is listed twice", root));
        isListed[node] = true;
        roots.push_back(root);
    }
    return roots;
}

std::vector<int> AllRoots(const NodeTree& tree)
{
    std::vector<int> roots;
    for (std::size_t node = 0; node < tree.parent.size(); ++node)
    {
        if (tree.parent[node] < 0)
            roots.push_back(static_cast<int>(node));
    }
    return roots;
}

}  // namespace

NodeTree ReadNodeTree(const Field& document)
{
    const std::size_t count = document.SizeOf("nodes");
    NodeTree tree{std::vector<int>(count, -1), std::vector<std::vector<int>>(count)};
    if (count == 0)
        return tree;
    const Field nodes = document.Member("nodes");
    for (std::size_t node = 0; node < count; ++node)
    {
        const std::optional<Field> children = nodes.Element(node).Find("children");
        for (std::size_t i = 0; children && i < children->Size(); ++i)
        {
            const Field reference = children->Element(i);
            const int child = reference.IndexBelow(count);
            int& parent = tree.parent[static_cast<std::size_t>(child)];
            if (parent >= 0)
                reference.Fail(fmt::format("node {} is already a child of node {}", child, parent));
            parent = static_cast<int>(node);
            tree.children[node].push_back(child);
        }
    }
    CheckReachable(tree, nodes);
    return tree;
}

ChosenScene ChooseScene(const Field& document, const NodeTree& tree, const std::optional<std::string>& wanted)
{
    const std::size_t count = document.SizeOf("scenes");
    if (count == 0)
    {
        if (wanted)
            document.Fail(fmt::format("there is no scene '{}', the file has no scenes", *wanted));
        return {-1, AllRoots(tree)};
    }
    const Field scenes = document.Member("scenes");
    ChosenScene chosen;
    chosen.index = wanted ? FindScene(scenes, *wanted) : std::max(document.IndexOrNone("scene", count), 0);
    chosen.roots = RootsOf(scenes.Element(static_cast<std::size_t>(chosen.index)), tree);
    return chosen;
}

}  // namespace Sceneprep::GltfImport
