#include <pipeline/steps/Steps.h>

#include <pipeline/steps/CheckOrientation.h>
#include <pipeline/steps/ComputeCollisionOffsets.h>
#include <pipeline/steps/ComputeNormals.h>
#include <pipeline/steps/FixCulling.h>
#include <pipeline/steps/FlattenScene.h>
#include <pipeline/steps/GenerateUVs.h>
#include <pipeline/steps/MakeNamesUnique.h>
#include <pipeline/steps/NameSurfaces.h>
#include <pipeline/steps/RepairMirrors.h>
#include <pipeline/steps/ResolveInstances.h>
#include <pipeline/steps/UnifyNormals.h>
#include <pipeline/steps/Weld.h>

#include <array>

namespace Pipeline
{

namespace
{

constexpr bool kRecommended = true;
constexpr bool kOwnMeshes = true;

template <bool PrepareOptions::*flag>
bool Has(const PrepareOptions& options)
{
    return options.*flag;
}

template <bool PrepareOptions::*flag>
constexpr Step Flag(const char* option, const char* title, const char* help, decltype(Step::run) run,
                    bool isRecommended = false, bool needsOwnMeshes = false)
{
    return {option, "", title, help, isRecommended, needsOwnMeshes, flag, nullptr, Has<flag>, run};
}

bool NeedsOwnMeshes(const PrepareOptions& options)
{
    for (const Step& step : Steps())
    {
        if (step.needsOwnMeshes && step.isChosen(options))
            return true;
    }
    return options.resolveInstances;
}

bool HasUVs(const PrepareOptions& options) { return !options.uvs.empty(); }

using O = PrepareOptions;

constexpr std::array kSteps = {
    Step{"--resolve-instances", "", "Resolve instances", "Give every surface a mesh of its own", false, false,
         &O::resolveInstances, nullptr, NeedsOwnMeshes, ResolveInstances},
    Flag<&O::repairMirrors>("--repair-mirrors", "Repair mirrors",
                            "Remove negative scale from nodes and bake it into their meshes", RepairMirrors,
                            kRecommended, kOwnMeshes),
    Flag<&O::checkOrientation>("--check-orientation", "Check orientation",
                               "Flip the winding of meshes whose first triangle faces away from its normal",
                               CheckOrientation, !kRecommended, kOwnMeshes),
    Flag<&O::fixCulling>("--fix-culling", "Fix culling",
                         "Flip the winding of triangles whose normals all point against them", FixCulling),
    Flag<&O::weld>("--weld", "Weld", "Weld equal vertices and drop unused ones", Weld, kRecommended),
    Flag<&O::normals>("--normals", "Compute normals", "Compute smooth normals with hard edges", ComputeNormals),
    Flag<&O::unifyNormals>("--unify-normals", "Unify normals", "Flip normals that point against their triangle",
                           UnifyNormals),
    Step{"--uvs", "MAPPING[:SET[:world]]", "Generate UVs",
         "Generate UV set SET, 0 to 7 (default: 0); MAPPING is planar-x, planar-y, planar-z, cubic, cylindrical or "
         "spherical; :world keeps the mesh's units",
         false, false, nullptr, AddUVMapping, HasUVs, GenerateUVs},
    // Before merging, which drops the names of meshes and leaves emptied records, whose names are equal.
    Flag<&O::uniqueNames>("--unique-names", "Make names unique",
                          "Make names of nodes, meshes, materials and surfaces unique", MakeNamesUnique, kRecommended),
    Flag<&O::flatten>("--flatten", "Flatten", "Collapse the hierarchy into its root and merge surfaces by material",
                      FlattenScene, kRecommended, kOwnMeshes),
    Flag<&O::surfaceNames>("--surface-names", "Name surfaces", "Name surfaces after their mesh and material",
                           NameSurfaces, kRecommended),
    Flag<&O::uniqueNames>("", "Make surface names unique", "", MakeSurfaceNamesUnique),
    Flag<&O::collisionOffsets>("--collision-offsets", "Compute collision offsets",
                               "Give surfaces with overlapping bounds different collision offsets",
                               ComputeCollisionOffsets, kRecommended)};

constexpr std::array kSettings = {
    StepSetting{.option = "--keep-instances",
                .value = "N",
                .help = "Keep meshes with at least N uses shared instead of merging copies; 0 keeps none",
                .step = "--resolve-instances",
                .number = &O::keepInstances},
    StepSetting{
        .option = "--min-surfaces",
        .value = "N",
        .help =
            "Merge surfaces where at least N of them have the same material; 0 merges regardless of material, which "
            "changes what is shown",
        .step = "--flatten",
        .number = &O::minSurfaces},
    StepSetting{.option = "--max-vertices",
                .value = "N",
                .help = "Limit merged meshes to N vertices; -1 sets no limit",
                .step = "--flatten",
                .number = &O::maxVertices},
    StepSetting{.option = "--ignore-animation",
                .help = "Collapse animated nodes, too",
                .step = "--flatten",
                .flag = &O::ignoreAnimation},
    StepSetting{.option = "--keep",
                .value = "NAME",
                .help =
                    "Leave nodes of this name, and all nodes below them, as they are; * stands for any characters, ? "
                    "for one",
                .step = "--flatten",
                .names = &O::keep},
    StepSetting{.option = "--cell",
                .value = "SIZE",
                .help = "Merge only surfaces whose centres are in the same cube of a grid of this size, for culling",
                .step = "--flatten",
                .size = &O::cellSize}};

}  // namespace

std::span<const Step> Steps() { return kSteps; }

std::span<const StepSetting> StepSettings() { return kSettings; }

}  // namespace Pipeline
