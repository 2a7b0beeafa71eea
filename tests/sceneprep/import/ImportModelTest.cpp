#include <sceneprep/import/ImportModel.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/SkinnedShape.h>
#include <pipeline/scene/SceneStats.h>
#include <sceneprep/Models.h>
#include <sceneprep/SkinnedFiles.h>
#include <sceneprep/assimp/CameraFrame.h>
#include <sceneprep/export/ExportModel.h>
#include <sceneprep/import/OpenModel.h>
#include <sceneprep/run/Error.h>
#include <support/SceneText.h>

#include <cmath>
#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using Importing::SceneContainer;
using testing::HasSubstr;

class ImportModelTest : public testing::Test
{
protected:
    /// Returns the model apart from its scene, which becomes scene_.
    Model Import(const std::filesystem::path& file)
    {
        std::ostringstream out;
        Progress progress(out, false);
        Model model;
        ImportModel(file, model, progress);
        scene_ = std::move(*model.scene);
        return model;
    }

    /// As Import(), but glTF files are read without Assimp.
    Model Open(const std::filesystem::path& file)
    {
        std::ostringstream out;
        Progress progress(out, false);
        Model model;
        ConvertModel(OpenModel(file, progress), model);
        scene_ = std::move(*model.scene);
        return model;
    }

    std::vector<std::string> Export(const std::string& name)
    {
        std::ostringstream out;
        Progress progress(out, false);
        WorkState state;
        Model model = ModelOf(scene_);
        return TextsOf(ExportModel(model, folder_ / name, progress, state));
    }

    std::string ImportError(const std::filesystem::path& file)
    {
        try
        {
            Import(file);
        }
        catch (const ToolError& error)
        {
            return error.what();
        }
        return "no error";
    }

    Importing::Geometry& GeometryOf(const std::string& node) { return Support::MeshOf(scene_, SurfaceOf(node)); }

    std::string SurfaceOf(const std::string& node)
    {
        return scene_.SurfaceLibrary.at(static_cast<std::size_t>(Support::NodeNamed(scene_, node).SurfaceList.at(0)))
            .GetName();
    }

    TemporaryFolder folder_;
    SceneContainer scene_;
};

/// Returns a COLLADA file of a triangle "Tri" with positions and texture coordinates.
/// @param nodes     the nodes of the scene
/// @param more      further libraries
std::string TriangleCollada(const std::string& nodes, const std::string& more = "")
{
    return R"(<?xml version="1.0"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1"><asset><up_axis>Y_UP</up_axis></asset>)" +
           more + R"(<library_geometries><geometry id="Tri" name="Tri"><mesh>
<source id="points"><float_array id="points-array" count="9">0 0 0 1 0 0 0 1 0</float_array><technique_common>
<accessor source="#points-array" count="3" stride="3"><param name="X" type="float"/><param name="Y" type="float"/>
<param name="Z" type="float"/></accessor></technique_common></source>
<source id="uvs"><float_array id="uvs-array" count="6">0 0 1 0 0 1</float_array><technique_common>
<accessor source="#uvs-array" count="3" stride="2"><param name="S" type="float"/><param name="T" type="float"/>
</accessor></technique_common></source>
<vertices id="vertices"><input semantic="POSITION" source="#points"/></vertices>
<triangles material="M" count="1"><input semantic="VERTEX" source="#vertices" offset="0"/>
<input semantic="TEXCOORD" source="#uvs" offset="0" set="0"/><p>0 1 2</p></triangles></mesh></geometry>
</library_geometries>
<library_visual_scenes><visual_scene id="scene">)" +
           nodes + R"(</visual_scene></library_visual_scenes><scene><instance_visual_scene url="#scene"/></scene>
</COLLADA>)";
}

/// One triangle whose mesh three nodes reference: one without a transform, one with a matrix, and its translated child.
std::string SharedMeshCollada()
{
    return TriangleCollada(R"(<node id="Top" name="Top">
<node id="Left" name="Left"><instance_geometry url="#Tri"/></node>
<node id="Right" name="Right"><matrix>0 -1 0 10 1 0 0 20 0 0 1 30 0 0 0 1</matrix><instance_geometry url="#Tri"/>
<node id="Child" name="Child"><translate>1 0 0</translate><instance_geometry url="#Tri"/></node></node></node>)");
}

