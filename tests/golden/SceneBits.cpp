#include <golden/SceneBits.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <type_traits>
#include <vector>

namespace Golden
{
namespace
{

using namespace Importing;

/// Writes fields as words, separated by blanks.
class Text
{
public:
    /// Ends the current line and begins a new one.
    Text& Line(const char* name)
    {
        if (!text_.empty())
            text_ += '\n';
        text_ += name;
        return *this;
    }

    Text& Number(std::int64_t value) { return Word(std::to_string(value)); }

    Text& Name(const std::string& name)
    {
        std::string visible;
        for (const char character : name)
            visible += character == '\r' || character == '\n' ? '/' : character;
        return Word('"' + visible + '"');
    }

    /// Writes a value that consists only of floats.
    template <typename Value>
    Text& Bits(const Value& value)
    {
        static_assert(std::is_trivially_copyable_v<Value> && sizeof(Value) % sizeof(float) == 0);
        for (std::size_t offset = 0; offset < sizeof(Value); offset += sizeof(std::uint32_t))
        {
            std::uint32_t bits = 0;
            std::memcpy(&bits, reinterpret_cast<const unsigned char*>(&value) + offset, sizeof(bits));
            char hexadecimal[12];
            std::snprintf(hexadecimal, sizeof(hexadecimal), "%08x", static_cast<unsigned>(bits));
            Word(hexadecimal);
        }
        return *this;
    }

    template <typename Index>
    Text& List(const char* name, const std::vector<Index>& indices)
    {
        Line(name);
        for (const Index index : indices)
            Number(index);
        return *this;
    }

    std::string Take() { return text_ + '\n'; }

private:
    Text& Word(const std::string& word)
    {
        text_ += ' ';
        text_ += word;
        return *this;
    }

    std::string text_;
};

void Print(Text& text, Node& node)
{
    const D3DXMATRIX matrix = node.GetLocalTransform().GetMatrix();
    text.Line("node").Name(node.GetName()).Number(node.GetAnimationID());
    text.Line("  matrix").Bits(matrix);
    text.List("  children", node.ChildList).List("  surfaces", node.SurfaceList);
    text.List("  cameras", node.CameraList).List("  lights", node.LightList);
}

void Print(Text& text, Surface& surface)
{
    text.Line("surface").Name(surface.GetName());
    text.Number(surface.GetGeometryID()).Number(surface.GetMaterialID()).Number(surface.GetCollisionOffset());
    for (Map& map : surface.MapList)
        text.Line("  map").Name(map.GetType()).Number(map.GetTextureID()).Bits(map.GetAmount()).Bits(map.GetMatrix());
}

void Print(Text& text, Vertex& vertex)
{
    text.Line("  vertex").Bits(vertex.GetPosition()).Bits(vertex.GetNormal());
    for (std::uint64_t set = 0; set < vertex.GetTexCoordCount(); ++set)
        text.Bits(vertex.GetTexCoord(static_cast<int>(set)));
}

void Print(Text& text, Geometry& mesh)
{
    text.Line("mesh").Name(mesh.GetName()).Number(static_cast<std::int64_t>(mesh.GetPolySize()));
    text.Line("  bind shape").Bits(mesh.GetBindShapeTransform());
    for (Vertex& vertex : mesh.VertexArray)
        Print(text, vertex);
    text.List("  indices", mesh.IndexArray);
    for (const D3DXVECTOR3& position : mesh.PointCachePositions)
        text.Line("  cached position").Bits(position);
    for (const D3DXVECTOR3& normal : mesh.PointCacheNormals)
        text.Line("  cached normal").Bits(normal);
}

void Print(Text& text, std::vector<Key>& animation)
{
    text.Line("animation");
    for (Key& key : animation)
        text.Line("  key").Number(key.GetTime()).Bits(key.GetMatrix());
}

void PrintLibraries(Text& text, SceneContainer& scene)
{
    text.Line("scene").Name(scene.GetName()).Number(scene.GetRootNodeIndex());
    for (Node& node : scene.NodeLibrary)
        Print(text, node);
    for (Surface& surface : scene.SurfaceLibrary)
        Print(text, surface);
    for (Geometry& mesh : scene.GeometryLibrary)
        Print(text, mesh);
    for (Material& material : scene.MaterialLibrary)
        text.Line("material").Name(material.GetName()).Bits(material.GetDiffuse()).Bits(material.GetOpacity());
    for (const std::string& texture : scene.TextureLibrary)
        text.Line("texture").Name(texture);
    for (Camera& camera : scene.CameraLibrary)
        text.Line("camera").Bits(camera.GetOffsetMatrix().GetMatrix());
    for (Light& light : scene.LightLibrary)
        text.Line("light").Bits(light.GetOffsetMatrix().GetMatrix());
    for (std::vector<Key>& animation : scene.AnimationLibrary)
        Print(text, animation);
}

void PrintWorld(Text& text, SceneContainer& scene)
{
    for (std::size_t i = 0; i < scene.NodeLibrary.size(); ++i)
        text.Line("world").Bits(scene.CalculateGlobalTM(static_cast<int>(i)));
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
    scene.GetBoundingBox(min, max);
    text.Line("bounds").Bits(min).Bits(max);
}

}  // namespace

std::string SceneBits(SceneContainer& scene)
{
    Text text;
    PrintLibraries(text, scene);
    PrintWorld(text, scene);
    return text.Take();
}

}  // namespace Golden
