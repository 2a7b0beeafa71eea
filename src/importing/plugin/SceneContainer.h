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

/// Holds one imported scene and makes it fit for real time.
///
/// A scene is nine libraries of value records. Records refer to one another by index into a library, never by pointer;
/// -1 is written for none. What an index means:
///
///   root node index, Node::ChildList      -> NodeLibrary
///   Node::SurfaceList                     -> SurfaceLibrary
///   Node::CameraList, Node::LightList     -> CameraLibrary, LightLibrary
///   Surface::GetGeometryID, GetMaterialID -> GeometryLibrary, MaterialLibrary
///   Map::GetTextureID                     -> TextureLibrary
///   GetAnimationID of a node or joint     -> AnimationLibrary
///
/// The hierarchy is stored as child lists only. A child's world matrix is its local matrix times its parent's.
///
/// Operations call one another through the virtual table, so a derived container's override is honoured. A plain
/// SceneContainer, which overrides nothing, walks its scene without recursion and in time that grows like n log n in
/// what it visits, plus the pairs of boxes that overlap; a derived container gets every literal call one by one, and so
/// the recursion and the repeated scans.
///
/// An index outside its library gets std::out_of_range "invalid vector<T> subscript", before anything has changed where
/// the operation can know. A hierarchy in which a node is its own ancestor gets std::runtime_error "cycle in the node
/// hierarchy" in a plain container, and endless recursion in a derived one.
///
/// The order of the virtual operations is part of the interface. So are the spellings.
class IMPORTING_API SceneContainer : public Vyk_Channel
{
public:
    // The libraries are edited directly.
    std::vector<std::vector<Key>> AnimationLibrary;
    std::vector<Camera> CameraLibrary;
    std::vector<Light> LightLibrary;
    std::vector<Geometry> GeometryLibrary;
    std::vector<std::uint32_t> ReservedList;  ///< copied and cleared with the others, used by nothing
    std::vector<std::string> TextureLibrary;  ///< file references in lower case, without white space around them
    std::vector<Material> MaterialLibrary;
    std::vector<Node> NodeLibrary;
    std::vector<Surface> SurfaceLibrary;

    /// @name Life and channel: plugin/SceneContainer.cpp
    /// @{
    /// An empty scene: status -1, no name, root node index -1. The host's channel name is "SceneContainer".
    SceneContainer();
    /// Copies are deep.
    SceneContainer(const SceneContainer&);
    SceneContainer& operator=(const SceneContainer&);
    ~SceneContainer() override;

    /// Does nothing.
    void CallChannel() override;
    /// Does what the host's base class does, which does not carry the scene.
    bool SaveChannel(VykFileSaver& saver) override;
    bool LoadChannel(VykFileLoader& loader, Vyk_ChannelGroup* group) override;
    /// Does nothing.
    void DoDependencyInit(Vyk_List* list) override;

    /// The status is the caller's own; the container only sets it to -1 in Clear().
    virtual void SetStatus(int status);
    virtual int GetStatus();
    /// The scene's name, which is not the host's channel name.
    virtual void SetName(const std::string& name);
    virtual std::string GetName();
    /// Empties the libraries, which keep their capacity, then calls SetStatus(-1), unsets the root node index and calls
    /// SetName(""). Adds nothing.
    virtual void Clear();
    /// Stored as it comes, without a check; -1 is no root.
    virtual void SetRootNodeIndex(int node);
    virtual int GetRootNodeIndex() const;
    /// @}

    /// @name Names: plugin/UnambiguousNames.cpp
    /// @{
    /// Makes the names in one library distinct. Of n records that share a name the first becomes NAME(n-1), the next
    /// NAME(n-2), and so on.
    /// Deliberate: the last one keeps the plain name. Deliberate: where a record carried the new name before the call,
    /// [1], [2], ... is tried behind it; names made in this call are not avoided.
    /// @return 0
    virtual int MakeNodeNamesUnambiguous();
    virtual int MakeGeometryNamesUnambiguous();
    virtual int MakeMaterialNamesUnambiguous();
    virtual int MakeSurfaceNamesUnambiguous();
    /// Names every surface after its mesh and its material: "MESH\r\nMATERIAL", or "MATERIAL" where the mesh has no
    /// name or there is none. Deliberate: the line break is part of the name.
    /// @return 0
    /// @throws std::out_of_range before anything has changed, when an index other than -1 is outside its library.
    virtual int CreateSurfaceNames();
    /// @}

    /// @name Hierarchy: plugin/Hierarchy.cpp
    /// @{
    /// @return the lowest index of a node of exactly this name, or -1.
    virtual int FindNodeByName(const std::string& name) const;
    /// @return the lowest index of a node whose child list holds index, or -1.
    virtual int FindParentNode(int index) const;
    /// @return the node's world matrix: its local matrix times its parent's world matrix.
    virtual D3DXMATRIX CalculateGlobalTM(int index);
    /// @}

