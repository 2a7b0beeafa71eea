#include <support/AssimpMesh.h>

#include <importing/base/ForReading.h>

#include <assimp/BaseImporter.h>
#include <assimp/importerdesc.h>
#include <assimp/scene.h>
#include <assimp/IOSystem.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <stdexcept>
#include <string>

using Importing::ForReading;
using Importing::Geometry;
using Importing::Vertex;

namespace
{

constexpr const char* kFileName = "mesh.benchmark";

aiVector3D ToAssimp(const D3DXVECTOR3& v) { return {v.x, v.y, v.z}; }

void CopyVertices(aiMesh& target, const Geometry& mesh, Normals normals)
{
    const std::size_t count = mesh.VertexArray.size();
    target.mNumVertices = static_cast<unsigned>(count);
    target.mVertices = new aiVector3D[count];
    target.mTextureCoords[0] = new aiVector3D[count];
    target.mNumUVComponents[0] = 2;
    if (normals == Normals::Kept)
        target.mNormals = new aiVector3D[count];
    for (std::size_t i = 0; i < count; ++i)
    {
        Vertex& vertex = ForReading(mesh.VertexArray[i]);
        const D3DXVECTOR2 uv = vertex.GetTexCoord(0);
        target.mVertices[i] = ToAssimp(vertex.GetPosition());
        target.mTextureCoords[0][i] = aiVector3D(uv.x, uv.y, 0);
        if (normals == Normals::Kept)
            target.mNormals[i] = ToAssimp(vertex.GetNormal());
    }
}

void CopyTriangles(aiMesh& target, const Geometry& mesh)
{
    target.mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    target.mNumFaces = static_cast<unsigned>(mesh.IndexArray.size() / 3);
    target.mFaces = new aiFace[target.mNumFaces];
    for (std::size_t face = 0; face < target.mNumFaces; ++face)
    {
        target.mFaces[face].mNumIndices = 3;
        target.mFaces[face].mIndices = new unsigned[3];
        std::copy_n(mesh.IndexArray.begin() + static_cast<std::ptrdiff_t>(3 * face), 3, target.mFaces[face].mIndices);
    }
}

/// "Reads" a mesh that is in memory already.
class MeshLoader : public Assimp::BaseImporter
{
public:
    MeshLoader(const Geometry& mesh, Normals normals) : mesh_(mesh), normals_(normals) {}

    bool CanRead(const std::string& file, Assimp::IOSystem* /*files*/, bool /*checkSignature*/) const override
    {
        return file == kFileName;
    }

protected:
    const aiImporterDesc* GetInfo() const override
    {
        static const aiImporterDesc description = [] {
            aiImporterDesc made{};
            made.mName = "Benchmark mesh";
            made.mFileExtensions = "benchmark";
            return made;
        }();
        return &description;
    }

    void InternReadFile(const std::string& /*file*/, aiScene* scene, Assimp::IOSystem* /*files*/) override
    {
        auto* mesh = new aiMesh;
        scene->mMeshes = new aiMesh* [1] { mesh };
        scene->mNumMeshes = 1;
        CopyVertices(*mesh, mesh_, normals_);
        CopyTriangles(*mesh, mesh_);

        scene->mMaterials = new aiMaterial* [1] { new aiMaterial };
        scene->mNumMaterials = 1;
        scene->mRootNode = new aiNode("root");
        scene->mRootNode->mMeshes = new unsigned[1]{0};
        scene->mRootNode->mNumMeshes = 1;
    }

private:
    const Geometry& mesh_;
    Normals normals_;
};

/// Says that the one file is there and opens none.
class OneFile : public Assimp::IOSystem
{
public:
    bool Exists(const char* file) const override { return std::string(file) == kFileName; }
    char getOsSeparator() const override { return '/'; }
    Assimp::IOStream* Open(const char* /*file*/, const char* /*mode*/) override { return nullptr; }
    void Close(Assimp::IOStream* /*stream*/) override {}
};

}  // namespace

void LoadIntoAssimp(Assimp::Importer& importer, const Geometry& mesh, Normals normals)
{
    importer.SetIOHandler(new OneFile);
    importer.RegisterLoader(new MeshLoader(mesh, normals));
    if (importer.ReadFile(kFileName, 0) == nullptr)
        throw std::runtime_error(importer.GetErrorString());
}