TEST_F(ImportModelTest, ReadsTrianglesAndUVsAndComputesNoNormals)
{
    const Model model = Import(WriteSmallObj(folder_));
    EXPECT_EQ(scene_.GetName(), "small");
    EXPECT_EQ(scene_.GetRootNodeIndex(), 0);
    EXPECT_EQ(CountScene(scene_).triangles, 3U);
    Importing::Geometry& square = GeometryOf("Square");
    EXPECT_EQ(square.IndexArray.size(), 6U);
    EXPECT_EQ(square.GetPolySize(), 3U);
    for (Importing::Vertex& vertex : square.VertexArray)
    {
        EXPECT_EQ(vertex.GetNormal(), D3DXVECTOR3(0, 0, 0));
        ASSERT_EQ(vertex.GetTexCoordCount(), 1U);
        EXPECT_EQ(vertex.GetTexCoord(0).x, vertex.GetPosition().x);
        EXPECT_EQ(vertex.GetTexCoord(0).y, vertex.GetPosition().y);
    }
}

TEST_F(ImportModelTest, CarriesLinesWhole)
{
    const Model model = Import(WriteSmallObj(folder_));
    const std::vector<std::int32_t>& surfaces = Support::NodeNamed(scene_, "Wire").SurfaceList;
    ASSERT_EQ(surfaces.size(), 1U);
    const int geometry = Importing::At(scene_.SurfaceLibrary, surfaces[0]).GetGeometryID();
    EXPECT_EQ(Importing::At(scene_.GeometryLibrary, geometry).GetPolySize(), 2U);
    EXPECT_TRUE(model.supplement.pinnedMeshes.at(static_cast<std::size_t>(geometry)));
    const int key = model.supplement.meshKeys.at(static_cast<std::size_t>(geometry));
    EXPECT_EQ(Importing::At(model.carried.meshOf, key).primitive->mode, 1);
    EXPECT_TRUE(model.notes.Empty());
}

TEST_F(ImportModelTest, SurfacesGetTheirMaterialsAndMaps)
{
    const Model model = Import(WriteSmallObj(folder_));
    Importing::Surface& square = Support::SurfaceNamed(scene_, SurfaceOf("Square"));
    Importing::Material& red = scene_.MaterialLibrary.at(static_cast<std::size_t>(square.GetMaterialID()));
    EXPECT_EQ(red.GetName(), "Red");
    EXPECT_EQ(red.GetDiffuse(), D3DXCOLOR(1, 0, 0, 1));
    EXPECT_EQ(red.GetOpacity(), 0.5F);
    EXPECT_EQ(square.GetMap("diffuse", 0), 0);
    EXPECT_EQ(scene_.TextureLibrary, (std::vector<std::string>{"wood.png"}));
    EXPECT_EQ(model.textures.spelling.at("wood.png"), "Wood.PNG");
}

TEST_F(ImportModelTest, SharedMeshesStayShared)
{
    Import(folder_.Write("shared.dae", SharedMeshCollada()));
    EXPECT_EQ(scene_.SurfaceLibrary.size(), 3U);
    EXPECT_EQ(scene_.GeometryLibrary.size(), 1U);
    EXPECT_EQ(scene_.GetGeometryInstanceCount(0), 3);
}

TEST_F(ImportModelTest, TransposesMatricesForRowVectors)
{
    Import(folder_.Write("shared.dae", SharedMeshCollada()));
    EXPECT_EQ(Support::ToText(scene_), "scene( Top( Left[Tri] Right[Tri]( Child[Tri] ) ) )");
    const D3DXMATRIX right = Support::NodeNamed(scene_, "Right").GetLocalTransform().GetMatrix();
    EXPECT_EQ(right._41, 10);
    EXPECT_EQ(right._43, 30);
    EXPECT_EQ(right._12, 1);
    EXPECT_EQ(right._21, -1);
    // The parent rotates the child's (1, 0, 0) to (0, 1, 0).
    const D3DXMATRIX child = scene_.CalculateGlobalTM(Support::NodeIndex(scene_, "Child"));
    EXPECT_EQ(child._41, 10);
    EXPECT_EQ(child._42, 21);
}