    /// @name Moving objects between nodes: processing/MoveObjects.cpp
    ///
    /// Each appends what one node lists to another node's list, in order, and bakes the matrix in on the way: surfaces
    /// get it multiplied into their mesh, once for each listing (deliberate: a mesh that two of them share is carried
    /// twice); cameras and lights get it behind their offset matrix.
    ///
    /// With equal nodes nothing happens. All listed indices are checked before anything changes.
    /// @return 0
    /// @{
    virtual int MoveSurfaces(int toNode, int fromNode, const D3DXMATRIX& matrix);
    virtual int MoveCameras(int toNode, int fromNode, const D3DXMATRIX& matrix);
    virtual int MoveLights(int toNode, int fromNode, const D3DXMATRIX& matrix);
    /// @}

    /// @name Flattening: processing/FlatHierarchy.cpp
    /// @{
    /// Collapses what lies below startNode into targetNode: objects move there with their accumulated matrix baked in,
    /// the target's surfaces are merged by MergeSurfaces(targetNode, minSurfaces, maxVertices), collapsed nodes are
    /// erased. Tells the host how long the two phases took.
    ///
    /// The start node's own local matrix is not part of the accumulated matrix; startMatrix and targetMatrix follow at
    /// its end. With ignoreAnimation false an animated node stays with all that lies below it.
    ///
    /// Deliberate: a node of which a child was collapsed in this pass is kept, emptied of its objects; call again to
    /// collapse more.
    ///
    /// A node with two parents is walked once for each of them. The first walk moves its objects, with the matrix of
    /// the path through the first parent; the second walk finds none left. Deliberate: such a node may be queued for
    /// erasure twice; the second erasure then removes the node that moved into its place, and throws where no node did.
    ///
    /// @return 0
    /// @throws std::out_of_range in a plain container before anything has changed, when targetNode, startNode, an index
    ///         in a list of a walked node, the mesh of a surface that is to be moved, or a mesh of the target's own
    ///         surfaces that merging looks up does not exist; and after everything else has been done, when a node that
    ///         is queued twice was the last of its library.
    /// @throws std::runtime_error "cycle in the node hierarchy" in a plain container, before anything has changed.
    virtual int FlatHierarchy(int targetNode, const D3DXMATRIX& targetMatrix, int startNode,
                              const D3DXMATRIX& startMatrix, int minSurfaces, int maxVertices, bool ignoreAnimation);
    /// The walk of FlatHierarchy: moves the objects, takes collapsed children out of their child lists and appends
    /// collapsed nodes to erased, children before parents.
    /// A target node met inside the walk is neither moved nor queued, yet taken out of its parent's child list unless
    /// one of its own children was collapsed.
    /// @return 0 when node itself was collapsed (or is the target, none of whose children was), 1 when it stays.
    virtual int FlatHierarchyInternal(int targetNode, const D3DXMATRIX& targetMatrix, int node,
                                      const D3DXMATRIX& nodeMatrix, std::vector<std::uint32_t>& erased,
                                      bool ignoreAnimation);
    /// @}

    /// @name Surface merging: processing/MergeSurfaces.cpp
    /// @{
    /// Fuses surfaces of one node: the meshes of later surfaces are appended to that of an earlier one, the base; the
    /// surfaces and meshes that this makes redundant are emptied.
    ///
    /// minSurfaces above 0: only surfaces with the base's material and maps join it, and only where the node had that
    /// many of the material at the start, and more than one. 0: every later surface joins the first. Below 0: as 0, but
    /// a surface that was alone with its material is no base, and a base takes at most one surface more than its
    /// material had.
    /// maxVertices: the largest merged mesh; a negative value sets no limit. Deliberate: the first candidate that does
    /// not fit ends a base's search, smaller ones behind it are not tried. Deliberate: the base's mesh loses its name
    /// even then.
    ///
    /// A base and a candidate that share one mesh: the mesh is appended to itself, then emptied, for both. A mesh of
    /// another poly size is emptied without having been appended.
    /// @return 0
    virtual int MergeSurfaces(int node, int minSurfaces, int maxVertices);
    /// @}

