// Uses the library as another project would: exported classes, free functions and inline arithmetic of the headers.
// Exits with status 0 if all of them behave, and names the first that does not.

#include <brindle/ChannelType.h>
#include <importing/math/DecomposeMatrix.h>
#include <importing/math/Products.h>
#include <importing/plugin/EntryPoints.h>
#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/SceneStats.h>

#include <cstdio>
#include <memory>
#include <string>

using namespace Importing;

namespace
{

/// Returns a value that the compiler does not know, so that it cannot evaluate arithmetic beforehand.
float AtRunTime(float value)
{
    const volatile float unknown = value;
    return unknown;
}

/// A vector times itself: both products of each component round alike, so every difference is exactly 0. A fused
/// multiplication and subtraction rounds only one of them.
bool InlineArithmeticIsNotFused()
{
    const D3DXVECTOR3 a(AtRunTime(0.1F), AtRunTime(0.3F), AtRunTime(0.7F));
    const D3DXVECTOR3 b(AtRunTime(0.1F), AtRunTime(0.3F), AtRunTime(0.7F));
    return Cross(a, b) == D3DXVECTOR3(0, 0, 0);
}

bool FreeFunctionsLink()
{
    D3DXMATRIX matrix;
    D3DXMatrixScaling(&matrix, -2, 2, 2);
    D3DXVECTOR3 scale;
    D3DXQUATERNION rotation;
    D3DXVECTOR3 translation;
    return DecomposeMatrix(scale, rotation, translation, matrix) == 0 && scale == D3DXVECTOR3(-2, 2, 2);
}

bool ScenesFlatten()
{
    SceneContainer scene;
    Node root;
    root.SetName("Root");
    root.ChildList.push_back(1);
    scene.NodeLibrary.push_back(root);
    scene.NodeLibrary.push_back(Node());
    scene.SetRootNodeIndex(0);
    scene.FlatHierarchy(0, Transform::Indentity, 0, Transform::Indentity, 2, -1, true);
    return scene.NodeLibrary.size() == 1 && scene.NodeLibrary[0].GetName() == "Root";
}

bool PipelineCounts()
{
    SceneContainer scene;
    scene.NodeLibrary.resize(3);
    return Pipeline::CountScene(scene).nodes == 3;
}

bool EntryPointsMakeAContainer()
{
    const std::unique_ptr<Vyk_Channel> channel(InitDLL());
    return dynamic_cast<SceneContainer*>(channel.get()) != nullptr &&
           std::string(GetType()->name.data()) == "SceneContainer";
}

bool Check(const char* what, bool holds)
{
    if (!holds)
        std::printf("consumer: %s: failed\n", what);
    return holds;
}

}  // namespace

int main()
{
    const bool allHold = Check("inline arithmetic is not fused", InlineArithmeticIsNotFused()) &&
                         Check("free functions link and work", FreeFunctionsLink()) &&
                         Check("a scene is flattened", ScenesFlatten()) &&
                         Check("the pipeline library counts", PipelineCounts()) &&
                         Check("the entry points make a container", EntryPointsMakeAContainer());
    return allHold ? 0 : 1;
}
