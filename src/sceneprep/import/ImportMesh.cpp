#include <sceneprep/import/ImportMesh.h>

#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/import/ImportSkins.h>

#include <cstdint>
#include <string>

namespace Sceneprep
{

namespace
{

using Importing::Geometry;
using Importing::Vertex;
using Pipeline::VertexLayout;

/// Colours take two sets each: red and green, blue and alpha.
VertexLayout LayoutOf(const aiMesh& mesh)
{
    VertexLayout layout;
    if (mesh.GetNumColorChannels() == 0)
        return layout;
    layout.texCoordSets = static_cast<int>(mesh.GetNumUVChannels());
    for (unsigned c = 0; c < mesh.GetNumColorChannels(); ++c)
        layout.attributes.push_back({"COLOR_" + std::to_string(c), layout.texCoordSets + 2 * static_cast<int>(c), 4});
    return layout;
}

void FillVertex(const aiMesh& mesh, unsigned v, Vertex& vertex)
{
    if (mesh.HasNormals())
        vertex.SetNormal(ToVector(mesh.mNormals[v]));
    unsigned next = 0;
    for (unsigned set = 0; set < mesh.GetNumUVChannels(); ++set)
    {
        const aiVector3D& uv = mesh.mTextureCoords[set][v];
        vertex.SetTexCoord({uv.x, uv.y}, next++);
    }
    for (unsigned set = 0; set < mesh.GetNumColorChannels(); ++set)
    {
        const aiColor4D& color = mesh.mColors[set][v];
        vertex.SetTexCoord({color.r, color.g}, next++);
        vertex.SetTexCoord({color.b, color.a}, next++);
    }
}

unsigned PolySizeOf(const aiMesh& mesh)
{
    if ((mesh.mPrimitiveTypes & aiPrimitiveType_TRIANGLE) != 0)
        return 3;
    return (mesh.mPrimitiveTypes & aiPrimitiveType_LINE) != 0 ? 2 : 1;
}

void FillFaces(const aiMesh& mesh, Geometry& geometry)
{
    const unsigned corners = PolySizeOf(mesh);
    geometry.SetPolySize(corners);
    geometry.IndexArray.reserve(corners * static_cast<std::size_t>(mesh.mNumFaces));
    for (unsigned f = 0; f < mesh.mNumFaces; ++f)
    {
        const aiFace& face = mesh.mFaces[f];
        if (face.mNumIndices == corners)
            geometry.IndexArray.insert(geometry.IndexArray.end(), face.mIndices, face.mIndices + corners);
    }
}

}  // namespace

ImportedMesh ImportMesh(const aiMesh& mesh, Geometry& geometry)
{
    geometry.SetName(mesh.mName.C_Str());
    geometry.VertexArray.reserve(mesh.mNumVertices);
    for (unsigned v = 0; v < mesh.mNumVertices; ++v)
        FillVertex(mesh, v, geometry.VertexArray.emplace_back(ToVector(mesh.mVertices[v])));
    ImportedMesh result{.layout = LayoutOf(mesh), .droppedWeights = ImportWeights(mesh, geometry)};
    FillFaces(mesh, geometry);
    return result;
}

}  // namespace Sceneprep
