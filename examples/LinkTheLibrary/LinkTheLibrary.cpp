// The smallest program that uses the library.

#include <importing/plugin/SceneContainer.h>

#include <cstdio>

int main()
{
    Importing::SceneContainer scene;
    scene.SetName("An empty scene");
    std::printf("%s has %zu nodes\n", scene.GetName().c_str(), scene.NodeLibrary.size());
    return scene.NodeLibrary.empty() ? 0 : 1;
}
