#include <pictures/SceneDrawing.h>

#include <pipeline/scene/Hierarchy.h>

namespace Pictures
{

void AddScene(Stage& stage, Importing::SceneContainer& scene, const SurfaceStyle& styleOf)
{
    const Pipeline::NodeWalk walk = Pipeline::WalkFromRoot(scene);
    const std::vector<D3DXMATRIX> matrices = Pipeline::MatricesInRootFrame(scene, walk);
    std::size_t listing = 0;
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        for (const std::int32_t surface : scene.NodeLibrary[position].SurfaceList)
        {
            const int geometry = scene.SurfaceLibrary.at(static_cast<std::size_t>(surface)).GetGeometryID();
            if (geometry >= 0)
                stage.Add(scene.GeometryLibrary.at(static_cast<std::size_t>(geometry)), matrices[position],
                          styleOf(surface, listing));
            ++listing;
        }
    }
}

}  // namespace Pictures