/// Checks the content that both files of SkinnedFiles.h have.
void ExpectHipAndLeg(SceneContainer& scene)
{
    EXPECT_EQ(Support::NodeNamed(scene, "Leg").GetLocalTransform().GetMatrix()._42, 2) << "nodes stay";
    ASSERT_EQ(scene.GeometryLibrary.size(), 1U);
    Importing::Geometry& mesh = scene.GeometryLibrary[0];
    ASSERT_EQ(mesh.JointArray.size(), 2U);
    EXPECT_EQ(mesh.JointArray[0].GetName(), "Hip");
    EXPECT_EQ(mesh.JointArray[0].GetParentID(), -1);
    EXPECT_EQ(mesh.JointArray[0].GetLocalTM()._42, 1);
    EXPECT_EQ(mesh.JointArray[0].GetBindPoseInverse()._42, -1);
    EXPECT_EQ(mesh.JointArray[1].GetName(), "Leg");
    EXPECT_EQ(mesh.JointArray[1].GetParentID(), 0);
    EXPECT_EQ(mesh.JointArray[1].GetLocalTM()._42, 2);
    EXPECT_EQ(mesh.JointArray[1].GetBindPoseInverse()._42, -3);
    ASSERT_EQ(mesh.VertexArray.size(), 3U);
    EXPECT_EQ(mesh.VertexArray[0].GetWeightsCount(), 1U);
    EXPECT_THAT(
        (std::vector{mesh.VertexArray[1].GetWeight(0), mesh.VertexArray[1].GetWeight(1)}),
        testing::UnorderedElementsAre(Importing::Vertex::Weight(0, 0.25F), Importing::Vertex::Weight(1, 0.75F)));
    EXPECT_EQ(mesh.VertexArray[2].GetWeight(0), Importing::Vertex::Weight(1, 1.0F));
    EXPECT_EQ(mesh.VertexArray[2].GetNormal(), D3DXVECTOR3(0, 0, 0)) << "the file has none";
    ExpectSameShapes(SkinnedShapes(scene, kRest), {{"Skin", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}}});
}

TEST_F(ImportModelTest, ReadsSkinsOfGltf)
{
    EXPECT_THAT(TextsOf(Open(WriteSkinnedGltf(folder_)).notes), testing::IsEmpty());
    ExpectHipAndLeg(scene_);
}

TEST_F(ImportModelTest, ReadsSkinsOfCollada)
{
    EXPECT_THAT(TextsOf(Import(WriteSkinnedCollada(folder_)).notes), testing::IsEmpty());
    scene_.GeometryLibrary.at(0).SetName("Skin");  // Assimp loses the name of a skinned mesh
    ExpectHipAndLeg(scene_);
}

TEST_F(ImportModelTest, SkinsRoundTripThroughGltf)
{
    Open(WriteSkinnedGltf(folder_));
    EXPECT_THAT(Export("out.glb"), testing::IsEmpty());
    Open(folder_ / "out.glb");
    ExpectHipAndLeg(scene_);
    EXPECT_EQ(Support::ToText(scene_), "Top( Hip( Leg ) Body[Skin] )");
}

/// Cameras at nodes with a translation and with a matrix, one without an aspect ratio; a light; no mesh.
std::string CamerasAndLightGltf()
{
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
"extensionsUsed":["KHR_lights_punctual"],
"extensions":{"KHR_lights_punctual":{"lights":[{"type":"spot","color":[1,0.5,0.25],
"spot":{"innerConeAngle":0.25,"outerConeAngle":0.5}}]}},
"nodes":[{"name":"Top","children":[1,2,3,4]},{"name":"Placed","camera":0,"translation":[1,2,3]},
{"name":"Turned","camera":1,"matrix":[0,0,1,0,0,1,0,0,-1,0,0,0,4,5,6,1]},{"name":"Flat","camera":2},
{"name":"Lamp","translation":[7,8,9],"extensions":{"KHR_lights_punctual":{"light":0}}}],
"cameras":[{"type":"perspective","perspective":{"yfov":0.8,"aspectRatio":1.75,"znear":0.5,"zfar":50}},
{"type":"perspective","perspective":{"yfov":0.5,"znear":0.5,"zfar":50}},
{"type":"orthographic","orthographic":{"xmag":3,"ymag":2,"znear":0.5,"zfar":50}}]})";
}