    /// @name Libraries: plugin/Libraries.cpp
    /// @{
    /// Removes a node: the last node takes its place and child lists are put right. Its objects stay in their
    /// libraries, its children lose their parent.
    /// Where the moved last node is the root, the root node index follows it. Deliberate: an erased root is not unset.
    virtual void EraseNodeFromLibrary(int index);
    /// Appends a copy. Deliberate: unique is ignored, meshes are never de-duplicated here.
    /// @return its index, as do the other additions.
    virtual int AddGeometryToLibrary(Geometry& geometry, bool unique);
    /// Empties the mesh in place; no index changes.
    virtual void EraseGeometryFromLibrary(int index);
    /// With unique true a material of equal content that is there already is used instead.
    virtual int AddMaterialToLibrary(Material& material, bool unique);
    /// Appends the reference in lower case and without white space around it. With unique true an equal one that is
    /// there already is used instead.
    virtual int AddTextureToLibrary(const std::string& texture, bool unique);
    /// With unique true an animation of equal keys that is there already is used instead.
    virtual int AddAnimationToLibrary(std::vector<Key> animation, bool unique);
    /// Deliberate: unique is ignored.
    virtual int AddSurfaceToLibrary(Surface surface, bool unique);
    /// Empties the surface in place; no index changes.
    virtual void EraseSurfaceFromLibrary(int index);
    /// @return how many entries of the nodes' surface lists lead to this mesh.
    virtual int GetGeometryInstanceCount(int geometry);
    /// @return how many entries of the nodes' surface lists lead to this material.
    virtual int GetMaterialInstanceCount(int material);
    /// @}

    /// @name Bounds of the scene: processing/SceneBounds.cpp
    /// @{
    /// Writes the smallest and largest world coordinates of the corners of all listed surfaces' local boxes; without
    /// surfaces the largest float and its negation. A negative mesh index is an error here, not none.
    /// @return 0
    virtual int GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const;
    /// @}

    /// @name Orientation: processing/FaceOrientation.cpp
    /// @{
    /// Below and at node, children first: flips the faces of each mesh whose first triangle faces away from its first
    /// vertex's normal (deliberate: or leans less than 0.05 towards it), in the frame of worldMatrix, the node's world
    /// matrix. Normals are flipped where the determinants of the whole matrix and of its 3x3 part differ in sign. A
    /// node that several lists lead to is visited once for each path.
    /// @return 0
    /// @throws std::out_of_range when a listed triangle mesh has no whole first triangle, an empty one included, or is
    ///         to be flipped and its index count is two more than a multiple of three.
    virtual int CheckFacesOrientation(int node, const D3DXMATRIX& worldMatrix);
    /// At and below node: takes negative scale out of local matrices, bakes it into the node's meshes and hands it on
    /// to the children as pendingScale; then tests faces as above, with the node's matrix times parentWorld.
    ///
    /// Deliberate: mirroring is carried by x, whichever axis was mirrored; a node without negative scale keeps its
    /// matrix, also when a scale is pending.
    /// @return 0
    virtual int RemoveNegativeScaleMatricies(int node, const D3DXMATRIX& pendingScale, const D3DXMATRIX& parentWorld);
    /// @}

    /// @name Instances: processing/ResolveGeomInstances.cpp
    /// @{
    /// Gives every reference to a surface a mesh of its own: the first reference to a mesh keeps it, in the order of
    /// nodes and lists; later ones get copies. A negative mesh index means no mesh. A mesh index outside the library
    /// changes nothing where it is met first.
    /// Cost: linear in nodes, references, surfaces and meshes, and in the vertices and indices that are copied.
    /// @return 0
    /// @throws std::out_of_range when a surface index is outside its library, before anything has changed; or when a
    /// mesh
    ///         that does not exist is to be copied, in a plain container before anything has changed.
    virtual int ResolveGeomInstances();
    /// @}

    /// @name Appending: plugin/AppendSC.cpp
    /// @{
    /// Appends a copy of another scene and joins the two hierarchies under one root node named "Root", or under that of
    /// an earlier merge (deliberate: it lists the node before the copies when the other has no root). Materials and
    /// textures in use are de-duplicated, others left behind. To itself a container appends what it held on entry.
    /// Deliberate: one spare default node follows the copied nodes; a -1 in a node's list is shifted like any index.
    /// @return 0; -1 with nothing changed when other is null.
    /// @throws std::out_of_range with both containers unchanged, when a material or texture index of the other is
    ///         outside its library, or (in a plain container) this container's root node index designates no node after
    ///         the appending.
    virtual int AppendSC(SceneContainer* other);
    /// @}

    /// @name Collision offsets: processing/CollisionOffset.cpp
    /// @{
    /// Sets every surface's collision offset so that surfaces whose world boxes overlap tend to differ: 0 where nothing
    /// overlaps, else 1, 2, ... in one greedy pass. Deliberate: boxes that only touch overlap. Deliberate: of an equal
    /// pair the other surface is raised, never the current one. A derived container's world matrices are asked for with
    /// all offsets reset, and the offsets are written when all of them have been found.
    /// @return 0
    virtual int CalculateSurfaceCollisionOffset();
    /// @}

    /// Appends a default mesh: plugin/Libraries.cpp.
    /// @return its index.
    int CreateNewGeometryInLibrary();

private:
    std::int32_t status_ = -1;
    std::string name_;
    std::int32_t rootNodeIndex_ = -1;
};

}  // namespace Importing
