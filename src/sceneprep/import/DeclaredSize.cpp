#include <sceneprep/import/DeclaredSize.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <string>

namespace Sceneprep
{

namespace
{

constexpr std::size_t kStlHeader = 84;
constexpr std::size_t kStlTriangle = 50;
constexpr std::size_t k3dsHeader = 6;

using FileStart = std::array<unsigned char, kStlHeader>;

std::uint64_t WordIn(const FileStart& start, std::size_t position)
{
    std::uint64_t word = 0;
    for (std::size_t i = 4; i > 0; --i)
        word = word << 8U | start[position + i - 1];
    return word;
}

}  // namespace

std::optional<std::uint64_t> DeclaredSize(const std::filesystem::path& file)
{
    std::string extension = file.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    FileStart start = {};
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(start.data()), start.size());
    const auto size = static_cast<std::size_t>(stream.gcount());
    if (extension == ".3ds" && size >= k3dsHeader && start[0] == 0x4D && start[1] == 0x4D)
        return WordIn(start, 2);
    constexpr std::array<unsigned char, 5> kTextForm = {'s', 'o', 'l', 'i', 'd'};
    if (extension == ".stl" && size == kStlHeader && !std::equal(kTextForm.begin(), kTextForm.end(), start.begin()))
        return kStlHeader + kStlTriangle * WordIn(start, kStlHeader - 4);
    return std::nullopt;
}

}  // namespace Sceneprep
