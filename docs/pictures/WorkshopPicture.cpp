#include <pictures/WorkshopPicture.h>

#include <pictures/Layout.h>
#include <pictures/SceneDrawing.h>
#include <pipeline/steps/FlattenScene.h>
#include <sceneprep/import/ImportModel.h>
#include <sceneprep/report/Report.h>

#include <sstream>
#include <string>

namespace Pictures
{
namespace
{

using Importing::SceneContainer;

constexpr int kWidth = 798;
constexpr int kHeight = 670;

void Flatten(SceneContainer& scene)
{
    Pipeline::SceneSupplement supplement;
    Pipeline::FlattenScene({scene, supplement});
}

Image DrawStreet(SceneContainer& scene, const SurfaceStyle& styleOf)
{
    const Camera camera({46, 34, 44}, {1.5F, 1, -8}, 33);
    Stage stage(camera, kWidth, kHeight);
    AddScene(stage, scene, styleOf);
    stage.DrawMeshes();
    return stage.Canvas().Finish();
}

MeshStyle InColorOfMaterial(SceneContainer& scene, int surface)
{
    const int material = scene.SurfaceLibrary.at(static_cast<std::size_t>(surface)).GetMaterialID();
    const D3DXCOLOR diffuse = scene.MaterialLibrary.at(static_cast<std::size_t>(material)).GetDiffuse();
    return Painted(Mix({diffuse.r, diffuse.g, diffuse.b}, kStone, 0.12F));
}

std::string Caption(const char* when, const Pipeline::SceneStats& stats)
{
    return when + std::to_string(stats.nodes) + " nodes, " + std::to_string(stats.surfaces) + " surfaces";
}

}  // namespace

Image DrawWorkshop(const std::filesystem::path& sceneFile, std::ostream& counts)
{
    std::ostringstream unheard;
    Sceneprep::Progress progress(unheard, false);
    Sceneprep::Model model;
    Sceneprep::ImportModel(sceneFile, model, progress);
    SceneContainer& scene = *model.scene;
    scene.ResolveGeomInstances();

    const Pipeline::SceneStats before = Pipeline::CountScene(scene);
    Panel left{DrawStreet(scene, [](int, std::size_t listing) { return Painted(DistinctColor(listing)); }),
               Caption("before: ", before)};

    Flatten(scene);
    const Pipeline::SceneStats after = Pipeline::CountScene(scene);
    Panel right{DrawStreet(scene, [&scene](int surface, std::size_t) { return InColorOfMaterial(scene, surface); }),
                Caption("after: ", after)};

    counts << Sceneprep::ComparisonTable(before, after);
    return SideBySide(left, right);
}

}  // namespace Pictures
