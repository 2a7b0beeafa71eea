#include <importing/records/Surface.h>

#include <importing/base/ForReading.h>
#include <importing/records/ContentHash.h>

#include <algorithm>

namespace Importing
{

Surface::Surface() = default;
Surface::Surface(const Surface&) = default;
Surface::Surface(Surface&&) noexcept = default;
Surface& Surface::operator=(const Surface&) = default;
Surface& Surface::operator=(Surface&&) noexcept = default;
Surface::~Surface() = default;

bool Surface::GetIsHashCodeValid()
{
    return HashObject::GetIsHashCodeValid() &&
           std::all_of(MapList.begin(), MapList.end(), [](Map& map) { return map.GetIsHashCodeValid(); });
}

void Surface::CalculeteHash()
{
    ContentHash hash;
    hash.Add(geometryID_).Add(materialID_);
    for (Map& map : MapList)
        hash.Add(map.GetHash());
    StoreHash(hash.Value());
}

int Surface::GetGeometryID() const { return geometryID_; }

void Surface::SetGeometryID(int geometry)
{
    geometryID_ = geometry;
    SetHashInvalid();
}

int Surface::GetMaterialID() const { return materialID_; }

void Surface::SetMaterialID(int material)
{
    materialID_ = material;
    SetHashInvalid();
}

std::string Surface::GetName() { return name_; }

void Surface::SetName(const std::string& name) { name_ = name; }

int Surface::GetCollisionOffset() const { return collisionOffset_; }

void Surface::SetCollisionOffset(int offset) { collisionOffset_ = offset; }

int Surface::GetMap(const std::string& type, int n) const
{
    int matches = 0;
    for (std::size_t i = 0; i < MapList.size(); ++i)
        if (ForReading(MapList[i]).GetType() == type && matches++ == n)
            return static_cast<int>(i);
    return -1;
}

bool Surface::IsSameMaterialAndMaps(Surface& other)
{
    if (other.GetMaterialID() != materialID_ || other.MapList.size() != MapList.size())
        return false;
    for (std::size_t i = 0; i < MapList.size(); ++i)
        if (MapList[i] != other.MapList[i])
            return false;
    return true;
}

void Surface::Release()
{
    geometryID_ = -1;
    materialID_ = -1;
    collisionOffset_ = 0;
    MapList.clear();
}

}  // namespace Importing
