#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace Importing;

using Names = std::vector<std::string>;

template <typename Record>
void SetNames(std::vector<Record>& library, const Names& names)
{
    library.resize(names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        library[i].SetName(names[i]);
}

template <typename Record>
Names NamesOf(std::vector<Record>& library)
{
    Names names;
    for (Record& record : library)
        names.push_back(record.GetName());
    return names;
}

/// Returns the names of the nodes after renaming.
Names Renamed(const Names& names)
{
    SceneContainer scene;
    SetNames(scene.NodeLibrary, names);
    EXPECT_EQ(scene.MakeNodeNamesUnambiguous(), 0);
    return NamesOf(scene.NodeLibrary);
}

TEST(UnambiguousNames, NamesWithoutDuplicatesDoNotChange)
{
    EXPECT_EQ(Renamed({}), Names{});
    EXPECT_EQ(Renamed({"A", "B", "A(1)", "A(2)"}), (Names{"A", "B", "A(1)", "A(2)"}));
}

TEST(UnambiguousNames, OfTwoEmptyNamesTheFirstBecomesABracketedOne)
{
    EXPECT_EQ(Renamed({"", ""}), (Names{"(1)", ""}));
}

TEST(UnambiguousNames, FourEqualNamesCountDownAndTheLastKeepsThePlainName)
{
    EXPECT_EQ(Renamed({"A", "A", "A", "A"}), (Names{"A(3)", "A(2)", "A(1)", "A"}));
}

TEST(UnambiguousNames, DuplicatesAmongOthersCountDownInIndexOrder)
{
    EXPECT_EQ(Renamed({"x", "Box", "y", "Box", "Box"}), (Names{"x", "Box(2)", "y", "Box(1)", "Box"}));
}

TEST(UnambiguousNames, AnExistingNameIsAvoidedAndItsRecordKeepsIt)
{
    EXPECT_EQ(Renamed({"A", "A", "A(1)"}), (Names{"A(1)[1]", "A", "A(1)"}));
}

TEST(UnambiguousNames, NamesThatDifferOnlyInCaseAreDistinct)
{
    EXPECT_EQ(Renamed({"box", "Box"}), (Names{"box", "Box"}));
}

TEST(UnambiguousNames, NodesGeometriesMaterialsAndSurfacesAreRenamedIndependently)
{
    SceneContainer scene;
    SetNames(scene.NodeLibrary, {"A", "A"});
    SetNames(scene.GeometryLibrary, {"A", "A"});
    SetNames(scene.MaterialLibrary, {"A", "A"});
    SetNames(scene.SurfaceLibrary, {"A", "A"});
    const Names before{"A", "A"};
    const Names after{"A(1)", "A"};

    EXPECT_EQ(scene.MakeNodeNamesUnambiguous(), 0);
    EXPECT_EQ(NamesOf(scene.NodeLibrary), after);
    EXPECT_EQ(NamesOf(scene.GeometryLibrary), before);
    EXPECT_EQ(scene.MakeGeometryNamesUnambiguous(), 0);
    EXPECT_EQ(NamesOf(scene.GeometryLibrary), after);
    EXPECT_EQ(NamesOf(scene.MaterialLibrary), before);
    EXPECT_EQ(scene.MakeMaterialNamesUnambiguous(), 0);
    EXPECT_EQ(NamesOf(scene.MaterialLibrary), after);
    EXPECT_EQ(NamesOf(scene.SurfaceLibrary), before);
    EXPECT_EQ(scene.MakeSurfaceNamesUnambiguous(), 0);
    EXPECT_EQ(NamesOf(scene.SurfaceLibrary), after);
}

TEST(UnambiguousNames, OnlyARenamedMaterialLosesItsHash)
{
    SceneContainer scene;
    SetNames(scene.MaterialLibrary, {"A", "A", "B"});
    for (Material& material : scene.MaterialLibrary)
        material.GetHash();
    scene.MakeMaterialNamesUnambiguous();
    EXPECT_FALSE(scene.MaterialLibrary[0].GetIsHashCodeValid());
    EXPECT_TRUE(scene.MaterialLibrary[1].GetIsHashCodeValid());
    EXPECT_TRUE(scene.MaterialLibrary[2].GetIsHashCodeValid());
}

/// Returns the name that a surface with these indices gets in a scene with two meshes ("Mesh" and one without name) and
/// a material Red.
std::string CreatedName(int geometry, int material)
{
    SceneContainer scene;
    SetNames(scene.GeometryLibrary, {"Mesh", ""});
    SetNames(scene.MaterialLibrary, {"Red"});
    SetNames(scene.SurfaceLibrary, {"old"});
    scene.SurfaceLibrary[0].SetGeometryID(geometry);
    scene.SurfaceLibrary[0].SetMaterialID(material);
    EXPECT_EQ(scene.CreateSurfaceNames(), 0);
    return scene.SurfaceLibrary[0].GetName();
}

TEST(CreateSurfaceNames, NameIsMeshAndMaterialWithALineBreakBetween) { EXPECT_EQ(CreatedName(0, 0), "Mesh\r\nRed"); }

TEST(CreateSurfaceNames, WithoutMeshOrMeshNameTheNameIsThatOfTheMaterial)
{
    EXPECT_EQ(CreatedName(-1, 0), "Red");
    EXPECT_EQ(CreatedName(1, 0), "Red");
}

TEST(CreateSurfaceNames, WithoutMaterialTheLineBreakIsKept) { EXPECT_EQ(CreatedName(0, -1), "Mesh\r\n"); }

TEST(CreateSurfaceNames, WithoutMeshAndMaterialTheNameIsEmpty) { EXPECT_EQ(CreatedName(-1, -1), ""); }

TEST(CreateSurfaceNames, NamesMayBeEqualAndCanBeMadeDistinct)
{
    SceneContainer scene;
    SetNames(scene.GeometryLibrary, {"Mesh"});
    scene.SurfaceLibrary.resize(2);
    for (Surface& surface : scene.SurfaceLibrary)
        surface.SetGeometryID(0);
    scene.CreateSurfaceNames();
    EXPECT_EQ(NamesOf(scene.SurfaceLibrary), (Names{"Mesh\r\n", "Mesh\r\n"}));
    scene.MakeSurfaceNamesUnambiguous();
    EXPECT_EQ(NamesOf(scene.SurfaceLibrary), (Names{"Mesh\r\n(1)", "Mesh\r\n"}));
}

TEST(CreateSurfaceNames, KeepsTheHashesOfSurfaces)
{
    SceneContainer scene;
    scene.SurfaceLibrary.resize(1);
    scene.SurfaceLibrary[0].GetHash();
    scene.CreateSurfaceNames();
    EXPECT_TRUE(scene.SurfaceLibrary[0].GetIsHashCodeValid());
}

TEST(CreateSurfaceNames, ABadIndexOfTheLastSurfaceChangesNothing)
{
    for (const int bad : {-2, 1})
        for (const bool isMesh : {true, false})
        {
            SceneContainer scene;
            SetNames(scene.GeometryLibrary, {"Mesh"});
            SetNames(scene.MaterialLibrary, {"Red"});
            SetNames(scene.SurfaceLibrary, {"a", "b"});
            scene.SurfaceLibrary[0].SetGeometryID(0);
            if (isMesh)
                scene.SurfaceLibrary[1].SetGeometryID(bad);
            else
                scene.SurfaceLibrary[1].SetMaterialID(bad);
            Support::ExpectBadIndex(scene, [&] { scene.CreateSurfaceNames(); });
        }
}

TEST(UnambiguousNamesOverrides, NoOperationCallsAnother)
{
    Support::RecordingContainer scene;
    SetNames(scene.SurfaceLibrary, {"A", "A"});
    scene.MakeNodeNamesUnambiguous();
    scene.MakeGeometryNamesUnambiguous();
    scene.MakeMaterialNamesUnambiguous();
    scene.MakeSurfaceNamesUnambiguous();
    scene.CreateSurfaceNames();
    const Names all{"MakeNodeNamesUnambiguous",
                    "MakeGeometryNamesUnambiguous",
                    "MakeMaterialNamesUnambiguous",
                    "MakeSurfaceNamesUnambiguous",
                    "CreateSurfaceNames",
                    "SetName",
                    "GetName"};
    EXPECT_EQ(scene.Calls(all),
              "MakeNodeNamesUnambiguous() MakeGeometryNamesUnambiguous() MakeMaterialNamesUnambiguous() "
              "MakeSurfaceNamesUnambiguous() CreateSurfaceNames()");
}

}  // namespace
