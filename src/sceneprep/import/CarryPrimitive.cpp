#include <sceneprep/import/CarryPrimitive.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

namespace Sceneprep
{

namespace
{

constexpr int kUnsignedInt = 5125;
constexpr int kFloat = 5126;

using Attributes = std::map<std::string, CarriedAccessor>;

std::vector<float> ValuesOf(const aiVector3D* vectors, const aiVector3D* origins, std::size_t count)
{
    std::vector<float> values;
    values.reserve(3 * count);
    for (std::size_t v = 0; v < count; ++v)
    {
        const aiVector3D value = origins != nullptr ? vectors[v] - origins[v] : vectors[v];
        values.insert(values.end(), {value.x, value.y, value.z});
    }
    return values;
}

/// Positions of a primitive and of a target need their bounds.
CarriedAccessor Positions(const std::vector<float>& values)
{
    CarriedAccessor accessor = FloatAccessor(values, 3, "VEC3");
    accessor.min = Json::array();
    accessor.max = Json::array();
    for (std::size_t c = 0; c < 3 && !values.empty(); ++c)
    {
        float smallest = std::numeric_limits<float>::infinity();
        float largest = -smallest;
        for (std::size_t i = c; i < values.size(); i += 3)
        {
            smallest = std::min(smallest, values[i]);
            largest = std::max(largest, values[i]);
        }
        accessor.min.push_back(smallest);
        accessor.max.push_back(largest);
    }
    return accessor;
}

void AddTexCoords(const aiMesh& mesh, Attributes& attributes)
{
    for (unsigned set = 0; set < mesh.GetNumUVChannels(); ++set)
    {
        std::vector<float> values;
        values.reserve(2 * static_cast<std::size_t>(mesh.mNumVertices));
        for (unsigned v = 0; v < mesh.mNumVertices; ++v)
        {
            const aiVector3D& uv = mesh.mTextureCoords[set][v];
            values.insert(values.end(), {uv.x, 1 - uv.y});  // the origin is at the top in glTF
        }
        attributes["TEXCOORD_" + std::to_string(set)] = FloatAccessor(values, 2, "VEC2");
    }
}

void AddColors(const aiMesh& mesh, Attributes& attributes)
{
    for (unsigned set = 0; set < mesh.GetNumColorChannels(); ++set)
    {
        std::vector<float> values;
        values.reserve(4 * static_cast<std::size_t>(mesh.mNumVertices));
        for (unsigned v = 0; v < mesh.mNumVertices; ++v)
        {
            const aiColor4D& color = mesh.mColors[set][v];
            values.insert(values.end(), {color.r, color.g, color.b, color.a});
        }
        attributes["COLOR_" + std::to_string(set)] = FloatAccessor(values, 4, "VEC4");
    }
}

/// The primitive modes of glTF by the number of corners per face.
constexpr int kPoints = 0;
constexpr int kLines = 1;
constexpr int kTriangles = 4;

int ModeOf(const aiMesh& mesh)
{
    if ((mesh.mPrimitiveTypes & aiPrimitiveType_TRIANGLE) != 0)
        return kTriangles;
    return (mesh.mPrimitiveTypes & aiPrimitiveType_LINE) != 0 ? kLines : kPoints;
}

unsigned CornersOf(int mode) { return mode == kTriangles ? 3 : mode == kLines ? 2 : 1; }

/// Faces of another kind are skipped.
CarriedAccessor FacesOf(const aiMesh& mesh, unsigned corners)
{
    std::vector<std::uint32_t> indices;
    for (unsigned f = 0; f < mesh.mNumFaces; ++f)
    {
        const aiFace& face = mesh.mFaces[f];
        if (face.mNumIndices == corners)
            indices.insert(indices.end(), face.mIndices, face.mIndices + corners);
    }
    CarriedAccessor accessor;
    accessor.componentType = kUnsignedInt;
    accessor.type = "SCALAR";
    accessor.count = indices.size();
    accessor.bytes.resize(indices.size() * sizeof(std::uint32_t));
    std::memcpy(accessor.bytes.data(), indices.data(), accessor.bytes.size());
    return accessor;
}

bool Fits(const aiMesh& mesh, const aiAnimMesh& target)
{
    return target.mNumVertices == mesh.mNumVertices && target.mVertices != nullptr;
}

Attributes TargetOf(const aiMesh& mesh, const aiAnimMesh& source)
{
    Attributes target;
    target["POSITION"] = Positions(ValuesOf(source.mVertices, mesh.mVertices, mesh.mNumVertices));
    if (mesh.HasNormals() && source.mNormals != nullptr)
        target["NORMAL"] = FloatAccessor(ValuesOf(source.mNormals, mesh.mNormals, mesh.mNumVertices), 3, "VEC3");
    return target;
}

}  // namespace

CarriedPrimitive CarryPrimitive(const aiMesh& mesh, Json& object)
{
    CarriedPrimitive primitive;
    primitive.mode = ModeOf(mesh);
    if (mesh.mNumFaces > 0)  // point clouds may have none
        primitive.indices = FacesOf(mesh, CornersOf(primitive.mode));
    primitive.attributes["POSITION"] = Positions(ValuesOf(mesh.mVertices, nullptr, mesh.mNumVertices));
    if (mesh.HasNormals())
        primitive.attributes["NORMAL"] = FloatAccessor(ValuesOf(mesh.mNormals, nullptr, mesh.mNumVertices), 3, "VEC3");
    AddTexCoords(mesh, primitive.attributes);
    AddColors(mesh, primitive.attributes);

    for (unsigned t = 0; t < mesh.mNumAnimMeshes; ++t)
    {
        const aiAnimMesh& source = *mesh.mAnimMeshes[t];
        if (!Fits(mesh, source))
            continue;
        primitive.targets.push_back(TargetOf(mesh, source));
        object["weights"].push_back(source.mWeight);
        object["extras"]["targetNames"].push_back(source.mName.C_Str());
    }
    return primitive;
}

bool IsCarriedWhole(const aiMesh& mesh)
{
    return ModeOf(mesh) != kTriangles || std::any_of(mesh.mAnimMeshes, mesh.mAnimMeshes + mesh.mNumAnimMeshes,
                                                     [&mesh](const aiAnimMesh* target) { return Fits(mesh, *target); });
}

CarriedAccessor FloatAccessor(const std::vector<float>& values, std::size_t width, const char* type)
{
    CarriedAccessor accessor;
    accessor.componentType = kFloat;
    accessor.type = type;
    accessor.count = values.size() / width;
    accessor.bytes.resize(values.size() * sizeof(float));
    std::memcpy(accessor.bytes.data(), values.data(), accessor.bytes.size());
    return accessor;
}

}  // namespace Sceneprep
