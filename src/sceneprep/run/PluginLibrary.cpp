#include <sceneprep/run/PluginLibrary.h>

#include <brindle/ChannelType.h>
#include <dlfcn.h>
#include <fmt/format.h>
#include <sceneprep/run/Error.h>

#include <algorithm>
#include <array>
#include <new>
#include <string>

namespace Sceneprep
{

namespace
{

constexpr const char* kFileName = "libSceneContainer.so";
constexpr const char* kTypeName = "SceneContainer";

/// {7BB227FA-A24B-4BB7-B1B4-DF665D60CBE8}, as it is stored in memory.
constexpr std::array<std::uint8_t, 16> kTypeId = {0xFA, 0x27, 0xB2, 0x7B, 0x4B, 0xA2, 0xB7, 0x4B,
                                                  0xB1, 0xB4, 0xDF, 0x66, 0x5D, 0x60, 0xCB, 0xE8};

std::string LastLoaderError()
{
    const char* text = dlerror();
    return text == nullptr ? "unknown reason" : OneLine(text);
}

/// Returns whether there is less memory than any plug-in needs. The loader reports other reasons.
bool LacksMemory()
{
    constexpr std::size_t kEnough = std::size_t{16} << 20U;
    void* probe = ::operator new(kEnough, std::nothrow);  // not an expression, which compilers may leave out
    ::operator delete(probe);
    return probe == nullptr;
}

std::string TypeNameOf(const ChannelType& type)
{
    return {type.name.begin(), std::find(type.name.begin(), type.name.end(), '\0')};
}

}  // namespace

PluginLibrary::PluginLibrary(const std::filesystem::path& file)
    // An absolute path keeps the loader from searching its own folders for a bare name.
    : file_(std::filesystem::absolute(file)), handle_(dlopen(file_.c_str(), RTLD_NOW | RTLD_LOCAL), dlclose)
{
    if (handle_ == nullptr && LacksMemory())
        throw std::bad_alloc();
    if (handle_ == nullptr)
        throw ToolError(fmt::format("cannot load the plug-in ({}); name another one with --plugin", LastLoaderError()));
    createChannel_ = reinterpret_cast<CreateChannel>(EntryPoint("InitDLL"));
    CheckType();
}

PluginLibrary::~PluginLibrary() = default;

void* PluginLibrary::EntryPoint(const char* name) const
{
    void* address = dlsym(handle_.get(), name);
    if (address == nullptr)
        throw ToolError(fmt::format("{} is not a plug-in: it has no entry point {}; name another one with --plugin",
                                    file_.string(), name));
    return address;
}

void PluginLibrary::CheckType() const
{
    const ChannelType* type = reinterpret_cast<ChannelType* (*)()>(EntryPoint("GetType"))();
    if (type == nullptr)
        throw ToolError(
            fmt::format("{} does not report its channel type; name another plug-in with --plugin", file_.string()));
    if (TypeNameOf(*type) != kTypeName)
        throw ToolError(
            fmt::format("{} contributes the channel type '{}', not '{}'; name another plug-in with --plugin",
                        file_.string(), TypeNameOf(*type), kTypeName));
    if (type->id != type->secondId || type->id != kTypeId)
        throw ToolError(
            fmt::format("{} contributes another kind of '{}': the type identifiers differ; name another "
                        "plug-in with --plugin",
                        file_.string(), kTypeName));
}

std::unique_ptr<Importing::SceneContainer> PluginLibrary::CreateScene() const
{
    Vyk_Channel* channel = createChannel_();
    if (channel == nullptr)
        throw ToolError(fmt::format("{} has no memory for a scene; free some and try again", file_.string()));
    // Safe, since the type record has been compared.
    return std::unique_ptr<Importing::SceneContainer>(static_cast<Importing::SceneContainer*>(channel));
}

std::filesystem::path PluginLibrary::FindDefault()
{
    std::error_code failure;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", failure).parent_path();
    if (failure)
        throw ToolError(
            fmt::format("cannot find the folder of the program, to look for {} in it ({}); name it "
                        "with --plugin, or mount /proc",
                        kFileName, failure.message()));
    for (const char* place : {".", "../lib", SCENEPREP_LIBRARY_FOLDER})
    {
        std::filesystem::path candidate = (folder / place / kFileName).lexically_normal();
        if (std::filesystem::exists(candidate))
            return candidate;
    }
    throw ToolError(
        fmt::format("{} is neither in the folder of the program, {}, nor in the lib folder next to it; name "
                    "it with --plugin",
                    kFileName, folder.string()));
}

}  // namespace Sceneprep
