#include <pipeline/steps/PrepareSteps.h>

#include <pipeline/steps/FlattenSteps.h>
#include <pipeline/steps/GeometrySteps.h>
#include <pipeline/steps/NameSteps.h>
#include <pipeline/steps/OrientationSteps.h>
#include <pipeline/steps/SceneSteps.h>

namespace Pipeline
{

StepSequence MakePipeline(const StepOptions& options)
{
    StepSequence pipeline;
    if (NeedsOwnMeshes(options))
        pipeline.AddCounting("Resolve instances", ResolveInstances);
    if (options.repairMirrors)
        pipeline.AddGradual("Repair mirrors", RepairMirrors);
    if (options.checkOrientation)
        pipeline.AddCounting("Check orientation", CheckOrientation);
    AddGeometrySteps(pipeline, options);
    // Before merging, which takes the names of meshes and leaves emptied records that would count as equal names.
    if (options.uniqueNames)
        pipeline.AddCounting("Make names unique", MakeNamesUnique);
    if (options.flatten)
        AddFlattenSteps(pipeline, {options.minSurfaces, options.maxVertices, options.ignoreAnimation});
    if (options.surfaceNames)
        pipeline.AddCounting("Name surfaces", NameSurfaces);
    if (options.uniqueNames)
        pipeline.AddCounting("Make surface names unique", MakeSurfaceNamesUnique);
    if (options.collisionOffsets)
        pipeline.AddCounting("Compute collision offsets", ComputeCollisionOffsets);
    return pipeline;
}

bool NeedsOwnMeshes(const StepOptions& options)
{
    return options.resolveInstances || options.repairMirrors || options.checkOrientation || options.flatten;
}

void ChooseRecommended(StepOptions& options)
{
    options.repairMirrors = true;
    options.weld = true;
    options.flatten = true;
    options.surfaceNames = true;
    options.uniqueNames = true;
    options.collisionOffsets = true;
}

}  // namespace Pipeline
