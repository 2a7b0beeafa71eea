#include <sceneprep/export/gltf/NodeObjects.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/export/gltf/Objects.h>
#include <sceneprep/export/gltf/Placement.h>

#include <optional>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;

constexpr const char* kPunctualLights = "KHR_lights_punctual";

/// Returns the carried data of a camera or light; null if it was not read from glTF.
const CarriedObject* CarriedOf(const std::vector<CarriedObject>& objects, int index)
{
    const bool isCarried = Importing::IsValidIndex(index, objects.size()) && At(objects, index).object >= 0;
    return isCarried ? &At(objects, index) : nullptr;
}

/// Returns the transform of a light in its node. A point light has no direction, so that its position is enough.
D3DXMATRIX PlacementOfLight(Importing::Light& light)
{
    const Importing::Transform offset = light.GetOffsetMatrix();
    if (light.GetType() != Importing::Light::LightType::Point)
        return PlacementOf(offset);
    const D3DXMATRIX matrix = Importing::Transform(offset).GetMatrix();
    D3DXMATRIX placement;
    return *D3DXMatrixTranslation(&placement, matrix._41, matrix._42, matrix._43);
}

int FindIn(const std::unordered_map<int, int>& written, int key)
{
    const auto found = written.find(key);
    return found == written.end() ? -1 : found->second;
}

/// Appends an object of the input, once.
int AppendCarried(int key, const std::vector<Json>& source, std::vector<Json>& list,
                  std::unordered_map<int, int>& written)
{
    const auto [found, isNew] = written.emplace(key, static_cast<int>(list.size()));
    if (isNew)
        list.push_back(At(source, key));
    return found->second;
}

}  // namespace

void NodeObjectWriter::Write(int node, int target)
{
    Importing::Node& source = At(model_.scene->NodeLibrary, node);
    for (const std::int32_t camera : source.CameraList)
        WriteCamera(camera, node, target);
    for (const std::int32_t light : source.LightList)
        WriteLight(light, node, target);
}

void NodeObjectWriter::WriteCamera(int camera, int node, int target)
{
    Importing::Camera& source = At(model_.scene->CameraLibrary, camera);
    const CarriedObject* carried = CarriedOf(model_.carried.cameraOf, camera);
    const int index = carried == nullptr
                          ? Append(document_.cameras, ConvertCamera(source))
                          : AppendCarried(carried->object, model_.carried.cameras, document_.cameras, cameras_);
    const bool isTaken = EntryAt(document_.nodes, target).contains("camera") || IsOfOtherNode(carried, node);
    const std::string name = carried == nullptr ? source.GetName() : carried->nodeName;
    EntryAt(document_.nodes, Place(PlacementOf(source.GetOffsetMatrix()), name, isTaken, target))["camera"] = index;
}

void NodeObjectWriter::WriteLight(int light, int node, int target)
{
    Importing::Light& source = At(model_.scene->LightLibrary, light);
    const CarriedObject* carried = CarriedOf(model_.carried.lightOf, light);
    std::optional<Json> converted = carried == nullptr ? ConvertLight(source) : std::nullopt;
    if (carried == nullptr && !converted)
    {
        ++droppedLights_;
        return;
    }
    const int index = converted ? Append(document_.lights, std::move(*converted))
                                : AppendCarried(carried->object, model_.carried.lights, document_.lights, lights_);
    const Json& object = EntryAt(document_.nodes, target);
    const bool isTaken = (object.contains("extensions") && object["extensions"].contains(kPunctualLights)) ||
                         IsOfOtherNode(carried, node);
    const std::string name = carried == nullptr ? source.GetName() : carried->nodeName;
    const int place = Place(PlacementOfLight(source), name, isTaken, target);
    EntryAt(document_.nodes, place)["extensions"][kPunctualLights] = {{"light", index}};
}

/// Returns the node itself if it can hold the camera or light, otherwise a new child.
int NodeObjectWriter::Place(const D3DXMATRIX& matrix, const std::string& name, bool isTaken, int target)
{
    Json transform = Json::object();
    if (IsFinite(matrix))
        SetMatrix(matrix, transform);
    else
        ++unplaced_;
    if (transform.empty() && !isTaken)
        return target;
    const int child = AppendChild(target, name, document_);
    EntryAt(document_.nodes, child).update(transform);
    return child;
}

/// Returns whether the camera or light had a node of its own in the input, and this is another node.
bool NodeObjectWriter::IsOfOtherNode(const CarriedObject* carried, int node) const
{
    if (carried == nullptr || !carried->isOwnNode)
        return false;
    const CarriedNode* source = CarriedNodeOf(model_, node);
    const std::string name =
        source == nullptr ? At(model_.scene->NodeLibrary, node).GetName() : source->object.value("name", std::string());
    return name != carried->nodeName;
}

int NodeObjectWriter::FindCamera(int key) const { return FindIn(cameras_, key); }

int NodeObjectWriter::FindLight(int key) const { return FindIn(lights_, key); }

void NodeObjectWriter::AddNotes(Notes& notes) const
{
    notes.AddLoss("lights", "dropped lights without a type", droppedLights_);
}

}  // namespace Sceneprep::Gltf
