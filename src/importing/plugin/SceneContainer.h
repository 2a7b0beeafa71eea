#pragma once

#include <brindle/Vyk_Channel.h>
#include <importing/base/Export.h>
#include <importing/geometry/Geometry.h>
#include <importing/math/D3DXMath.h>
#include <importing/records/Camera.h>
#include <importing/records/Key.h>
#include <importing/records/Light.h>
#include <importing/records/Material.h>
#include <importing/records/Node.h>
#include <importing/records/Surface.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Importing
{

/// Holds one imported scene and prepares it for real time.
///
/// A scene is nine libraries of value records. Records refer to one another by index into a library, never by pointer;
/// -1 means none. The libraries that indices refer to:
///
///   root node index, Node::ChildList      -> NodeLibrary
///   Node::SurfaceList                     -> SurfaceLibrary
///   Node::CameraList, Node::LightList     -> CameraLibrary, LightLibrary
///   Surface::GetGeometryID, GetMaterialID -> GeometryLibrary, MaterialLibrary
///   Map::GetTextureID                     -> TextureLibrary
///   GetAnimationID of a node or joint     -> AnimationLibrary
///
/// The hierarchy is stored as child lists only. The world matrix of a child is its local matrix times the world matrix
/// of its parent. An entry of a surface list is called a reference to the surface.
///
/// Virtual calls and cost: operations call one another through the virtual table, so overrides of a derived container
/// are used. A plain container, which is a SceneContainer and not of a derived class, walks its scene without
/// recursion. The costs below are those of a plain container. A derived container gets every call one by one, with
/// recursion and repeated scans, and may need quadratic time.
///
/// Exceptions: an index outside its library throws std::out_of_range "invalid vector<T> subscript". A plain container
/// throws it before anything has changed, unless the operation says otherwise; a derived container may have done a part
/// of the work. In a plain container a walk that visits a node that is its own ancestor throws std::runtime_error
/// "cycle in the node hierarchy", before anything has changed; a derived container recurses without end. If memory runs
/// out (std::bad_alloc), the container remains valid, but a part of the work may have been done.
///
/// The order and the spelling of the virtual operations are part of the interface.
class IMPORTING_API SceneContainer : public Vyk_Channel
{
public:
    // Edit the libraries directly.
    std::vector<std::vector<Key>> AnimationLibrary;
    std::vector<Camera> CameraLibrary;
    std::vector<Light> LightLibrary;
    std::vector<Geometry> GeometryLibrary;
    std::vector<std::uint32_t> ReservedList;  ///< copied and cleared with the others, but not used
    std::vector<std::string> TextureLibrary;  ///< file references in lower case, without surrounding white space
    std::vector<Material> MaterialLibrary;
    std::vector<Node> NodeLibrary;
    std::vector<Surface> SurfaceLibrary;

    /// @name Life and channel: plugin/SceneContainer.cpp
    /// @{
    /// Creates an empty scene: status -1, no name, root node index -1. The host's channel name is "SceneContainer".
    SceneContainer();
    /// Copies are deep.
    SceneContainer(const SceneContainer&);
    SceneContainer& operator=(const SceneContainer&);
    ~SceneContainer() override;

    /// Does nothing.
    void CallChannel() override;
    /// Calls the base class of the host, which does not save or load the scene.
    bool SaveChannel(VykFileSaver& saver) override;
    bool LoadChannel(VykFileLoader& loader, Vyk_ChannelGroup* group) override;
    /// Does nothing.
    void DoDependencyInit(Vyk_List* list) override;

    /// Sets the status. Callers define its meaning; the container only sets it to -1 in Clear().
    virtual void SetStatus(int status);
    virtual int GetStatus();
    /// Sets the scene's name, which is not the host's channel name.
    virtual void SetName(const std::string& name);
    virtual std::string GetName();
    /// Empties the libraries, which keep their capacity, then calls SetStatus(-1), sets the root node index to -1 and
    /// calls SetName("").
    virtual void Clear();
    /// Sets the root node index without checking it; -1 means no root.
    virtual void SetRootNodeIndex(int node);
    virtual int GetRootNodeIndex() const;
    /// @}

    /// @name Names: plugin/UnambiguousNames.cpp
    /// @{
    /// Makes the names in one library distinct. Of n records with the same name NAME, the first becomes NAME(n-1), the
    /// next NAME(n-2), and so on. Cost: linear in the library on average.
    /// Deliberate: the last record keeps the plain name. Deliberate: where another record still has the new name, [1],
    /// [2], ... is appended; names that this call assigned are not avoided.
    /// @return 0
    virtual int MakeNodeNamesUnambiguous();
    virtual int MakeGeometryNamesUnambiguous();
    virtual int MakeMaterialNamesUnambiguous();
    virtual int MakeSurfaceNamesUnambiguous();
    /// Names every surface after its mesh and its material: "MESH\r\nMATERIAL", or "MATERIAL" where the surface has no
    /// mesh or the mesh has no name. Deliberate: the line break is part of the name. Cost: linear in the surfaces.
    /// @return 0
    /// @throws std::out_of_range with nothing changed, when an index other than -1 is outside its library.
    virtual int CreateSurfaceNames();
    /// @}

    /// @name Hierarchy: plugin/Hierarchy.cpp
    /// @{
    /// Returns the lowest index of a node with exactly this name, or -1. Cost: linear in the nodes.
    virtual int FindNodeByName(const std::string& name) const;
    /// Returns the lowest index of a node whose child list contains `index`, or -1. Cost: linear in the nodes and the
    /// entries of their child lists.
    virtual int FindParentNode(int index) const;
    /// Returns the world matrix of a node: its local matrix times the world matrix of its parent. Cost: linear in the
    /// nodes and the entries of their child lists. To get many matrices, walk the hierarchy instead.
    virtual D3DXMATRIX CalculateGlobalTM(int index);
    /// @}

    /// @name Moving objects between nodes: processing/MoveObjects.cpp
    ///
    /// Each operation appends one list of a node to the same list of another node, in order, empties the first list and
    /// bakes the matrix in: MoveSurfaces transforms the mesh of every surface, once for each reference; MoveCameras and
    /// MoveLights multiply the offset matrix by it from the right. If the two nodes are the same, nothing changes.
    /// Deliberate: a mesh that two of the surfaces share is transformed twice.
    ///
    /// Cost: linear in the lists; MoveSurfaces also in the vertices of the meshes.
    /// @return 0
    /// @throws std::out_of_range with nothing changed, in a derived container too.
    /// @{
    virtual int MoveSurfaces(int toNode, int fromNode, const D3DXMATRIX& matrix);
    virtual int MoveCameras(int toNode, int fromNode, const D3DXMATRIX& matrix);
    virtual int MoveLights(int toNode, int fromNode, const D3DXMATRIX& matrix);
    /// @}

    /// @name Flattening: processing/FlatHierarchy.cpp
    /// @{
    /// Collapses the hierarchy below startNode into targetNode. Surfaces, cameras and lights of all walked nodes move
    /// to the target with their accumulated matrix baked in, the target's surfaces are merged by
    /// MergeSurfaces(targetNode, minSurfaces, maxVertices), and collapsed nodes are erased. The duration of the two
    /// phases is reported to the host.
    ///
    /// The accumulated matrix is the product of the local matrices from the node up to, but not including, the start
    /// node, then startMatrix, then targetMatrix. With ignoreAnimation false, an animated node is skipped with all
    /// nodes below it.
    ///
    /// Deliberate: a node with a child that was collapsed in this pass is kept, without its objects. Call the operation
    /// again to collapse more.
    ///
    /// A node with two parents is walked once for each of them. The first walk moves its objects, with the matrix of
    /// the path through the first parent; the second walk finds no objects. Deliberate: such a node may be queued for
    /// erasure twice. The second erasure then removes the node that moved into its place, or throws if there is none.
    ///
    /// Cost: linear in the walked nodes, the moved objects and their vertices, and in the node library; plus the cost
    /// of merging and n log n in the collapsed nodes.
    /// @return 0
    /// @throws std::out_of_range with nothing changed, when targetNode, startNode, an index in a list of a walked node,
    ///         the mesh of a surface that is to be moved, or a mesh of the target's own surfaces that merging looks up
    ///         does not exist. Also while nodes are erased, when a node that is queued twice is the last node at its
    ///         first erasure; queued nodes with smaller indices then remain.
    virtual int FlatHierarchy(int targetNode, const D3DXMATRIX& targetMatrix, int startNode,
                              const D3DXMATRIX& startMatrix, int minSurfaces, int maxVertices, bool ignoreAnimation);
    /// Walks the hierarchy for FlatHierarchy: moves the objects, removes collapsed children from their child lists and
    /// appends collapsed nodes to `erased`, children before parents.
    /// A target node below the start node is neither moved nor queued. Deliberate: it is still removed from the child
    /// list of its parent, unless one of its own children was collapsed.
    /// @return 0 when the node was collapsed, or is the target and none of its children was collapsed; otherwise 1.
    virtual int FlatHierarchyInternal(int targetNode, const D3DXMATRIX& targetMatrix, int node,
                                      const D3DXMATRIX& nodeMatrix, std::vector<std::uint32_t>& erased,
                                      bool ignoreAnimation);
    /// @}

    /// @name Surface merging: processing/MergeSurfaces.cpp
    /// @{
    /// Merges surfaces of one node. The meshes of later surfaces are appended to the mesh of an earlier one, the base.
    /// Then the merged surfaces are removed from the node's list, and they and their meshes are emptied in place.
    ///
    /// minSurfaces above 0: only surfaces with the material and the maps of the base join it, and only if the node had
    /// at least that many surfaces of the material at the start, and more than one. 0: every later surface joins the
    /// first. Below 0: like 0, but a surface whose material no other surface had is not a base, and at most one surface
    /// more than the material had joins a base.
    ///
    /// maxVertices: the vertex limit of a merged mesh; a negative value means no limit. Deliberate: a base stops at the
    /// first candidate that exceeds the limit; later, smaller candidates are not tried. Deliberate: the mesh of the
    /// base loses its name even then.
    ///
    /// Deliberate: if a base and a candidate share one mesh, the mesh is appended to itself and then emptied, for both.
    /// A mesh of another poly size is emptied without having been appended.
    ///
    /// Cost: linear in the list, its maps and the merged vertices and indices on average, plus n log n in the merged
    /// surfaces.
    /// @return 0
    virtual int MergeSurfaces(int node, int minSurfaces, int maxVertices);
    /// @}

    /// @name Libraries: plugin/Libraries.cpp
    /// @{
    /// Removes a node. The last node moves into its place, and all child lists are updated. The objects of the erased
    /// node remain in their libraries, and its children have no parent afterwards. If the moved node is the root, the
    /// root node index is updated. Deliberate: erasing the root does not change the root node index.
    /// Cost: linear in the nodes and the entries of their child lists.
    virtual void EraseNodeFromLibrary(int index);
    /// Appends a copy of a mesh. Deliberate: `unique` is ignored; meshes are never de-duplicated here.
    /// @return the index of the mesh. An addition that throws changes no library.
    virtual int AddGeometryToLibrary(Geometry& geometry, bool unique);
    /// Empties a mesh in place, so that no index changes.
    virtual void EraseGeometryFromLibrary(int index);
    /// Appends a copy of a material. With `unique` true, nothing is appended if the library has a material of equal
    /// content. Cost: constant, or linear in the library with `unique` true.
    /// @return the index of the material.
    virtual int AddMaterialToLibrary(Material& material, bool unique);
    /// Appends a file reference in lower case without surrounding white space. With `unique` true, nothing is appended
    /// if the library has an equal reference. Cost: linear in the length, and in the library with `unique` true.
    /// @return the index of the reference.
    virtual int AddTextureToLibrary(const std::string& texture, bool unique);
    /// Appends an animation. With `unique` true, nothing is appended if the library has an animation with equal keys.
    /// Cost: constant, or linear in the keys of the library with `unique` true.
    /// @return the index of the animation.
    virtual int AddAnimationToLibrary(std::vector<Key> animation, bool unique);
    /// Appends a surface. Deliberate: `unique` is ignored.
    /// @return the index of the surface.
    virtual int AddSurfaceToLibrary(Surface surface, bool unique);
    /// Empties a surface in place, so that no index changes.
    virtual void EraseSurfaceFromLibrary(int index);
    /// Returns the number of references to surfaces with this mesh. Cost: linear in the nodes and the references.
    virtual int GetGeometryInstanceCount(int geometry);
    /// Returns the number of references to surfaces with this material. Cost: linear in the nodes and the references.
    virtual int GetMaterialInstanceCount(int material);
    /// @}

    /// @name Bounds of the scene: processing/SceneBounds.cpp
    /// @{
    /// Writes the bounds of the scene in world space: the smallest and largest coordinates of the corners of the local
    /// boxes of all referenced surfaces. Without surfaces these are the largest float and its negation. Deliberate: a
    /// negative mesh index is an error here.
    /// Cost: linear in the nodes, and for every reference in the vertices of its mesh.
    /// @return 0
    /// @throws std::out_of_range with min and max unchanged, when an index does not exist.
    virtual int GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const;
    /// @}

    /// @name Orientation: processing/FaceOrientation.cpp
    /// @{
    /// Flips the winding of meshes whose first triangle faces away from the normal of its first vertex, for all nodes
    /// below `node` and then for the node itself. worldMatrix is the world matrix of the node.
    /// Deliberate: a triangle is also flipped when the dot product of the two unit normals is between 0 and 0.05.
    /// Deliberate: normals are flipped where the determinants of the whole matrix and of its 3x3 part differ in sign.
    ///
    /// A node that can be reached by several paths is visited once for each path. Cost: linear in these visits and the
    /// references of the visited nodes, and in the indices of flipped meshes.
    /// @return 0
    /// @throws std::out_of_range with nothing changed, when a visited triangle mesh has no whole first triangle (an
    ///         empty mesh has none) or an index does not exist. Also in the middle of the work, when a mesh is to be
    ///         flipped whose index count is two more than a multiple of 3.
    virtual int CheckFacesOrientation(int node, const D3DXMATRIX& worldMatrix);
    /// Removes negative scale from the local matrices of `node` and of all nodes below it. A mirrored node keeps
    /// rotation and translation; its scale is baked into its meshes and passed on to its children as pendingScale. Then
    /// the winding of the node's meshes is tested like in CheckFacesOrientation, with the node's matrix times
    /// parentWorld. An animated node is judged by the first key of its animation.
    ///
    /// Deliberate: the negative sign is always in x, regardless of the axis that was mirrored. Deliberate: a node
    /// without negative scale keeps its matrix, even if a scale is pending. So nested mirrored nodes may move.
    ///
    /// Cost: as CheckFacesOrientation, plus the vertices of the meshes of mirrored nodes.
    /// @return 0
    /// @throws std::out_of_range as CheckFacesOrientation; also with nothing changed, when the animation of a visited
    ///         node does not exist or has no key.
    virtual int RemoveNegativeScaleMatricies(int node, const D3DXMATRIX& pendingScale, const D3DXMATRIX& parentWorld);
    /// @}

    /// @name Instances: processing/ResolveGeomInstances.cpp
    /// @{
    /// Gives every reference to a surface a mesh of its own. In the order of nodes and lists, the first reference to a
    /// mesh keeps it, and later ones get copies. A negative mesh index means no mesh. A mesh index outside the library
    /// is an error only if it is used a second time.
    /// Cost: linear in the nodes, references, surfaces and meshes, and in the vertices and indices that are copied.
    /// @return 0
    /// @throws std::out_of_range with nothing changed, when a surface index is outside its library, or a mesh that is
    ///         to be copied does not exist. A derived container checks the mesh when it is copied.
    virtual int ResolveGeomInstances();
    /// @}

    /// @name Appending: plugin/AppendSC.cpp
    /// @{
    /// Appends a copy of another scene and joins the two hierarchies under a root node named "Root": a new one, or that
    /// of an earlier call. Materials and textures that surfaces use are de-duplicated; the others are not copied. If
    /// other is this container, a copy of its content on entry is appended.
    /// Deliberate: one spare default node follows the copied nodes, and a -1 in a list of a node is shifted like any
    /// index. Deliberate: if the other scene has no root, the root of an earlier call gets the node before the copies
    /// as a child.
    /// Cost: linear in both scenes on average.
    /// @return 0; -1 with nothing changed when other is null.
    /// @throws std::out_of_range with both containers unchanged, when a material or texture index of the other scene is
    ///         outside its library; in a plain container also when this container's root node index is not valid after
    ///         the nodes have been appended.
    virtual int AppendSC(SceneContainer* other);
    /// @}

    /// @name Collision offsets: processing/CollisionOffset.cpp
    /// @{
    /// Gives surfaces whose world boxes overlap different collision offsets as far as one greedy pass can: 0 for a
    /// surface that overlaps no other one, otherwise 0, 1, 2, ... Deliberate: boxes that only touch overlap.
    /// Deliberate: of a pair with equal offsets the other surface is raised, never the current one.
    ///
    /// A derived container gets all offsets reset before its world matrices are read. The new offsets are written after
    /// all of them have been computed.
    ///
    /// Cost: linear in the vertices of the meshes; n log n in the references, plus the overlapping pairs.
    /// @return 0
    virtual int CalculateSurfaceCollisionOffset();
    /// @}

    /// Appends a default mesh. Defined in plugin/Libraries.cpp.
    /// @return the index of the mesh.
    int CreateNewGeometryInLibrary();

private:
    std::int32_t status_ = -1;
    std::string name_;
    std::int32_t rootNodeIndex_ = -1;
};

}  // namespace Importing