/// World frame of a camera or light with an offset from its node.
CameraFrame WorldFrame(SceneContainer& scene, const std::string& node, Importing::Transform offset)
{
    const D3DXMATRIX inNode = offset.GetMatrix();
    const D3DXMATRIX ofNode = scene.CalculateGlobalTM(Support::NodeIndex(scene, node));
    D3DXMATRIX world;
    return FrameFromOffset(*D3DXMatrixMultiply(&world, &inNode, &ofNode));
}

void ExpectCamerasAndLight(SceneContainer& scene)
{
    ASSERT_EQ(scene.CameraLibrary.size(), 3U);
    const CameraFrame placed = WorldFrame(scene, "Placed", scene.CameraLibrary[0].GetOffsetMatrix());
    EXPECT_EQ(placed.position, D3DXVECTOR3(1, 2, 3));
    EXPECT_EQ(placed.forward, D3DXVECTOR3(0, 0, -1));
    EXPECT_EQ(placed.up, D3DXVECTOR3(0, 1, 0));
    const CameraFrame turned = WorldFrame(scene, "Turned", scene.CameraLibrary[1].GetOffsetMatrix());
    EXPECT_EQ(turned.position, D3DXVECTOR3(4, 5, 6));
    EXPECT_EQ(turned.forward, D3DXVECTOR3(1, 0, 0));

    constexpr float kDegrees = 57.29578F;
    EXPECT_NEAR(scene.CameraLibrary[0].GetFovY(), 0.8F * kDegrees, 1e-4F);
    EXPECT_NEAR(scene.CameraLibrary[0].GetFovX(), 2 * std::atan(1.75F * std::tan(0.4F)) * kDegrees, 1e-4F);
    EXPECT_NEAR(scene.CameraLibrary[1].GetFovY(), 0.5F * kDegrees, 1e-4F);
    EXPECT_NEAR(scene.CameraLibrary[1].GetFovX(), 0.5F * kDegrees, 1e-4F) << "without an aspect ratio";

    ASSERT_EQ(scene.LightLibrary.size(), 1U);
    Importing::Light& light = scene.LightLibrary[0];
    const CameraFrame lamp = WorldFrame(scene, "Lamp", light.GetOffsetMatrix());
    EXPECT_EQ(lamp.position, D3DXVECTOR3(7, 8, 9));
    EXPECT_EQ(lamp.forward, D3DXVECTOR3(0, 0, -1));
    EXPECT_EQ(light.GetDiffuse(), D3DXCOLOR(1, 0.5F, 0.25F, 1));
    EXPECT_NEAR(light.GetTheta(), 0.25F, 1e-6F);
    EXPECT_NEAR(light.GetPhi(), 0.5F, 1e-6F);
}

TEST_F(ImportModelTest, ReadsCamerasAndLightsOfGltf)
{
    const Model model = Open(folder_.Write("seen.gltf", CamerasAndLightGltf()));
    EXPECT_THAT(TextsOf(model.notes), testing::IsEmpty());
    ExpectCamerasAndLight(scene_);
}

TEST_F(ImportModelTest, CamerasAndLightsRoundTripThroughGltfRepeatedly)
{
    Open(folder_.Write("seen.gltf", CamerasAndLightGltf()));
    for (const char* name : {"once.glb", "twice.glb", "thrice.glb"})
    {
        Export(name);
        Open(folder_ / name);
        ExpectCamerasAndLight(scene_);
    }
}

TEST_F(ImportModelTest, ReportsDroppedContent)
{
    const std::string nodes = R"(<node id="Top" name="Top"><translate sid="move">0 0 0</translate>
<instance_geometry url="#Tri"><bind_material><technique_common><instance_material symbol="M" target="#M">
<bind_vertex_input semantic="UVMap" input_semantic="TEXCOORD" input_set="0"/></instance_material></technique_common>
</bind_material></instance_geometry></node>)";
    const std::string more = R"(<library_images><image id="wood" name="wood"><init_from>a.png</init_from></image>
