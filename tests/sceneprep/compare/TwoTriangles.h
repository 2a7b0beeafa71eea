#pragma once

#include <sceneprep/import/gltf/GltfDocument.h>

#include <string>
#include <vector>

namespace SceneprepTests
{

/// A document with a red and a blue triangle, a camera, a light and a clip, to be changed by tests.
inline GltfDocument TwoTriangles()
{
    GltfDocument document;
    const int positions = document.Accessor<float>({0, 0, 0, 1, 0, 0, 0, 1, 0}, "VEC3", 3);
    const int normals = document.Accessor<float>({0, 0, 1, 0, 0, 1, 0, 0, 1}, "VEC3", 3);
    const int colors = document.Accessor<float>({1, 0, 0, 0, 1, 0, 0, 0, 1}, "VEC3", 3);
    const int times = document.Accessor<float>({0, 1}, "SCALAR", 1, {{"min", {0}}, {"max", {1}}});
    const int moves = document.Accessor<float>({0, 0, 0, 0, 0, 5}, "VEC3", 3);
    const Sceneprep::Json attributes = {{"POSITION", positions}, {"NORMAL", normals}, {"COLOR_0", colors}};
    document.json.update(Sceneprep::Json::parse(R"({
        "scenes": [{"nodes": [0]}],
        "nodes": [{"name": "Top", "children": [1, 2, 3, 4]},
                  {"name": "Left", "mesh": 0, "translation": [-2, 0, 0]},
                  {"name": "Right", "mesh": 1, "translation": [2, 0, 0]},
                  {"name": "Eye", "camera": 0, "translation": [0, 0, 9]},
                  {"name": "Lamp", "extensions": {"KHR_lights_punctual": {"light": 0}}}],
        "materials": [{"name": "Red", "pbrMetallicRoughness": {"baseColorFactor": [1, 0, 0, 1]}},
                      {"name": "Blue", "pbrMetallicRoughness": {"baseColorFactor": [0, 0, 1, 1]}}],
        "cameras": [{"name": "View", "type": "perspective", "perspective": {"yfov": 1, "znear": 0.1}}],
        "extensionsUsed": ["KHR_lights_punctual"],
        "extensions": {"KHR_lights_punctual": {"lights": [{"name": "Sun", "type": "directional", "intensity": 3}]}}})"));
    for (int material = 0; material < 2; ++material)
        document.json["meshes"].push_back({{"primitives", {{{"attributes", attributes}, {"material", material}}}}});
    document.json["animations"] = {
        {{"name", "Walk"},
         {"channels", {{{"sampler", 0}, {"target", {{"node", 1}, {"path", "translation"}}}}}},
         {"samplers", {{{"input", times}, {"output", moves}}}}}};
    return document;
}

}  // namespace SceneprepTests
