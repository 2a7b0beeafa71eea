// The area and the volume are sums over triangles, so they do not depend on how meshes are divided among nodes or in
// which order they are merged, apart from rounding. Together with the bounds and the number of triangles they reveal
// moved, lost, duplicated and flipped triangles in one linear pass; matching the triangles of two scenes would need a
// search.

#include <pipeline/scene/WorldMeasure.h>

#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/ShownSurfaces.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace Pipeline
{

namespace
{

using Point = WorldPoint;

void Extend(WorldMeasure& measure, const Point& point)
{
    for (unsigned axis = 0; axis < 3; ++axis)
    {
        measure.min[axis] = std::min(measure.min[axis], point[axis]);
        measure.max[axis] = std::max(measure.max[axis], point[axis]);
    }
}

void AddTriangle(WorldMeasure& measure, const Point& a, const Point& b, const Point& c, double handedness)
{
    ++measure.triangles;
    if (!IsFinite(a) || !IsFinite(b) || !IsFinite(c))
    {
        ++measure.broken;
        return;
    }
    for (const Point& corner : {a, b, c})
        Extend(measure, corner);
    const Point across = Cross(Minus(b, a), Minus(c, a));
    const double area = Length(across) / 2;
    measure.degenerate += area == 0 ? 1 : 0;
    measure.area += area;
    measure.volume += handedness * Dot(a, across) / 6;
}

/// @param points  memory for the world positions of the mesh's vertices, reused for every mesh
void AddSurface(WorldMeasure& measure, const ShownSurface& shown, std::vector<Point>& points)
{
    points.clear();
    for (Importing::Vertex& vertex : shown.geometry.VertexArray)
        points.push_back(ToWorld(vertex.Vertex::GetPosition(), shown.world));

    const double handedness = IsMirroring(shown.world) ? -1 : 1;
    const std::vector<std::uint32_t>& indices = shown.geometry.IndexArray;
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3)
        AddTriangle(measure, points[indices[i]], points[indices[i + 1]], points[indices[i + 2]], handedness);
}

std::size_t CountReferences(const Importing::SceneContainer& scene)
{
    std::size_t count = 0;
    for (const Importing::Node& node : scene.NodeLibrary)
        count += node.SurfaceList.size();
    return count;
}

}  // namespace

double WorldMeasure::Diagonal() const { return Length(Minus(max, min)); }

double WorldMeasure::Extent() const
{
    double largest = Diagonal();
    for (unsigned axis = 0; axis < 3; ++axis)
        largest = std::max({largest, std::fabs(min[axis]), std::fabs(max[axis])});
    return largest;
}

WorldMeasure Measure(Importing::SceneContainer& scene, const PartListener& listener)
{
    constexpr double kLargest = std::numeric_limits<double>::max();
    WorldMeasure measure;
    measure.min = {kLargest, kLargest, kLargest};
    measure.max = {-kLargest, -kLargest, -kLargest};

    PartCounter counter(listener, CountReferences(scene));
    std::vector<Point> points;
    ForEachShownSurface(scene, [&](const ShownSurface& shown) {
        AddSurface(measure, shown, points);
        counter.Add(1);
    });
    if (measure.triangles == measure.broken)
        measure.min = measure.max = {};
    return measure;
}

std::vector<std::string> NotesOnTriangles(const WorldMeasure& world)
{
    std::vector<std::string> notes;
    if (world.broken > 0)
        notes.push_back("triangles have infinite or NaN positions (" + std::to_string(world.broken) + ")");
    if (world.degenerate > 0)
        notes.push_back("triangles have no area (" + std::to_string(world.degenerate) + ")");
    return notes;
}

}  // namespace Pipeline
