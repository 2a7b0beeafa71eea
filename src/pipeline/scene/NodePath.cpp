#include <pipeline/scene/NodePath.h>

#include <importing/base/CheckedAccess.h>

namespace Pipeline
{

NodePath::NodePath(const std::vector<int>& parents, int node) : parents_(parents)
{
    for (; node >= 0; node = Importing::At(parents, node))
    {
        heights_.emplace(node, nodes_.size());
        nodes_.push_back(node);
    }
}

std::size_t NodePath::HeightOfMeeting(int node)
{
    std::vector<int> way;
    std::size_t height = nodes_.size();
    for (; node >= 0; node = Importing::At(parents_, node))
    {
        const auto onPath = heights_.find(node);
        const auto known = meetings_.find(node);
        if (onPath != heights_.end() || known != meetings_.end())
        {
            height = onPath != heights_.end() ? onPath->second : known->second;
            break;
        }
        way.push_back(node);
    }
    for (const int walked : way)
        meetings_.emplace(walked, height);
    return height;
}

}  // namespace Pipeline
