/// @file
/// Writes a large scene that whole runs are timed with: make_scene OUTPUT [NODES]

#include <runs/TownScene.h>
#include <sceneprep/ExportModel.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    constexpr int kNodes = 50000;
    const int nodes = argc > 2 ? std::atoi(argv[2]) : kNodes;
    if (argc < 2 || argc > 3 || nodes < 1)
    {
        std::cerr << "usage: make_scene OUTPUT [NODES]\n";
        return 2;
    }
    try
    {
        Importing::SceneContainer scene;
        FillTown(scene, nodes);
        Sceneprep::Progress silent(std::cerr, false);
        Sceneprep::ExportModel(scene, {}, argv[1], silent);
    }
    catch (const std::exception& error)
    {
        std::cerr << "make_scene: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
