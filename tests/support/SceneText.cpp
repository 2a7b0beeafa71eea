#include <support/SceneText.h>

#include <importing/base/CheckedAccess.h>
#include <importing/base/ForReading.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Support
{
namespace
{

using namespace Importing;

/// Parses the text of a scene.
class SceneReader
{
public:
    explicit SceneReader(const std::string& text) : text_(text) {}

    SceneContainer Read()
    {
        while (!AtEnd())
        {
            ReadNode();
            if (!AtEnd())
                Expect('|');
        }
        if (!scene_.NodeLibrary.empty())
            scene_.SetRootNodeIndex(0);
        return scene_;
    }

private:
    bool AtEnd() { return Peek() == '\0'; }

    char Peek()
    {
        while (position_ < text_.size() && text_[position_] == ' ')
            ++position_;
        return position_ < text_.size() ? text_[position_] : '\0';
    }

    bool Accept(char wanted)
    {
        if (Peek() != wanted)
            return false;
        ++position_;
        return true;
    }

    void Expect(char wanted)
    {
        if (!Accept(wanted))
            Complain(std::string(1, wanted));
    }

    [[noreturn]] void Complain(const std::string& wanted) const
    {
        std::ostringstream text;
        text << "expected " << wanted << " at " << position_ << " of scene " << text_;
        throw std::invalid_argument(text.str());
    }

    std::string ReadName()
    {
        static const std::string kSpecial = " ()[]{}<>|&*@=:,";
        Peek();
        const std::size_t start = position_;
        while (position_ < text_.size() && kSpecial.find(text_[position_]) == std::string::npos)
            ++position_;
        if (position_ == start)
            Complain("a name");
        return text_.substr(start, position_ - start);
    }

    int ReadNode()
    {
        if (Accept('&'))
            return nodes_.at(ReadName());
        const std::string name = ReadName();
        const auto index = scene_.NodeLibrary.size();
        nodes_[name] = static_cast<int>(index);
        scene_.NodeLibrary.emplace_back();
        scene_.NodeLibrary.back().SetName(name);
        while (ReadMark(index))
        {}
        if (Accept('('))
        {
            while (!Accept(')'))
            {
                const int child = ReadNode();
                scene_.NodeLibrary[index].ChildList.push_back(child);
            }
        }
        return static_cast<int>(index);
    }

    bool ReadMark(std::size_t index)
    {
        Node& node = scene_.NodeLibrary[index];
        if (Accept('@'))
            ReadTranslation(node);
        else if (Accept('*'))
            node.SetAnimationID(scene_.AddAnimationToLibrary(std::vector<Key>(1), false));
        else if (Accept('['))
            while (!Accept(']'))
                node.SurfaceList.push_back(ReadSurface());
        else if (Accept('{'))
            while (!Accept('}'))
                node.CameraList.push_back(Named(cameras_, scene_.CameraLibrary, ReadName()));
        else if (Accept('<'))
            while (!Accept('>'))
                node.LightList.push_back(Named(lights_, scene_.LightLibrary, ReadName()));
        else
            return false;
        return true;
    }

    void ReadTranslation(Node& node)
    {
        const float x = std::stof(ReadName());
        Expect(',');
        const float y = std::stof(ReadName());
        Expect(',');
        const float z = std::stof(ReadName());
        node.SetLocalTransform(Transform(Translation(x, y, z)));
    }

    int ReadSurface()
    {
        const std::string name = ReadName();
        const bool isNew = surfaces_.count(name) == 0;
        const int index = Named(surfaces_, scene_.SurfaceLibrary, name);
        Surface& surface = scene_.SurfaceLibrary[static_cast<std::size_t>(index)];
        const bool hasMesh = Accept('=');
        if (isNew || hasMesh)
            surface.SetGeometryID(ReadMesh(hasMesh ? ReadName() : name));
        if (Accept(':'))
            surface.SetMaterialID(Named(materials_, scene_.MaterialLibrary, ReadName()));
        return index;
    }

    int ReadMesh(const std::string& name)
    {
        const bool isNew = meshes_.count(name) == 0;
        const int index = Named(meshes_, scene_.GeometryLibrary, name);
        if (isNew)
        {
            scene_.GeometryLibrary.back() = UnitBox();
            scene_.GeometryLibrary.back().SetName(name);
        }
        return index;
    }

    template <typename Record>
    static int Named(std::map<std::string, int>& known, std::vector<Record>& library, const std::string& name)
    {
        const auto [entry, isNew] = known.try_emplace(name, static_cast<int>(library.size()));
        if (isNew)
        {
            library.emplace_back();
            library.back().SetName(name);
        }
        return entry->second;
    }

    const std::string& text_;
    std::size_t position_ = 0;
    SceneContainer scene_;
    std::map<std::string, int> nodes_;
    std::map<std::string, int> surfaces_;
    std::map<std::string, int> meshes_;
    std::map<std::string, int> materials_;
    std::map<std::string, int> cameras_;
    std::map<std::string, int> lights_;
};

std::string OrBlank(const std::string& name) { return name.empty() ? "_" : name; }

/// Writes a scene as text, beginning at its root.
class SceneWriter
{
public:
    explicit SceneWriter(const SceneContainer& scene) : scene_(scene) {}

    std::string Write()
    {
        const int root = scene_.GetRootNodeIndex();
        if (IsValidIndex(root, scene_.NodeLibrary.size()))
            WriteNode(root);
        else if (!scene_.NodeLibrary.empty())
            text_ << '-';
        for (const bool parentless : {true, false})
            for (int i = 0; IsValidIndex(i, scene_.NodeLibrary.size()); ++i)
                if (written_.count(i) == 0 && (!parentless || scene_.FindParentNode(i) == -1))
                {
                    text_ << " | ";
                    WriteNode(i);
                }
        return text_.str();
    }

private:
    void WriteNode(int index)
    {
        if (!IsValidIndex(index, scene_.NodeLibrary.size()))
        {
            text_ << '?';
            return;
        }
        Node& node = ForReading(At(scene_.NodeLibrary, index));
        const bool isNew = written_.insert(index).second;
        text_ << (isNew ? "" : "&") << OrBlank(node.GetName());
        if (!isNew)
            return;
        if (node.GetAnimationID() != -1)
            text_ << '*';
        WriteList(node.SurfaceList, scene_.SurfaceLibrary, '[', ']');
        WriteList(node.CameraList, scene_.CameraLibrary, '{', '}');
        WriteList(node.LightList, scene_.LightLibrary, '<', '>');
        WriteChildren(node);
    }

    void WriteChildren(const Node& node)
    {
        if (node.ChildList.empty())
            return;
        text_ << '(';
        for (const int child : node.ChildList)
        {
            text_ << ' ';
            WriteNode(child);
        }
        text_ << " )";
    }

    template <typename Record>
    void WriteList(const std::vector<std::int32_t>& list, const std::vector<Record>& library, char open, char close)
    {
        if (list.empty())
            return;
        char separator = open;
        for (const std::int32_t index : list)
        {
            const bool isGood = IsValidIndex(index, library.size());
            text_ << separator << (isGood ? OrBlank(ForReading(At(library, index)).GetName()) : "?");
            separator = ' ';
        }
        text_ << close;
    }

    const SceneContainer& scene_;
    std::ostringstream text_;
    std::set<int> written_;
};

template <typename Record>
int IndexOfName(const std::vector<Record>& library, const std::string& name)
{
    for (std::size_t i = 0; i < library.size(); ++i)
        if (ForReading(library[i]).GetName() == name)
            return static_cast<int>(i);
    throw std::invalid_argument("nothing is named " + name);
}

}  // namespace

SceneContainer Scene(const std::string& text) { return SceneReader(text).Read(); }

std::string ToText(const SceneContainer& scene) { return SceneWriter(scene).Write(); }

Geometry BoxMesh(const D3DXVECTOR3& min, const D3DXVECTOR3& max)
{
    static constexpr std::array<std::uint32_t, 36> kCorners = {0, 2, 3, 0, 3, 1, 4, 5, 7, 4, 7, 6, 0, 4, 6, 0, 6, 2,
                                                               1, 3, 7, 1, 7, 5, 0, 1, 5, 0, 5, 4, 2, 6, 7, 2, 7, 3};
    Geometry mesh;
    for (unsigned corner = 0; corner < 8; ++corner)
    {
        const bool right = (corner & 1U) != 0;
        const bool top = (corner & 2U) != 0;
        const bool front = (corner & 4U) != 0;
        Vertex vertex(right ? max.x : min.x, top ? max.y : min.y, front ? max.z : min.z);
        vertex.SetNormal(D3DXVECTOR3(right ? 0.5F : -0.5F, top ? 0.5F : -0.5F, front ? 0.5F : -0.5F));
        mesh.VertexArray.push_back(vertex);
    }
    mesh.IndexArray.assign(kCorners.begin(), kCorners.end());
    return mesh;
}

Geometry UnitBox() { return BoxMesh({1, 1, 1}, {2, 2, 2}); }

int NodeIndex(const SceneContainer& scene, const std::string& name) { return IndexOfName(scene.NodeLibrary, name); }

Node& NodeNamed(SceneContainer& scene, const std::string& name)
{
    return At(scene.NodeLibrary, NodeIndex(scene, name));
}

Surface& SurfaceNamed(SceneContainer& scene, const std::string& name)
{
    return At(scene.SurfaceLibrary, IndexOfName(scene.SurfaceLibrary, name));
}

Geometry& MeshOf(SceneContainer& scene, const std::string& surfaceName)
{
    return At(scene.GeometryLibrary, SurfaceNamed(scene, surfaceName).GetGeometryID());
}

D3DXMATRIX Translation(float x, float y, float z)
{
    D3DXMATRIX matrix;
    return *D3DXMatrixTranslation(&matrix, x, y, z);
}

D3DXMATRIX Scaling(float x, float y, float z)
{
    D3DXMATRIX matrix;
    return *D3DXMatrixScaling(&matrix, x, y, z);
}

D3DXMATRIX Product(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    D3DXMATRIX product;
    return *D3DXMatrixMultiply(&product, &a, &b);
}

}  // namespace Support
