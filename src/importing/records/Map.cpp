#include <importing/records/Map.h>

#include <importing/records/ContentHash.h>

namespace Importing
{

Map::Map() { D3DXMatrixIdentity(&matrix_); }

Map::~Map() = default;

int Map::GetTextureID() const { return textureID_; }

void Map::SetTextureID(int texture)
{
    textureID_ = texture;
    SetHashInvalid();
}

std::string Map::GetType() { return type_; }

void Map::SetType(const std::string& type)
{
    type_ = type;
    SetHashInvalid();
}

std::uint32_t Map::GetUVSetIndex() const { return uvSetIndex_; }

void Map::SetUVSetIndex(std::uint32_t set)
{
    uvSetIndex_ = set;
    SetHashInvalid();
}

D3DXMATRIX Map::GetMatrix() { return matrix_; }

void Map::SetMatrix(const D3DXMATRIX& matrix)
{
    matrix_ = matrix;
    SetHashInvalid();
}

float Map::GetAmount() const { return amount_; }

void Map::SetAmount(float amount)
{
    amount_ = amount;
    SetHashInvalid();
}

void Map::CalculeteHash()
{
    ContentHash hash;
    hash.Add(matrix_).Add(uvSetIndex_).Add(type_).Add(amount_).Add(textureID_);
    StoreHash(hash.Value());
}

}  // namespace Importing
