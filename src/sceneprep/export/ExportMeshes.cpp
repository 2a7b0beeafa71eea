#include <sceneprep/export/ExportMeshes.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/HasNormals.h>
#include <pipeline/scene/Hierarchy.h>
#include <sceneprep/assimp/Conversions.h>

#include <algorithm>
#include <utility>

namespace Sceneprep
{

using Pipeline::IsMirroring;
using Pipeline::Product;

namespace
{

using Importing::Geometry;
using Importing::Vertex;

unsigned CountUVSets(const Geometry& geometry)
{
    std::uint64_t sets = 0;
    for (const Vertex& vertex : geometry.VertexArray)
        sets = std::max(sets, vertex.GetTexCoordCount());
    return static_cast<unsigned>(std::min<std::uint64_t>(sets, AI_MAX_NUMBER_OF_TEXTURECOORDS));
}

void ConvertVertices(Geometry& geometry, aiMesh& mesh)
{
    const std::size_t count = geometry.VertexArray.size();
    mesh.mNumVertices = static_cast<unsigned>(count);
    mesh.mVertices = new aiVector3D[count];
    if (Pipeline::HasNormals(geometry))
        mesh.mNormals = new aiVector3D[count];
    for (std::size_t v = 0; v < count; ++v)
    {
        mesh.mVertices[v] = FromVector(geometry.VertexArray[v].GetPosition());
        if (mesh.HasNormals())
            mesh.mNormals[v] = FromVector(geometry.VertexArray[v].GetNormal());
    }
}

/// Merged meshes may contain vertices with fewer sets than others. Missing coordinates are (0, 0).
void ConvertUVSets(Geometry& geometry, aiMesh& mesh)
{
    const unsigned sets = CountUVSets(geometry);
    for (unsigned set = 0; set < sets; ++set)
    {
        mesh.mNumUVComponents[set] = 2;
        mesh.mTextureCoords[set] = new aiVector3D[mesh.mNumVertices];
        for (unsigned v = 0; v < mesh.mNumVertices; ++v)
        {
            Vertex& vertex = geometry.VertexArray[v];
            if (set >= vertex.GetTexCoordCount())
                continue;
            const D3DXVECTOR2 uv = vertex.GetTexCoord(static_cast<int>(set));
            mesh.mTextureCoords[set][v] = {uv.x, uv.y, 0};
        }
    }
}

void ConvertTriangles(const Geometry& geometry, aiMesh& mesh)
{
    Importing::CheckIndices(geometry.IndexArray, geometry.VertexArray.size());
    mesh.mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    mesh.mNumFaces = static_cast<unsigned>(geometry.IndexArray.size() / 3);
    mesh.mFaces = new aiFace[mesh.mNumFaces];
    auto index = geometry.IndexArray.begin();
    for (unsigned f = 0; f < mesh.mNumFaces; ++f, index += 3)
    {
        mesh.mFaces[f].mNumIndices = 3;
        mesh.mFaces[f].mIndices = new unsigned[3]{index[0], index[1], index[2]};
    }
}

/// The matrix of cofactors: the inverse transpose times the determinant.
D3DXVECTOR3 TimesCofactors(const D3DXVECTOR3& n, const D3DXMATRIX& m)
{
    const D3DXVECTOR3 r1(m._22 * m._33 - m._23 * m._32, m._23 * m._31 - m._21 * m._33, m._21 * m._32 - m._22 * m._31);
    const D3DXVECTOR3 r2(m._32 * m._13 - m._33 * m._12, m._33 * m._11 - m._31 * m._13, m._31 * m._12 - m._32 * m._11);
    const D3DXVECTOR3 r3(m._12 * m._23 - m._13 * m._22, m._13 * m._21 - m._11 * m._23, m._11 * m._22 - m._12 * m._21);
    return r1 * n.x + r2 * n.y + r3 * n.z;
}

}  // namespace

std::unique_ptr<aiMesh> ConvertMesh(Geometry& geometry)
{
    auto mesh = std::make_unique<aiMesh>();
    mesh->mName = geometry.GetName();
    ConvertVertices(geometry, *mesh);
    ConvertUVSets(geometry, *mesh);
    ConvertTriangles(geometry, *mesh);
    return mesh;
}

void AddBones(Geometry& geometry, const std::vector<std::string>& bones, aiMesh& mesh)
{
    std::vector<std::vector<aiVertexWeight>> weights(bones.size());
    for (std::size_t v = 0; v < geometry.VertexArray.size(); ++v)
    {
        Vertex& vertex = geometry.VertexArray[v];
        for (std::uint64_t w = 0; w < vertex.GetWeightsCount(); ++w)
        {
            const Vertex::Weight weight = vertex.GetWeight(w);
            if (weight.first < weights.size())
                weights[weight.first].emplace_back(static_cast<unsigned>(v), weight.second);
        }
    }
    mesh.mBones = new aiBone*[bones.size()];
    for (std::size_t b = 0; b < bones.size(); ++b)
    {
        auto bone = std::make_unique<aiBone>();
        const D3DXMATRIX bind = Product(geometry.GetBindShapeTransform(), geometry.JointArray[b].GetBindPoseInverse());
        bone->mName = bones[b];
        bone->mOffsetMatrix = FromMatrix(bind);
        if (weights[b].empty())
            weights[b].emplace_back(0, 0.0F);  // exporters need at least one
        bone->mNumWeights = static_cast<unsigned>(weights[b].size());
        bone->mWeights = new aiVertexWeight[bone->mNumWeights];
        std::copy(weights[b].begin(), weights[b].end(), bone->mWeights);
        mesh.mBones[mesh.mNumBones++] = bone.release();
    }
}

bool SharesVertices(const aiMesh& mesh)
{
    std::vector<bool> used(mesh.mNumVertices, false);
    for (unsigned f = 0; f < mesh.mNumFaces; ++f)
    {
        const aiFace& face = mesh.mFaces[f];
        for (unsigned i = 0; i < face.mNumIndices; ++i)
        {
            if (used[face.mIndices[i]])
                return true;
            used[face.mIndices[i]] = true;
        }
    }
    return false;
}

void BakeMatrix(const D3DXMATRIX& matrix, aiMesh& mesh)
{
    const bool mirrors = IsMirroring(matrix);
    for (unsigned v = 0; v < mesh.mNumVertices; ++v)
    {
        D3DXVECTOR3 position = ToVector(mesh.mVertices[v]);
        mesh.mVertices[v] = FromVector(*D3DXVec3TransformCoord(&position, &position, &matrix));
        if (!mesh.HasNormals())
            continue;
        D3DXVECTOR3 normal = TimesCofactors(ToVector(mesh.mNormals[v]), matrix);
        if (mirrors)
            normal = -normal;
        mesh.mNormals[v] = FromVector(*D3DXVec3Normalize(&normal, &normal));
    }
    for (unsigned f = 0; mirrors && f < mesh.mNumFaces; ++f)
        std::swap(mesh.mFaces[f].mIndices[1], mesh.mFaces[f].mIndices[2]);
}

}  // namespace Sceneprep
