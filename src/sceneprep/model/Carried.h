#pragma once

#include <importing/math/D3DXMath.h>
#include <sceneprep/model/Json.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// @file
/// The content of a model file that the container does not hold, in terms of glTF 2.0. Every object is the JSON object
/// of the file with its name, extras and extensions; indices in it that refer to other objects refer to the lists of
/// Carried instead of those of the file.

/// The numbers of an accessor as the file stores them, without gaps.
struct CarriedAccessor
{
    int componentType = 0;  ///< as in glTF: 5120 to 5126
    std::string type = {};  ///< "SCALAR", "VEC3", ...
    bool isNormalized = false;
    std::size_t count = 0;
    std::vector<std::uint8_t> bytes = {};  ///< tightly packed, little-endian
    Json min = {};                         ///< null if the file has none
    Json max = {};
};

/// An image. Its bytes are an entry of Textures::embedded or a separate file.
struct CarriedImage
{
    Json object = Json::object();  ///< without uri and bufferView
    int embedded = -1;             ///< index into Textures::embedded; -1 for a file
    std::filesystem::path file;    ///< as the model file refers to it, decoded; empty for embedded images
};

/// A material of the file, and the extras and extensions of its primitives. The container has one material for each
/// combination, so that only surfaces that agree in everything are merged.
struct CarriedMaterial
{
    /// For materials of other formats: the properties that the container's material does not have, as a merge patch for
    /// the object that is written.
    Json patch = Json::object();
    /// Index into Carried::materials; -1 for the default material of the format; kNotCarried for a material of the
    /// container that did not come from a glTF file.
    int material = kNotCarried;
    Json primitive = Json::object();  ///< extras and extensions of the primitives, such as variants

    static constexpr int kNotCarried = -2;
};

/// A primitive that is written unchanged: morph targets, points, lines. Strips and loops of lines keep their mode.
struct CarriedPrimitive
{
    int mode = 4;
    std::optional<CarriedAccessor> indices = {};
    std::map<std::string, CarriedAccessor> attributes = {};
    std::vector<std::map<std::string, CarriedAccessor>> targets = {};
};

/// A mesh of the container: one primitive of a mesh of the file.
struct CarriedMesh
{
    int mesh = -1;                                   ///< index into Carried::meshes
    std::optional<CarriedPrimitive> primitive = {};  ///< for pinned meshes
};

/// A node of the container.
struct CarriedNode
{
    Json object = Json::object();  ///< name, extras, extensions, weights, and translation, rotation, scale or matrix
    D3DXMATRIX local =
        {};         ///< the local matrix that the container got; while it is unchanged, that of `object` is written
    int skin = -1;  ///< index into Carried::skins, for the surfaces of the node
};

/// A camera or light of the container: one use by a node.
struct CarriedObject
{
    int object = -1;            ///< index into Carried::cameras or Carried::lights
    std::string nodeName = {};  ///< name of the node that references it
    bool isOwnNode = true;      ///< false if the node references other content, too
};

struct CarriedSkin
{
    Json object = Json::object();  ///< name, extras, extensions
    std::vector<int> joints = {};  ///< node keys
    int skeleton = -1;             ///< node key
    std::optional<CarriedAccessor> inverseBindMatrices = {};
};

struct CarriedChannel
{
    int node = -1;          ///< node key; -1 for pointers to other objects
    std::string path = {};  ///< "translation", "rotation", "scale", "weights" or "pointer"
    /// For "pointer": the JSON pointer, whose first two parts name a list and a key in it: "/materials/3/...",
    /// "/nodes/7/...", "/cameras/0/...", "/extensions/KHR_lights_punctual/lights/1/...".
    std::string pointer = {};
    int sampler = 0;  ///< index into CarriedClip::samplers
    Json extras = {};
};

struct CarriedSampler
{
    int input = -1;   ///< index into Carried::accessors
    int output = -1;  ///< index into Carried::accessors
    std::string interpolation = "LINEAR";
};

struct CarriedClip
{
    Json object = Json::object();  ///< name, extras, extensions
    std::vector<CarriedChannel> channels = {};
    std::vector<CarriedSampler> samplers = {};
};

struct Carried
{
    Json asset = Json::object();             ///< the members that describe the content, such as copyright and extras
    Json scene = Json::object();             ///< name, extras and extensions of the scene that was read
    Json extensions = Json::object();        ///< of the document, without the lists below
    Json extras = {};                        ///< of the document
    std::vector<std::string> required = {};  ///< extensionsRequired; those that are still used stay required
    bool hasMadeRoot = false;                ///< the root node was added because the file's scene has none or several

    std::vector<Json> materials, textures, samplers, cameras, lights, meshes;
    std::vector<CarriedImage> images;
    std::vector<CarriedSkin> skins;
    std::vector<CarriedClip> clips;
    std::vector<CarriedAccessor> accessors;  ///< of clips
    std::vector<std::vector<std::uint8_t>>
        blobs;  ///< the bytes that "bufferView" in extensions of the document refers to

    std::vector<CarriedMaterial> materialOf;  ///< [MaterialLibrary]
    std::vector<CarriedObject> cameraOf;      ///< [CameraLibrary]
    std::vector<CarriedObject> lightOf;       ///< [LightLibrary]
    std::vector<CarriedNode> nodes;           ///< by node key
    std::vector<CarriedMesh> meshOf;          ///< by mesh key
};

}  // namespace Sceneprep
