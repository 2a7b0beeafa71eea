#include <support/AssimpScene.h>

#include <importing/geometry/Geometry.h>
#include <support/BenchScenes.h>

#include <assimp/cexport.h>
#include <assimp/cimport.h>
#include <assimp/scene.h>

#include <cstddef>

using Importing::Geometry;

namespace
{

constexpr unsigned int kMaterials = 16;

aiVector3D Convert(const D3DXVECTOR3& vector) { return {vector.x, vector.y, vector.z}; }

aiMesh* Convert(Geometry& mesh)
{
    auto* result = new aiMesh;
    const std::size_t vertices = mesh.VertexArray.size();
    result->mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    result->mNumVertices = static_cast<unsigned int>(vertices);
    result->mVertices = new aiVector3D[vertices];
    result->mNormals = new aiVector3D[vertices];
    result->mTextureCoords[0] = new aiVector3D[vertices];
    result->mNumUVComponents[0] = 2;
    for (std::size_t i = 0; i < vertices; ++i)
    {
        const D3DXVECTOR2 uv = mesh.VertexArray[i].GetTexCoord(0);
        result->mVertices[i] = Convert(mesh.VertexArray[i].GetPosition());
        result->mNormals[i] = Convert(mesh.VertexArray[i].GetNormal());
        result->mTextureCoords[0][i] = aiVector3D(uv.x, uv.y, 0);
    }
    result->mNumFaces = static_cast<unsigned int>(mesh.IndexArray.size() / 3);
    result->mFaces = new aiFace[result->mNumFaces];
    for (unsigned int face = 0; face < result->mNumFaces; ++face)
    {
        result->mFaces[face].mNumIndices = 3;
        result->mFaces[face].mIndices = new unsigned int[3];
        for (unsigned int corner = 0; corner < 3; ++corner)
            result->mFaces[face].mIndices[corner] = mesh.IndexArray[std::size_t{3} * face + corner];
    }
    return result;
}

aiNode* MakeNode(aiNode* parent, unsigned int mesh)
{
    auto* node = new aiNode;
    node->mParent = parent;
    node->mNumMeshes = 1;
    node->mMeshes = new unsigned int[1]{mesh};
    return node;
}

}  // namespace

void FreeAssimpScene::operator()(const aiScene* scene) const { aiFreeScene(scene); }

AssimpScene MakeAssimpScene(std::int64_t nodeCount)
{
    const auto count = static_cast<unsigned int>(nodeCount);
    aiScene original;
    original.mRootNode = new aiNode;
    original.mNumMeshes = count;
    original.mMeshes = new aiMesh*[count];
    original.mRootNode->mNumChildren = count;
    original.mRootNode->mChildren = new aiNode*[count];
    Geometry box = MakeBox();
    for (unsigned int i = 0; i < count; ++i)
    {
        original.mMeshes[i] = Convert(box);
        original.mMeshes[i]->mMaterialIndex = i % kMaterials;
        original.mRootNode->mChildren[i] = MakeNode(original.mRootNode, i);
    }
    original.mNumMaterials = kMaterials;
    original.mMaterials = new aiMaterial*[kMaterials];
    for (unsigned int i = 0; i < kMaterials; ++i)
        original.mMaterials[i] = new aiMaterial;
    // Only what Assimp has made itself can be freed by it.
    return CopyOf(original);
}

AssimpScene CopyOf(const aiScene& scene)
{
    aiScene* copy = nullptr;
    aiCopyScene(&scene, &copy);
    return AssimpScene(copy);
}
