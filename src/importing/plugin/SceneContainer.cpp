#include <importing/plugin/SceneContainer.h>

namespace Importing
{

SceneContainer::SceneContainer()
{
    SetChannelName("SceneContainer");
    SceneContainer::Clear();
}

SceneContainer::SceneContainer(const SceneContainer&) = default;
SceneContainer& SceneContainer::operator=(const SceneContainer&) = default;
SceneContainer::~SceneContainer() = default;

void SceneContainer::CallChannel() {}

bool SceneContainer::SaveChannel(VykFileSaver& saver) { return Vyk_Channel::SaveChannel(saver); }

bool SceneContainer::LoadChannel(VykFileLoader& loader, Vyk_ChannelGroup* group)
{
    return Vyk_Channel::LoadChannel(loader, group);
}

void SceneContainer::DoDependencyInit(Vyk_List* /*list*/) {}

void SceneContainer::SetStatus(int status) { status_ = status; }

int SceneContainer::GetStatus() { return status_; }

void SceneContainer::SetName(const std::string& name) { name_ = name; }

std::string SceneContainer::GetName() { return name_; }

void SceneContainer::Clear()
{
    AnimationLibrary.clear();
    CameraLibrary.clear();
    LightLibrary.clear();
    GeometryLibrary.clear();
    ReservedList.clear();
    TextureLibrary.clear();
    MaterialLibrary.clear();
    NodeLibrary.clear();
    SurfaceLibrary.clear();
    SetStatus(-1);
    rootNodeIndex_ = -1;
    SetName("");
}

void SceneContainer::SetRootNodeIndex(int node) { rootNodeIndex_ = node; }

int SceneContainer::GetRootNodeIndex() const { return rootNodeIndex_; }

}  // namespace Importing
