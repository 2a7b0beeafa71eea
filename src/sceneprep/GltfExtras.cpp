#include <sceneprep/GltfExtras.h>

#include <fmt/format.h>
#include <sceneprep/Error.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace Sceneprep
{

namespace
{

using Json = nlohmann::ordered_json;

/// The parts of a binary file: a header of three words, then chunks of two words and their content, JSON first.
constexpr std::size_t kHeader = 12;
constexpr std::size_t kChunkHeader = 8;

std::uint32_t WordAt(const std::string& bytes, std::size_t position)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + position, sizeof(word));
    return word;
}

void SetWord(std::string& bytes, std::size_t position, std::size_t value)
{
    const auto word = static_cast<std::uint32_t>(value);
    std::memcpy(bytes.data() + position, &word, sizeof(word));
}

bool IsBinary(const std::string& bytes) { return bytes.compare(0, 4, "glTF") == 0; }

bool HasExtras(const aiNode& node) { return node.mMetaData != nullptr && node.mMetaData->mNumProperties > 0; }

Json ExtrasOf(const aiNode& node)
{
    Json extras = Json::object();
    for (unsigned i = 0; i < node.mMetaData->mNumProperties; ++i)
    {
        const aiMetadataEntry& entry = node.mMetaData->mValues[i];
        const char* key = node.mMetaData->mKeys[i].C_Str();
        if (entry.mType == AI_INT32)
            extras[key] = *static_cast<std::int32_t*>(entry.mData);
        else if (entry.mType == AI_AISTRING)
            extras[key] = static_cast<aiString*>(entry.mData)->C_Str();
    }
    return extras;
}

/// The exporter keeps the tree as it is, so both are walked side by side.
/// @return whether any node has got extras.
bool AddExtrasTo(Json& document, const aiNode& root)
{
    bool added = false;
    std::vector<std::pair<const aiNode*, std::size_t>> pending = {
        {&root, document.at("scenes").at(0).at("nodes").at(0).get<std::size_t>()}};
    while (!pending.empty())
    {
        const auto [node, index] = pending.back();
        pending.pop_back();
        Json& target = document.at("nodes").at(index);
        if (HasExtras(*node))
        {
            target["extras"] = ExtrasOf(*node);
            added = true;
        }
        for (unsigned c = 0; c < node->mNumChildren; ++c)
            pending.emplace_back(node->mChildren[c], target.at("children").at(c).get<std::size_t>());
    }
    return added;
}

std::string AsText(const Json& document, int indent)
{
    // Names come from files and need not be UTF-8.
    return document.dump(indent, ' ', false, Json::error_handler_t::replace);
}

std::string Rewritten(const std::string& bytes, const aiScene& scene)
{
    const bool binary = IsBinary(bytes);
    const std::size_t start = binary ? kHeader + kChunkHeader : 0;
    const std::size_t length = binary ? WordAt(bytes, kHeader) : bytes.size();
    Json document = Json::parse(bytes.substr(start, length));
    if (!AddExtrasTo(document, *scene.mRootNode))
        return bytes;
    if (!binary)
        return AsText(document, 2);

    std::string text = AsText(document, -1);
    text.resize((text.size() + 3) / 4 * 4, ' ');
    std::string result = bytes.substr(0, start) + text + bytes.substr(start + length);
    SetWord(result, 8, result.size());
    SetWord(result, kHeader, text.size());
    return result;
}

std::string ReadAll(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

void AddExtras(const aiScene& scene, const std::filesystem::path& file)
{
    const std::string bytes = ReadAll(file);
    std::string result;
    try
    {
        result = Rewritten(bytes, scene);
    }
    catch (const std::exception& error)
    {
        throw ToolError(fmt::format("cannot add extras to {}: {}; try another format", file.filename().string(),
                                    OneLine(error.what())));
    }
    if (result == bytes)
        return;
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << result;
    stream.close();
    if (!stream)
        throw ToolError(fmt::format("cannot write {}: the disk may be full; make room", file.filename().string()));
}

}  // namespace Sceneprep
