#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>
#include <importing/records/HashObject.h>
#include <importing/records/Joint.h>
#include <importing/records/Vertex.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Importing
{

/// One mesh: vertices, polygons of a fixed size, skeleton joints and an optional point cache.
///
/// Shapes: V vertices; I indices in polygons of GetPolySize() (triangles: F = I / 3, corners in winding order);
/// P point-cache entries, frame by frame, entry f x V + v being vertex v in frame f.
/// Expected and not checked up front: every index is below V, I is a multiple of the poly size, P a multiple of V.
///
/// The content hash covers poly size, vertices and indices; name, bind-shape transform, joints and point cache are not
/// hashed. Operations that change hashed content and leave the cached hash alone all the same say so.
///
/// Operations return 0, or -1 with nothing changed where they need triangles and GetPolySize() is not 3. Operations
/// call one another through the virtual table, so overrides are honoured.
class IMPORTING_API Geometry : public HashObject
{
public:
    /// No name, triangles, identity bind-shape transform, empty arrays.
    Geometry();
    Geometry(const Geometry&);
    Geometry(Geometry&&) noexcept;
    Geometry& operator=(const Geometry&);
    Geometry& operator=(Geometry&&) noexcept;
    ~Geometry() override;

protected:
    void CalculeteHash() override;

public:
    /// @name Record: geometry/Geometry.cpp
    /// @{
    virtual std::string GetName();
    /// Keeps the hash: the name is not content.
    virtual void SetName(const std::string& name);
    /// Number of indices in a polygon.
    virtual std::uint64_t GetPolySize() const;
    /// Invalidates the hash, also when the size stays the same.
    virtual void SetPolySize(std::uint64_t size);
    /// @}

    /// @name Concatenation: geometry/Append.cpp
    /// @{
    /// Adds copies of the other mesh's vertices and its indices, shifted, behind this mesh's own. Joints, point cache,
    /// name and bind-shape transform of both stay as they are. Appending a mesh to itself doubles it.
    ///
    /// Indices of the other mesh are shifted unchecked, in wrapping 32-bit arithmetic.
    ///
    /// With a matrix every appended vertex is carried by it, and its normal by the normal matrix.
    /// Deliberate: there is no shortcut for the identity; -0 becomes +0 on the way.
    ///
    /// @return 0, or -1 with nothing changed when the poly sizes differ.
#if defined(_MSC_VER)  // its tables list overloads of one name last declared first
    virtual int Append(const Geometry& other, const D3DXMATRIX& matrix);
    virtual int Append(const Geometry& other);
#else
    virtual int Append(const Geometry& other);
    virtual int Append(const Geometry& other, const D3DXMATRIX& matrix);
#endif
    /// @}

    /// @name Baking of transforms: geometry/BakeTransform.cpp
    /// @{
    /// Carries every vertex by the matrix and every normal by its normal matrix; normals are not renormalised.
    /// The identity, bit for bit, changes nothing and keeps the hash. The point cache stays as it is.
    virtual int Transform(const D3DXMATRIX& matrix);
    /// Carries UV set `set` of every vertex; vertices without it get it first, as (0, 0). The identity, bit for bit,
    /// changes nothing and keeps the hash.
    /// @throws std::length_error "vector<T> too long", with nothing changed, for a negative set.
    virtual int TransformUVs(const D3DXMATRIX& matrix, int set);
    /// @}

    /// @name Welding: geometry/Optimize.cpp
    /// @{
    /// Welds vertices of equal content and drops the vertices that no index uses; poly size does not matter.
    ///
    /// Vertices are equal when their content hashes are and the x of their positions agree but for the lowest 8 bits.
    /// The survivors stand in the order in which indices use them first; of equal vertices the one met first stays.
    /// The point cache keeps the old numbering and no longer fits afterwards.
    ///
    /// Deliberate: a mesh in which no two vertices share a hash is left entirely alone, unused vertices included, its
    /// own cached hash too. Deliberate: y and z are trusted to the hash.
    ///
    /// @throws std::out_of_range, with nothing changed but the hashes that were computed, when an index is not below
    ///         V; or when different vertices with one hash, used alternately, would become more than V.
    virtual int Optimize();
    /// @}

    /// @name Emptying: geometry/Geometry.cpp
    /// @{
    /// Empties name, vertices, indices and joints. Deliberate: poly size, bind-shape transform and point cache stay.
    virtual int Release();
    /// @}

    /// @name Bounds: geometry/BoundingBox.cpp
    /// @{
    /// Writes the smallest and the largest coordinates of the positions; a NaN counts as absent.
    ///
    /// Deliberate: the maximum starts at the smallest positive normal float, 1.1754944e-38, so an axis on which no
    /// vertex lies above 0 reports that as its maximum. The minimum starts at the largest float.
    virtual int GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const;
    /// @}

    /// @name Orientation, whole mesh: geometry/Orientation.cpp
    /// @{
    /// Negates every normal. Deliberate: the mesh's cached hash stays.
    virtual int FlipNormals();
    /// Exchanges the second and third index of every triangle. Deliberate: the mesh's cached hash stays.
    /// @throws std::out_of_range with nothing changed, when a second index is left over without a third.
    virtual int FlipFaces();
    /// @}

    /// @name Normals: geometry/ComputeNormals.cpp
    /// @{
    /// Gives the vertices smooth normals and splits a vertex wherever the faces around it bend too sharply.
    ///
    /// Faces are taken in index order. The first face at a vertex sets its normal; every later face is blended in
    /// while it lies within about 36.87 degrees of the running normal (dot product above 0.8), and otherwise gets a
    /// copy of the vertex.
    ///
    /// Reads:  positions [V]; indices [3F] in triples, one or two trailing indices are ignored.
    /// Writes: normals of the vertices that faces use; split vertices behind the first V, in the order in which they
    ///         arise; the index entries of the split corners.
    /// Keeps:  normals of unused vertices, the order of faces, joints, the point cache, the mesh's cached hash.
    ///
    /// Deliberate: the running normal is renormalised after every face, so each face weighs as much as all before it
    /// together, and the result depends on the order of the faces.
    ///
    /// @throws std::out_of_range before anything has changed, when an index is not below V.
    virtual int ComputeNormals();
    /// @}

    /// @name Orientation, face by face: geometry/Orientation.cpp
    /// @{
    /// Trusts the winding: negates each corner normal that points against its triangle, corner by corner in face
    /// order; at a shared vertex the last disagreeing triangle decides. The mesh's cached hash stays.
    /// Deliberate: with suppress true nothing is written.
    /// @throws std::out_of_range before anything has changed, when an index is not below V.
    virtual int UnifyNormals(bool suppress);
    /// Trusts the normals: turns each triangle whose three corner normals all point against it. The mesh's cached hash
    /// stays. Deliberate: with suppress true nothing is written.
    /// @throws std::out_of_range before anything has changed, when an index is not below V.
    virtual int FixFaceCulling(bool suppress);
    /// @}

    /// @name Texture coordinates: geometry/GenerateUVs.cpp
    ///
    /// Each writes UV set `set` of every vertex; sets that are missing below it are added as (0, 0). The box is
    /// GetBoundingBox(); with worldUnits true its sizes do not divide. The mesh's cached hash stays. A flat mesh
    /// yields infinities or NaN.
    /// @throws std::length_error "vector<T> too long", with nothing changed, for a negative set.
    /// @{
    /// (z, y) over the box, its centre at 0.5.
    virtual int GenerateUVsPlanarX(int set, bool worldUnits);
    /// (x, z) over the box, its centre at 0.5.
    virtual int GenerateUVsPlanarY(int set, bool worldUnits);
    /// (x, y) over the box, its centre at 0.5.
    virtual int GenerateUVsPlanarZ(int set, bool worldUnits);
    /// The planar projection along the largest component of the vertex normal (ties: x, then z, then y), measured from
    /// the minimum of the box. A vertex whose normal holds a NaN repeats the pair of the vertex before it, the first
    /// one (0, 0). A zero normal gives u = NaN.
    virtual int GenerateUVsCubic(int set, bool worldUnits);
    /// u from the direction of the vertex normal about y, v from the height, running downwards.
    virtual int GenerateUVsCylindrical(int set, bool worldUnits);
    /// u as in the cylindrical mapping. Deliberate: v is 0.5 everywhere, and worldUnits does not matter.
    virtual int GenerateUVsSpherical(int set, bool worldUnits);
    /// @}

    /// @name Bind shape: geometry/Geometry.cpp
    /// @{
    virtual D3DXMATRIX GetBindShapeTransform();
    /// Invalidates the hash, although the matrix is not content.
    virtual void SetBindShapeTransform(const D3DXMATRIX& matrix);
    /// @}

    /// @name Point cache: geometry/PointCacheNormals.cpp
    /// @{
    /// Writes smooth normals for every whole frame of the point cache; nothing is split. Positions of the vertices are
    /// not read. A mesh without vertices has no frames.
    ///
    /// With v an index of a whole triangle, frame f reads PointCachePositions[f x V + v] and writes
    /// PointCacheNormals[f x V + v]; no other entry matters. So PointCacheNormals may be shorter than the frames where
    /// no triangle uses the entries that are missing, and an index of V or more is good where all its entries exist.
    /// @throws std::out_of_range before anything has changed, when an entry that is used does not exist.
    virtual int ComputePointCacheNormals();
    /// @}

    // Data in the order in which it lies in the record. The arrays are edited directly.
private:
    std::string name_;
    std::uint64_t polySize_ = 3;

public:
    std::vector<Vertex> VertexArray;        ///< [V]
    std::vector<std::uint32_t> IndexArray;  ///< [I]

private:
    D3DXMATRIX bindShapeTransform_;

public:
    std::vector<Joint> JointArray;                 ///< skeleton of the mesh's skin
    std::vector<D3DXVECTOR3> PointCachePositions;  ///< [P]
    std::vector<D3DXVECTOR3> PointCacheNormals;    ///< [P], written by ComputePointCacheNormals()
};

}  // namespace Importing
