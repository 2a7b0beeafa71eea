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
/// P point-cache entries, frame by frame, where entry f x V + v is vertex v in frame f.
/// Expected, but not checked in advance: every index is below V, I is a multiple of the poly size, P a multiple of V.
///
/// The content hash covers the poly size, the vertices and the indices. The name, the bind-shape transform, the joints
/// and the point cache are not hashed. An operation that changes hashed content but keeps the cached hash says so.
///
/// Operations return 0, or -1 with nothing changed where they need triangles and GetPolySize() is not 3. Operations
/// call one another through the virtual table, so overrides are used.
///
/// Cost: an operation on the mesh is linear in V + I unless it says otherwise; accessors are constant.
///
/// Exceptions: an operation that throws one of the exceptions it lists has not changed the mesh, apart from hashes that
/// it computed. If memory runs out (std::bad_alloc), Optimize and setters have not changed it either; copy assignment,
/// Append, TransformUVs, ComputeNormals, GenerateUVs... and ComputePointCacheNormals may have done a part of their
/// work, and the cached hash may be outdated. The other operations that change a mesh do not allocate.
class IMPORTING_API Geometry : public HashObject
{
public:
    /// Creates an empty mesh of triangles without a name, with the identity as bind-shape transform.
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
    /// Sets the name and keeps the hash, because the name is not content.
    virtual void SetName(const std::string& name);
    /// Returns the number of indices in a polygon.
    virtual std::uint64_t GetPolySize() const;
    /// Sets the number of indices in a polygon. Invalidates the hash even when the size does not change.
    virtual void SetPolySize(std::uint64_t size);
    /// @}

    /// @name Concatenation: geometry/Append.cpp
    /// @{
    /// Appends copies of the other mesh's vertices, and its indices, shifted to address the copies. The joints, the
    /// point cache, the name and the bind-shape transform do not change. Appending a mesh to itself doubles it.
    ///
    /// The indices of the other mesh are not checked. They are shifted in wrapping 32-bit arithmetic.
    ///
    /// With a matrix, every appended position is transformed by the matrix and every appended normal by its normal
    /// matrix. Deliberate: there is no shortcut for the identity, so -0 becomes +0.
    ///
    /// Cost: linear in the other mesh; repeated calls are amortised linear in what is appended.
    /// @return 0, or -1 with nothing changed when the poly sizes differ.
#if defined(_MSC_VER)  // Microsoft's virtual tables list overloads of one name in reverse order of declaration.
    virtual int Append(const Geometry& other, const D3DXMATRIX& matrix);
    virtual int Append(const Geometry& other);
#else
    virtual int Append(const Geometry& other);
    virtual int Append(const Geometry& other, const D3DXMATRIX& matrix);
#endif
    /// @}

    /// @name Baking of transforms: geometry/BakeTransform.cpp
    /// @{
    /// Transforms every position by the matrix and every normal by its normal matrix. Normals are not renormalised, and
    /// the point cache does not change. A matrix with exactly the bits of the identity changes nothing and keeps the
    /// hash.
    virtual int Transform(const D3DXMATRIX& matrix);
    /// Transforms UV set `set` of every vertex. A vertex without that set gets it first, as (0, 0). A matrix with
    /// exactly the bits of the identity changes nothing and keeps the hash.
    /// @throws std::length_error "vector<T> too long" for a negative set, when the mesh has vertices.
    virtual int TransformUVs(const D3DXMATRIX& matrix, int set);
    /// @}

    /// @name Welding: geometry/Optimize.cpp
    /// @{
    /// Welds vertices of equal content and drops the vertices that no index uses. The poly size does not matter.
    ///
    /// Two vertices are equal when their content hashes are equal and the x of their positions is equal apart from the
    /// lowest 8 bits. Of a group of equal vertices, the one that the index array uses first is kept. The remaining
    /// vertices are in the order of their first use. The point cache keeps the old numbering and does not match
    /// afterwards.
    ///
    /// Deliberate: a mesh in which no two vertices have equal hashes does not change at all: unused vertices and the
    /// cached hash of the mesh are kept. Deliberate: y and z are compared only through the hash.
    ///
    /// Cost: linear in V + I on average.
    /// @throws std::out_of_range when an index is not below V and two vertices have equal hashes; or when different
    ///         vertices with equal hashes, used alternately, would become more than V.
    virtual int Optimize();
    /// @}

    /// @name Emptying: geometry/Geometry.cpp
    /// @{
    /// Empties the name, the vertices, the indices and the joints, and frees the memory of these arrays. Deliberate:
    /// the poly size, the bind-shape transform and the point cache do not change.
    virtual int Release();
    /// @}

    /// @name Bounds: geometry/BoundingBox.cpp
    /// @{
    /// Writes the smallest and the largest coordinates of the positions. A coordinate that is NaN is ignored.
    ///
    /// Deliberate: the maximum starts at the smallest positive normal float, 1.1754944e-38. So this is the maximum on
    /// an axis on which no vertex is above 0. The minimum starts at the largest float.
    virtual int GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const;
    /// @}

    /// @name Orientation, whole mesh: geometry/Orientation.cpp
    /// @{
    /// Negates every normal. Deliberate: the cached hash of the mesh is kept.
    virtual int FlipNormals();
    /// Flips the winding of every triangle by swapping its second and third index. Deliberate: the cached hash of the
    /// mesh is kept.
    /// @throws std::out_of_range when the index count is two more than a multiple of 3.
    virtual int FlipFaces();
    /// @}

