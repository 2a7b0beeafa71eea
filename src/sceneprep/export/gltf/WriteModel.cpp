#include <sceneprep/export/gltf/WriteModel.h>

#include <fmt/format.h>
#include <sceneprep/export/gltf/BuildModel.h>
#include <sceneprep/model/Uri.h>
#include <sceneprep/run/Error.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <limits>
#include <string>
#include <system_error>

namespace Sceneprep::Gltf
{

using Pipeline::PartListener;

namespace
{

namespace fs = std::filesystem;

/// The share of building in the whole work, roughly.
constexpr double kBuilding = 0.8;

/// Returns a name for files that the model refers to: nothing in it has to be encoded in a URI.
std::string PlainName(std::string stem)
{
    std::replace_if(
        stem.begin(), stem.end(), [](char letter) { return EncodeUri({letter}) != std::string{letter}; }, '_');
    return stem;
}

/// @param model  the file that the user named
void Check(const std::ofstream& stream, const fs::path& model)
{
    if (!stream)
        throw ToolError(fmt::format("cannot write {}: is the disk full? Make room or choose another folder",
                                    model.filename().string()));
}

std::ofstream Open(const fs::path& file, const fs::path& model)
{
    std::ofstream stream(file, std::ios::binary);
    Check(stream, model);
    return stream;
}

void Close(std::ofstream& stream, const fs::path& model)
{
    stream.close();
    Check(stream, model);
}

void PutWords(std::ostream& stream, const std::array<std::uint32_t, 2>& words)
{
    stream.write(reinterpret_cast<const char*>(words.data()), sizeof(words));
}

void WriteBinary(const Document& document, const Buffers& buffers, const fs::path& file)
{
    constexpr std::uint32_t kMagic = 0x46546C67;   // "glTF"
    constexpr std::uint32_t kJson = 0x4E4F534A;    // "JSON"
    constexpr std::uint32_t kBinary = 0x004E4942;  // "BIN"
    std::string text = TextOf(document, buffers.Size(), "");
    text.resize((text.size() + 3) / 4 * 4, ' ');
    const std::size_t padded = (buffers.Size() + 3) / 4 * 4;
    const std::size_t size = 12 + 8 + text.size() + (padded > 0 ? 8 + padded : 0);
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw ToolError(
            fmt::format("cannot write {}: a .glb file holds at most 4 GiB, this one needs {} bytes; choose "
                        "the extension .gltf",
                        file.filename().string(), size));
    std::ofstream stream = Open(file, file);
    const auto version = static_cast<std::uint32_t>(2);
    PutWords(stream, {kMagic, version});
    const auto length = static_cast<std::uint32_t>(size);
    stream.write(reinterpret_cast<const char*>(&length), sizeof(length));
    PutWords(stream, {static_cast<std::uint32_t>(text.size()), kJson});
    stream << text;
    if (padded > 0)
    {
        PutWords(stream, {static_cast<std::uint32_t>(padded), kBinary});
        buffers.WriteTo(stream);
        stream.write("\0\0\0", static_cast<std::streamsize>(padded - buffers.Size()));
    }
    Close(stream, file);
}

void CopyImages(const std::vector<ImageCopy>& copies, const fs::path& folder)
{
    for (const ImageCopy& copy : copies)
    {
        std::error_code error;
        fs::copy_file(copy.source, folder / copy.name, fs::copy_options::overwrite_existing, error);
        if (error)
            throw ToolError(
                fmt::format("cannot copy the image {} to {}: {}", copy.source.string(), copy.name, error.message()));
    }
}

}  // namespace

Notes WriteModel(const Model& model, const fs::path& file, WriteOptions options, const PartListener& listener)
{
    options.isBinary = file.extension() != ".gltf";
    options.stem = PlainName(file.stem().string());
    const fs::path bufferFile = file.parent_path() / (options.stem + ".bin");
    const auto listenToBuilding = [&listener](double part) { listener(part * kBuilding); };

    Document document;
    BuiltFiles built;
    if (options.isBinary)
    {
        Buffers buffers(document);
        built = BuildModel(model, options, buffers, document, listenToBuilding);
        WriteBinary(document, buffers, file);
    }
    else
    {
        std::ofstream bufferStream = Open(bufferFile, file);
        Buffers buffers(document, &bufferStream);
        built = BuildModel(model, options, buffers, document, listenToBuilding);
        Close(bufferStream, file);
        if (buffers.Size() == 0)
            fs::remove(bufferFile);
        std::ofstream stream = Open(file, file);
        stream << TextOf(document, buffers.Size(), bufferFile.filename().string());
        Close(stream, file);
    }
    WriteCompanions(built.companions, file.parent_path());
    CopyImages(built.copies, file.parent_path());
    return std::move(built.notes);
}

}  // namespace Sceneprep::Gltf
