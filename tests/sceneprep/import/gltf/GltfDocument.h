#pragma once

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/import/gltf/ReadGltf.h>
#include <sceneprep/report/Base64.h>
#include <sceneprep/run/Error.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace SceneprepTests
{

/// A glTF document that a test builds: JSON, and one buffer as a data URI.
class GltfDocument
{
public:
    Sceneprep::Json json = {{"asset", {{"version", "2.0"}}}};

    /// Parses the JSON text and adds the asset.
    static GltfDocument Parse(const std::string& text)
    {
        GltfDocument document;
        document.json.update(Sceneprep::Json::parse(text));
        return document;
    }

    /// Returns the index of a new buffer view with these bytes.
    int View(const std::string& bytes)
    {
        bytes_.resize((bytes_.size() + 3) / 4 * 4, '\0');
        json["bufferViews"].push_back({{"buffer", 0}, {"byteOffset", bytes_.size()}, {"byteLength", bytes.size()}});
        bytes_ += bytes;
        return static_cast<int>(json["bufferViews"].size() - 1);
    }

    /// @param components  numbers of an element
    /// @param more        further members of the accessor
    /// Adds an accessor with these numbers and returns its index.
    template <typename T>
    int Accessor(const std::vector<T>& numbers, const std::string& type, std::size_t components,
                 const Sceneprep::Json& more = Sceneprep::Json::object())
    {
        const std::string bytes(reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(T));
        const int view = View(bytes);  // adds to the document, which moves its members
        json["accessors"].push_back({{"bufferView", view},
                                     {"componentType", ComponentType<T>()},
                                     {"count", numbers.size() / components},
                                     {"type", type}});
        json["accessors"].back().update(more);
        return static_cast<int>(json["accessors"].size() - 1);
    }

    /// Adds a scene with one node "Node" that references a mesh "Mesh" of one triangle.
    Sceneprep::Json& AddTriangle()
    {
        const int positions = Accessor<float>({0, 0, 0, 1, 0, 0, 0, 1, 0}, "VEC3", 3);
        json["scenes"] = {{{"nodes", {0}}}};
        json["nodes"] = {{{"name", "Node"}, {"mesh", 0}}};
        json["meshes"].push_back({{"name", "Mesh"}});
        json["meshes"][0]["primitives"].push_back({{"attributes", {{"POSITION", positions}}}});
        return Primitive();
    }

    Sceneprep::Json& Primitive() { return json["meshes"][0]["primitives"][0]; }

    /// Returns the text of the file.
    std::string Text() const
    {
        Sceneprep::Json complete = json;
        if (!bytes_.empty() && !complete.contains("buffers"))
        {
            std::ostringstream base64;
            Sceneprep::Report::WriteBase64(base64, bytes_.data(), bytes_.size());
            complete["buffers"] = {
                {{"byteLength", bytes_.size()}, {"uri", "data:application/octet-stream;base64," + base64.str()}}};
        }
        return complete.dump();
    }

    const std::string& Bytes() const { return bytes_; }

    Sceneprep::Model Read(const Sceneprep::GltfReadOptions& options = {}) const
    {
        const TemporaryFolder folder;
        return ReadFile(folder.Write("test.gltf", Text()), options);
    }

    static Sceneprep::Model ReadFile(const std::filesystem::path& file, const Sceneprep::GltfReadOptions& options = {})
    {
        Sceneprep::Model model;
        Sceneprep::ReadGltf(Sceneprep::OpenGltf(file).value(), model, options);
        return model;
    }

    /// Returns the error of reading the file, without the name of the file; empty if the document is valid.
    std::string Problem(const Sceneprep::GltfReadOptions& options = {}) const
    {
        try
        {
            Read(options);
        }
        catch (const Sceneprep::ToolError& error)
        {
            const std::string text = error.what();
            const std::size_t file = text.find("test.gltf: ");
            return file == std::string::npos ? text : text.substr(file + 11);
        }
        return {};
    }

private:
    template <typename T>
    static int ComponentType()
    {
        if constexpr (std::is_same_v<T, float>)
            return 5126;
        else if constexpr (sizeof(T) == 4)
            return 5125;
        else if constexpr (sizeof(T) == 2)
            return std::is_signed_v<T> ? 5122 : 5123;
        else
            return std::is_signed_v<T> ? 5120 : 5121;
    }

    std::string bytes_;
};

}  // namespace SceneprepTests
