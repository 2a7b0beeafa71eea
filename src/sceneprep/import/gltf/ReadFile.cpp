#include <sceneprep/import/gltf/ReadFile.h>

#include <sceneprep/import/gltf/Field.h>

#include <cerrno>
#include <fstream>
#include <system_error>

namespace Sceneprep::GltfImport
{

namespace fs = std::filesystem;

std::vector<std::uint8_t> ReadFile(const fs::path& file)
{
    std::error_code error;
    const fs::file_type type = fs::status(file, error).type();
    if (type == fs::file_type::not_found)
        throw FormatError("there is no such file");
    if (type != fs::file_type::regular)
        throw FormatError(error ? error.message() : "it is not a regular file");

    errno = 0;
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    if (!stream)
        throw FormatError(std::generic_category().message(errno));
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(stream.tellg()));
    stream.seekg(0);
    if (!stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size())))
        throw FormatError("the file cannot be read to its end");
    return bytes;
}

}  // namespace Sceneprep::GltfImport
