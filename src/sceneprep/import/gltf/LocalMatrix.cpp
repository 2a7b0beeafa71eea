#include <sceneprep/import/gltf/LocalMatrix.h>

#include <importing/math/DecomposeMatrix.h>

namespace Sceneprep::GltfImport
{

namespace
{

Placement StoredPlacement(const Field& node)
{
    Placement placement;
    node.NumbersIfAny("translation", placement.translation);
    node.NumbersIfAny("rotation", placement.rotation);
    node.NumbersIfAny("scale", placement.scale);
    return placement;
}

}  // namespace

D3DXMATRIX MatrixOf(const Placement& placement)
{
    const auto& [x, y, z, w] = placement.rotation;
    const std::array<std::array<double, 3>, 3> rows = {
        {{1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
         {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
         {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)}}};
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    for (unsigned row = 0; row < 3; ++row)
    {
        for (unsigned column = 0; column < 3; ++column)
            matrix(row, column) = static_cast<float>(rows[row][column] * placement.scale[row]);
        matrix(3, row) = static_cast<float>(placement.translation[row]);
    }
    return matrix;
}

D3DXMATRIX LocalMatrix(const Field& node)
{
    // Columns of a matrix for column vectors are stored as rows of one for row vectors are.
    if (const std::optional<Field> stored = node.Find("matrix"))
    {
        std::array<double, 16> numbers{};
        stored->Numbers(numbers.data(), numbers.size());
        D3DXMATRIX matrix;
        for (unsigned i = 0; i < 16; ++i)
            matrix(i / 4, i % 4) = static_cast<float>(numbers[i]);
        return matrix;
    }
    return MatrixOf(StoredPlacement(node));
}

Placement PlacementOf(const Field& node)
{
    if (!node.Has("matrix"))
        return StoredPlacement(node);
    Placement placement;
    D3DXVECTOR3 scale(1, 1, 1);
    D3DXQUATERNION rotation(0, 0, 0, 1);
    D3DXVECTOR3 translation(0, 0, 0);
    Importing::DecomposeMatrix(scale, rotation, translation, LocalMatrix(node));
    placement.scale = {scale.x, scale.y, scale.z};
    placement.rotation = {rotation.x, rotation.y, rotation.z, rotation.w};
    placement.translation = {translation.x, translation.y, translation.z};
    return placement;
}

}  // namespace Sceneprep::GltfImport