</library_images><library_effects><effect id="E"><profile_COMMON>
<newparam sid="surface"><surface type="2D"><init_from>wood</init_from></surface></newparam>
<newparam sid="sampler"><sampler2D><source>surface</source></sampler2D></newparam>
<technique sid="common"><lambert><diffuse><texture texture="sampler" texcoord="UVMap"><extra><technique profile="MAYA">
<wrapU>0</wrapU><wrapV>1</wrapV></technique></extra></texture></diffuse></lambert></technique></profile_COMMON></effect>
</library_effects><library_materials><material id="M" name="M"><instance_effect url="#E"/></material></library_materials>
<library_animations><animation id="A">
<source id="times"><float_array id="times-array" count="3">-1 0 1</float_array><technique_common>
<accessor source="#times-array" count="3"><param name="TIME" type="float"/></accessor></technique_common></source>
<source id="values"><float_array id="values-array" count="9">0 0 0 1 0 0 0 1 0</float_array><technique_common>
<accessor source="#values-array" count="3" stride="3"><param name="X" type="float"/><param name="Y" type="float"/>
<param name="Z" type="float"/></accessor></technique_common></source>
<sampler id="sampler"><input semantic="INPUT" source="#times"/><input semantic="OUTPUT" source="#values"/></sampler>
<channel source="#sampler" target="Top/move"/></animation></library_animations>)";
    const Model model = Import(folder_.Write("rich.dae", TriangleCollada(nodes, more)));
    EXPECT_THAT(TextsOf(model.notes), testing::ElementsAre("wrap modes of textures become repeat (layers: 1)",
                                                           "animation keys before time 0 are dropped (nodes: 1)"));
    EXPECT_THAT(model.notes.LossesExcept({}), testing::ElementsAre("wrap-modes", "animation-keys"));
    std::vector<Importing::Key>& keys = scene_.AnimationLibrary.at(0);
    ASSERT_EQ(keys.size(), 2U);
    EXPECT_EQ(keys[0].GetPosition(), D3DXVECTOR3(1, 0, 0)) << "the second of three keys";
}

TEST_F(ImportModelTest, AFileWithoutMeshesGivesASceneWithoutMeshes)
{
    Import(folder_.Write("bones.dae", R"(<?xml version="1.0"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><up_axis>Y_UP</up_axis></asset>
<library_visual_scenes><visual_scene id="scene"><node id="Hip" name="Hip"><translate>0 1 0</translate>
<node id="Leg" name="Leg"><translate>0 2 0</translate></node></node></visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#scene"/></scene></COLLADA>)"));
    EXPECT_TRUE(scene_.GeometryLibrary.empty());
    EXPECT_TRUE(scene_.SurfaceLibrary.empty());
    EXPECT_EQ(Support::NodeNamed(scene_, "Leg").GetLocalTransform().GetMatrix()._42, 2);
}

TEST_F(ImportModelTest, ReportsUnreadableFilesInOneLine)
{
    EXPECT_EQ(ImportError(folder_ / "none.obj"),
              "cannot read " + (folder_ / "none.obj").string() + ": there is no such file; check the path");
    EXPECT_EQ(ImportError(folder_.Path()),
              "cannot read " + folder_.Path().string() + ": it is not a file; name a model file");
    const std::string unknown = folder_.Write("model.zzz", "").string();
    EXPECT_EQ(
        ImportError(unknown),
        "cannot read " + unknown + ": unsupported file extension '.zzz'; 'sceneprep formats' lists the supported ones");
    const std::string broken = ImportError(folder_.Write("broken.dae", "{ this is\nnot COLLADA"));
    EXPECT_THAT(broken, testing::StartsWith("cannot read " + (folder_ / "broken.dae").string() + ": "));
    EXPECT_THAT(broken, testing::EndsWith("; repair the file or convert it to another format"));
    EXPECT_THAT(broken, Not(HasSubstr("\n")));
}

TEST_F(ImportModelTest, ReadsTheBundledScene)
{
    Open(std::filesystem::path(SCENEPREP_EXAMPLES) / "workshop.gltf");
    const SceneStats stats = CountScene(scene_);
    EXPECT_GT(stats.nodes, 1500U);
    EXPECT_GT(stats.surfaces, stats.geometries);
    EXPECT_GT(stats.materials, 3U);
    EXPECT_GE(stats.cameras, 1U);
    EXPECT_GE(stats.lights, 2U);
}

}  // namespace
