#pragma once

#include <sceneprep/TestFiles.h>

#include <cstdint>
#include <string>
#include <vector>

namespace SceneprepTests
{

/// A triangle that follows the bones Hip, at (0, 1, 0), and Leg, 2 above it: its first corner the Hip, the last one the
/// Leg, the one between them to a quarter the Hip. In the bind pose, all corners are at the positions of their bones.
/// @{
inline std::filesystem::path WriteSkinnedGltf(const TemporaryFolder& folder)
{
    std::string bytes;
    const auto add = [&bytes](const auto& numbers) {
        bytes.append(reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(numbers[0]));
    };
    add(std::vector<float>{0, 0, 0, 1, 0, 0, 0, 1, 0});                        // positions
    add(std::vector<std::uint16_t>{0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0});       // joints
    add(std::vector<float>{1, 0, 0, 0, 0.25F, 0.75F, 0, 0, 1, 0, 0, 0});       // weights
    add(std::vector<float>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, -1, 0, 1});  // inverse binds
    add(std::vector<float>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, -3, 0, 1});
    folder.Write("skinned.bin", bytes);
    return folder.Write("skinned.gltf", R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
"nodes":[{"name":"Top","children":[1,2]},{"name":"Hip","translation":[0,1,0],"children":[3]},
{"name":"Body","mesh":0,"skin":0},{"name":"Leg","translation":[0,2,0]}],
"meshes":[{"name":"Skin","primitives":[{"attributes":{"POSITION":0,"JOINTS_0":1,"WEIGHTS_0":2}}]}],
"skins":[{"joints":[1,3],"inverseBindMatrices":3}],
"accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]},
{"bufferView":1,"componentType":5123,"count":3,"type":"VEC4"},{"bufferView":2,"componentType":5126,"count":3,"type":"VEC4"},
{"bufferView":3,"componentType":5126,"count":2,"type":"MAT4"}],
"bufferViews":[{"buffer":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":24},
{"buffer":0,"byteOffset":60,"byteLength":48},{"buffer":0,"byteOffset":108,"byteLength":128}],
"buffers":[{"byteLength":236,"uri":"skinned.bin"}]})");
}

inline std::filesystem::path WriteSkinnedCollada(const TemporaryFolder& folder)
{
    return folder.Write("skinned.dae", R"(<?xml version="1.0"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1"><asset><up_axis>Y_UP</up_axis></asset>
<library_geometries><geometry id="g" name="Skin"><mesh>
<source id="p"><float_array id="pa" count="9">0 0 0 1 0 0 0 1 0</float_array><technique_common>
<accessor source="#pa" count="3" stride="3"><param name="X" type="float"/><param name="Y" type="float"/>
<param name="Z" type="float"/></accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles></mesh></geometry>
</library_geometries>
<library_controllers><controller id="c"><skin source="#g"><bind_shape_matrix>1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1</bind_shape_matrix>
<source id="j"><Name_array id="ja" count="2">hip leg</Name_array><technique_common>
<accessor source="#ja" count="2" stride="1"><param name="JOINT" type="Name"/></accessor></technique_common></source>
<source id="b"><float_array id="ba" count="32">1 0 0 0 0 1 0 -1 0 0 1 0 0 0 0 1 1 0 0 0 0 1 0 -3 0 0 1 0 0 0 0 1</float_array>
<technique_common><accessor source="#ba" count="2" stride="16"><param name="TRANSFORM" type="float4x4"/></accessor>
</technique_common></source>
<source id="w"><float_array id="wa" count="3">1 0.25 0.75</float_array><technique_common>
<accessor source="#wa" count="3" stride="1"><param name="WEIGHT" type="float"/></accessor></technique_common></source>
<joints><input semantic="JOINT" source="#j"/><input semantic="INV_BIND_MATRIX" source="#b"/></joints>
<vertex_weights count="3"><input semantic="JOINT" source="#j" offset="0"/><input semantic="WEIGHT" source="#w" offset="1"/>
<vcount>1 2 1</vcount><v>0 0 0 1 1 2 1 0</v></vertex_weights></skin></controller></library_controllers>
<library_visual_scenes><visual_scene id="s"><node id="top" name="Top">
<node id="Hip" sid="hip" name="Hip" type="JOINT"><translate>0 1 0</translate>
<node id="Leg" sid="leg" name="Leg" type="JOINT"><translate>0 2 0</translate></node></node>
<node id="body" name="Body"><instance_controller url="#c"><skeleton>#Hip</skeleton></instance_controller></node>
</node></visual_scene></library_visual_scenes><scene><instance_visual_scene url="#s"/></scene></COLLADA>)");
}
/// @}

}  // namespace SceneprepTests
