#include <sceneprep/WorldMeasure.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace SceneprepTests
{

namespace
{

using Point = std::array<double, 3>;

Point Carry(const D3DXVECTOR3& p, const D3DXMATRIX& m)
{
    Point result{};
    for (unsigned c = 0; c < 3; ++c)
        result[c] = static_cast<double>(p.x) * m(0, c) + static_cast<double>(p.y) * m(1, c) +
                    static_cast<double>(p.z) * m(2, c) + m(3, c);
    return result;
}

Point Minus(const Point& a, const Point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

Point Cross(const Point& a, const Point& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Dot(const Point& a, const Point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

double Handedness(const D3DXMATRIX& m)
{
    const Point x = {m._11, m._12, m._13};
    const Point y = {m._21, m._22, m._23};
    const Point z = {m._31, m._32, m._33};
    return Dot(Cross(x, y), z) < 0 ? -1 : 1;
}

void AddGeometry(Importing::Geometry& geometry, const D3DXMATRIX& world, WorldMeasure& measure)
{
    std::vector<Point> points;
    for (const std::uint32_t index : geometry.IndexArray)
    {
        points.push_back(Carry(geometry.VertexArray.at(index).GetPosition(), world));
        for (unsigned axis = 0; axis < 3; ++axis)
        {
            measure.min[axis] = std::min(measure.min[axis], points.back()[axis]);
            measure.max[axis] = std::max(measure.max[axis], points.back()[axis]);
        }
    }
    for (std::size_t i = 0; i + 2 < points.size(); i += 3)
    {
        const Point across = Cross(Minus(points[i + 1], points[i]), Minus(points[i + 2], points[i]));
        measure.area += std::sqrt(Dot(across, across)) / 2;
        measure.volume += Handedness(world) * Dot(points[i], across) / 6;
        ++measure.triangles;
    }
}

}  // namespace

double WorldMeasure::Extent() const
{
    double square = 0;
    double largest = 0;
    for (unsigned axis = 0; axis < 3; ++axis)
    {
        square += (max[axis] - min[axis]) * (max[axis] - min[axis]);
        largest = std::max({largest, std::fabs(min[axis]), std::fabs(max[axis])});
    }
    return std::max(std::sqrt(square), largest);
}

WorldMeasure Measure(Importing::SceneContainer& scene)
{
    WorldMeasure measure;
    for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
    {
        if (scene.NodeLibrary[node].SurfaceList.empty())
            continue;
        const D3DXMATRIX world = scene.CalculateGlobalTM(static_cast<int>(node));
        for (const std::int32_t surface : scene.NodeLibrary[node].SurfaceList)
        {
            const int geometry = scene.SurfaceLibrary.at(static_cast<std::size_t>(surface)).GetGeometryID();
            AddGeometry(scene.GeometryLibrary.at(static_cast<std::size_t>(geometry)), world, measure);
        }
    }
    return measure;
}

void ExpectSameWorld(const WorldMeasure& actual, const WorldMeasure& expected)
{
    EXPECT_EQ(actual.triangles, expected.triangles);
    const double extent = expected.Extent();
    for (unsigned axis = 0; axis < 3; ++axis)
    {
        EXPECT_NEAR(actual.min[axis], expected.min[axis], 1e-5 * extent) << "axis " << axis;
        EXPECT_NEAR(actual.max[axis], expected.max[axis], 1e-5 * extent) << "axis " << axis;
    }
    EXPECT_NEAR(actual.area, expected.area, 1e-4 * expected.area);
    EXPECT_NEAR(actual.volume, expected.volume, 1e-4 * expected.area * extent);
}

}  // namespace SceneprepTests
