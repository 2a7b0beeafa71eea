/// @file
/// Writes a large scene that whole runs are timed with: make_scene OUTPUT NODES [own-meshes]
///
/// With own-meshes no two surfaces share a mesh. Prints how many bytes of the heap the scene takes as a SceneContainer.

#include <runs/TownScene.h>
#include <sceneprep/export/ExportModel.h>

#include <malloc.h>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>

namespace
{

std::size_t HeapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void MakeScene(int nodes, bool ownMeshes, const char* file)
{
    const std::size_t before = HeapInUse();
    Sceneprep::Model model;
    Importing::SceneContainer& scene = *model.scene;
    FillTown(scene, nodes);
    if (ownMeshes)
        scene.ResolveGeomInstances();
    std::cout << HeapInUse() - before << '\n';

    Sceneprep::WorkState state;
    Sceneprep::Progress silent(std::cerr, false);
    Sceneprep::ExportModel(model, file, silent, state);
}

}  // namespace

int main(int argc, char** argv)
{
    const int nodes = argc > 2 ? std::atoi(argv[2]) : 0;
    const bool ownMeshes = argc == 4 && argv[3] == std::string_view("own-meshes");
    if (nodes < 1 || (argc != 3 && !ownMeshes))
    {
        std::cerr << "usage: make_scene OUTPUT NODES [own-meshes]\n";
        return 2;
    }
    try
    {
        MakeScene(nodes, ownMeshes, argv[1]);
    }
    catch (const std::exception& error)
    {
        std::cerr << "make_scene: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
