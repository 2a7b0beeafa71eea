#include <sceneprep/import/ImportTextureTransform.h>

#include <cmath>

namespace Sceneprep
{

namespace
{

bool IsIdentity(const aiUVTransform& transform)
{
    return transform.mTranslation == aiVector2D(0, 0) && transform.mScaling == aiVector2D(1, 1) &&
           transform.mRotation == 0;
}

}  // namespace

std::optional<aiUVTransform> FindTextureTransform(const aiMaterial& source, aiTextureType type, unsigned layer)
{
    aiUVTransform transform;
    if (source.Get(AI_MATKEY_UVTRANSFORM(type, layer), transform) != aiReturn_SUCCESS || IsIdentity(transform))
        return std::nullopt;
    return transform;
}

D3DXMATRIX GltfTextureMatrix(const aiUVTransform& transform)
{
    const float scaleU = transform.mScaling.x;
    const float scaleV = transform.mScaling.y;
    const float c = std::cos(-transform.mRotation);
    const float s = std::sin(-transform.mRotation);
    // Assimp replaces the file's offset by that of a rotation about the centre of the image. This restores the offset
    // in Assimp's order of evaluation, so that an offset of 0 is exactly 0 again.
    const float offsetU = transform.mTranslation.x - 0.5F * scaleU * (-c + s + 1);
    const float offsetV = 0.5F * scaleV * (s + c - 1) + 1 - scaleV - transform.mTranslation.y;

    // With v pointing down: u' = sU c u + sV s v + oU, v' = -sU s u + sV c v + oV. Substituting 1 - v for v and v'
    // gives:
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    matrix._11 = scaleU * c;
    matrix._12 = scaleU * s;
    matrix._21 = -scaleV * s;
    matrix._22 = scaleV * c;
    matrix._41 = scaleV * s + offsetU;
    matrix._42 = 1 - scaleV * c - offsetV;
    return matrix;
}

}  // namespace Sceneprep
