#pragma once

#include <importing/base/Export.h>
#include <importing/records/HashObject.h>
#include <importing/records/Map.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Importing
{

/// Binds one mesh to one material and carries the texture layers applied to it.
///
/// Hashed: the two indices and the maps. Not hashed: the name and the collision offset, so their setters leave the
/// hash alone.
class IMPORTING_API Surface : public HashObject
{
public:
    /// No mesh, no material, no name, offset 0, no maps.
    Surface();
    Surface(const Surface&);
    Surface(Surface&&) noexcept;
    Surface& operator=(const Surface&);
    Surface& operator=(Surface&&) noexcept;
    ~Surface() override;

    /// Also false when the hash of one of the maps is not valid.
    bool GetIsHashCodeValid() override;

protected:
    void CalculeteHash() override;

public:
    /// Index into the scene's geometry library; -1 is none.
    virtual int GetGeometryID() const;
    virtual void SetGeometryID(int geometry);
    /// Index into the scene's material library; -1 is none.
    virtual int GetMaterialID() const;
    virtual void SetMaterialID(int material);
    virtual std::string GetName();
    /// Keeps the hash.
    virtual void SetName(const std::string& name);
    virtual int GetCollisionOffset() const;
    /// Keeps the hash.
    virtual void SetCollisionOffset(int offset);

    /// Position in the map list of the map number n, counted from 0, among those of exactly this type; -1 when there
    /// are not that many.
    virtual int GetMap(const std::string& type, int n) const;

    /// True when the materials agree and the maps are pairwise equal in content. Computes hashes of maps, of the other
    /// surface too, up to the first pair that differs; geometry, name and offset do not matter.
    virtual bool IsSameMaterialAndMaps(Surface& other);

    /// Empties the surface: no mesh, no material, offset 0, no maps.
    ///
    /// Deliberate: the name stays, and so does the cached hash.
    void Release();

private:
    std::int32_t geometryID_ = -1;
    std::int32_t materialID_ = -1;
    std::string name_;
    std::int32_t collisionOffset_ = 0;

public:
    /// The texture layers, in layer order. Edited directly: a change to a map is noticed at the next GetHash().
    std::vector<Map> MapList;
};

}  // namespace Importing
