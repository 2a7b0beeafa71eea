#include <sceneprep/report/Picture.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <sceneprep/report/EvenChoice.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Sceneprep::Report
{

using Pipeline::ForEachShownSurface;
using Pipeline::IsFinite;
using Pipeline::IsMirroring;
using Pipeline::ShownSurface;
using Pipeline::ToWorld;
using Pipeline::WorldMeasure;
using Pipeline::WorldPoint;

namespace
{

/// Names from files may be of any length and number.
void AddName(std::vector<std::string>& names, const std::string& name)
{
    if (names.size() < kMostNames)
        names.push_back(name.substr(0, kLongestName));
}

/// NaN counts as 0.
std::uint32_t ByteOf(float part)
{
    return part > 0 ? static_cast<std::uint32_t>(std::lround(std::min(part, 1.0F) * 255)) : 0;
}

std::uint32_t ColorOf(const D3DXCOLOR& color) { return ByteOf(color.r) << 16 | ByteOf(color.g) << 8 | ByteOf(color.b); }

class Painter
{
public:
    Painter(Picture& picture, std::size_t limit) : picture_(picture), choice_(picture.triangles, limit)
    {
        picture_.corners.reserve(3 * std::min(picture.triangles, limit));
    }

    void Add(const ShownSurface& shown, const std::string& nodeName)
    {
        if (shown.node != node_)
        {
            node_ = shown.node;
            ++nodes_;
            AddName(picture_.nodeNames, nodeName);
        }
        const std::size_t before = picture_.corners.size();
        AddTriangles(shown);
        const auto added = static_cast<std::int32_t>((picture_.corners.size() - before) / 3);
        if (added > 0)
            picture_.parts.push_back(
                {added, nodes_ - 1, shown.surface.GetMaterialID(), shown.surface.GetCollisionOffset()});
    }

private:
    void AddTriangles(const ShownSurface& shown)
    {
        const bool mirrors = IsMirroring(shown.world);
        const std::vector<std::uint32_t>& indices = shown.geometry.IndexArray;
        for (std::size_t i = 0; i + 2 < indices.size(); i += 3)
        {
            std::array<WorldPoint, 3> points = {Place(shown, indices[i]), Place(shown, indices[i + 1]),
                                                Place(shown, indices[i + 2])};
            if (!std::all_of(points.begin(), points.end(), IsFinite) || !choice_.Next())
                continue;
            if (mirrors)
                std::swap(points[1], points[2]);
            for (const WorldPoint& point : points)
                picture_.corners.push_back(CornerAt(point));
        }
    }

    static WorldPoint Place(const ShownSurface& shown, std::uint32_t vertex)
    {
        return ToWorld(shown.geometry.VertexArray[vertex].GetPosition(), shown.world);
    }

    Corner CornerAt(const WorldPoint& point) const
    {
        Corner corner{};
        for (unsigned axis = 0; axis < 3; ++axis)
        {
            const double size = picture_.max[axis] - picture_.min[axis];
            const double part = size > 0 ? (point[axis] - picture_.min[axis]) / size : 0;
            corner[axis] = static_cast<std::uint16_t>(std::lround(std::clamp(part, 0.0, 1.0) * 65535));
        }
        return corner;
    }

    Picture& picture_;
    EvenChoice choice_;
    int node_ = -1;
    std::int32_t nodes_ = 0;
};

}  // namespace

Picture TakePicture(Importing::SceneContainer& scene, const WorldMeasure& world, std::size_t limit)
{
    Picture picture;
    picture.min = world.min;
    picture.max = world.max;
    picture.triangles = world.triangles - world.broken;

    Painter painter(picture, limit);
    ForEachShownSurface(scene, [&](const ShownSurface& shown) {
        painter.Add(shown, Importing::At(scene.NodeLibrary, shown.node).GetName());
    });
    for (Importing::Material& material : scene.MaterialLibrary)
    {
        AddName(picture.materialNames, material.GetName());
        picture.materialColors.push_back(ColorOf(material.GetDiffuse()));
    }
    return picture;
}

}  // namespace Sceneprep::Report