    /// @name Normals: geometry/ComputeNormals.cpp
    /// @{
    /// Computes smooth normals and splits a vertex where the faces around it form a hard edge.
    ///
    /// Faces are processed in index order. The first face at a vertex sets its normal. A later face is blended in when
    /// it is within about 36.87 degrees of the current normal (dot product above 0.8); otherwise its corner gets a copy
    /// of the vertex.
    ///
    /// Reads:  positions [V]; indices [3F] in triples, where one or two trailing indices are ignored.
    /// Writes: normals of the vertices that faces use; split vertices, appended after the first V in the order in which
    ///         they are created; the index entries of the split corners.
    /// Keeps:  normals of unused vertices, the order of faces, joints, the point cache, the cached hash of the mesh.
    ///
    /// Deliberate: the normal is renormalised after every face. So each face has as much weight as all faces before it
    /// together, and the result depends on the order of the faces.
    ///
    /// @throws std::out_of_range when an index of a whole triangle is not below V.
    virtual int ComputeNormals();
    /// @}

    /// @name Orientation, face by face: geometry/Orientation.cpp
    /// @{
    /// Flips normals to match the winding: negates each corner normal that points against the geometric normal of its
    /// triangle, corner by corner in face order. At a shared vertex the last triangle that disagrees decides. The
    /// cached hash of the mesh is kept. Deliberate: with suppress true nothing is written.
    /// @throws std::out_of_range when an index of a whole triangle is not below V.
    virtual int UnifyNormals(bool suppress);
    /// Flips the winding of each triangle whose three corner normals all point against its geometric normal. The cached
    /// hash of the mesh is kept. Deliberate: with suppress true nothing is written.
    /// @throws std::out_of_range when an index of a whole triangle is not below V.
    virtual int FixFaceCulling(bool suppress);
    /// @}

    /// @name Texture coordinates: geometry/GenerateUVs.cpp
    ///
    /// Each operation writes UV set `set` of every vertex; missing sets below it are added as (0, 0). Coordinates are
    /// divided by the size of GetBoundingBox(), or not divided when worldUnits is true. The cached hash of the mesh is
    /// kept. A mesh that is flat along an axis that is divided by gets infinite or NaN coordinates.
    /// @throws std::length_error "vector<T> too long" for a negative set, when the mesh has vertices.
    /// @{
    /// Projects along x: writes (z, y), with the centre of the box at 0.5.
    virtual int GenerateUVsPlanarX(int set, bool worldUnits);
    /// Projects along y: writes (x, z), with the centre of the box at 0.5.
    virtual int GenerateUVsPlanarY(int set, bool worldUnits);
    /// Projects along z: writes (x, y), with the centre of the box at 0.5.
    virtual int GenerateUVsPlanarZ(int set, bool worldUnits);
    /// Projects along the largest component of the vertex normal (in case of ties x, then z, then y).
    /// Deliberate: coordinates are measured from the minimum of the box, in world units too. A vertex whose normal
    /// contains NaN gets the coordinates of the vertex before it; the first vertex gets (0, 0). A zero normal gives
    /// u = NaN.
    virtual int GenerateUVsCubic(int set, bool worldUnits);
    /// Projects onto a cylinder about y: u is the angle of the vertex normal about y, and v the height, increasing
    /// downwards.
    virtual int GenerateUVsCylindrical(int set, bool worldUnits);
    /// Writes u as the cylindrical mapping does. Deliberate: v is 0.5 everywhere, and worldUnits does not matter.
    virtual int GenerateUVsSpherical(int set, bool worldUnits);
    /// @}

    /// @name Bind shape: geometry/Geometry.cpp
    /// @{
    virtual D3DXMATRIX GetBindShapeTransform();
    /// Sets the matrix. Invalidates the hash, although the matrix is not content.
    virtual void SetBindShapeTransform(const D3DXMATRIX& matrix);
    /// @}

    /// @name Point cache: geometry/PointCacheNormals.cpp
    /// @{
    /// Computes smooth normals for every whole frame of the point cache, without splitting vertices. The positions of
    /// the vertices are not read. A mesh without vertices has no frames.
    ///
    /// For an index v of a whole triangle, frame f reads PointCachePositions[f x V + v] and writes
    /// PointCacheNormals[f x V + v]. Only these entries must exist: PointCacheNormals may end before entries that no
    /// triangle uses, and an index may be V or more where all its entries exist.
    ///
    /// Cost: linear in I for each frame.
    /// @throws std::out_of_range when an entry that is read or written does not exist.
    virtual int ComputePointCacheNormals();
    /// @}

    // The data members are in the order of the record's layout. Edit the arrays directly.
private:
    std::string name_;
    std::uint64_t polySize_ = 3;

public:
    std::vector<Vertex> VertexArray;        ///< [V]
    std::vector<std::uint32_t> IndexArray;  ///< [I]

private:
    D3DXMATRIX bindShapeTransform_;

public:
    std::vector<Joint> JointArray;                 ///< the skeleton of the mesh's skin
    std::vector<D3DXVECTOR3> PointCachePositions;  ///< [P]
    std::vector<D3DXVECTOR3> PointCacheNormals;    ///< [P], written by ComputePointCacheNormals()
};

}  // namespace Importing
