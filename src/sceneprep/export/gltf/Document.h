#pragma once

#include <sceneprep/model/Json.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace Sceneprep::Gltf
{

/// A glTF document under construction: its lists, to which the writers append entries.
struct Document
{
    Json asset = Json::object();
    Json scene = {};  ///< null for a document without a scene
    std::vector<Json> nodes, meshes, materials, textures, samplers, images, cameras, skins, animations, accessors,
        bufferViews;
    std::vector<Json> lights;  ///< of KHR_lights_punctual
    Json extensions = Json::object();
    Json extras = {};

    /// Extensions in use that no object of the document names, such as KHR_mesh_quantization.
    std::set<std::string> impliedExtensions;
    /// Extensions that readers must support. Those that are not in use at the end are not written.
    std::set<std::string> requiredExtensions;
};

/// Appends an entry to a list of the document and returns its index.
int Append(std::vector<Json>& list, Json entry);

/// @param list   a list of the document
/// @param index  a valid index
inline Json& EntryAt(std::vector<Json>& list, int index) { return list[static_cast<std::size_t>(index)]; }

/// Returns a value as compact JSON text. Bytes that are not UTF-8 become U+FFFD.
std::string TextOf(const Json& value);

/// Returns the names of all extensions that the document uses, sorted. Extras are not searched.
std::set<std::string> UsedExtensions(const Document& document);

/// Returns the document as JSON text, one line for each entry of a list.
/// @param bufferSize  length of the buffer in bytes; no buffer is written if it is 0
/// @param bufferUri   its file; empty for the binary chunk of a .glb file
std::string TextOf(const Document& document, std::size_t bufferSize, const std::string& bufferUri);

}  // namespace Sceneprep::Gltf
