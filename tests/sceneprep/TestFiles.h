#pragma once

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace SceneprepTests
{

/// A folder that is removed with its content at the end of the test.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "sceneprep-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        path_ = name;
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    /// Returns the number of entries in the folder.
    std::size_t CountEntries() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

    /// Writes a file and returns its path.
    std::filesystem::path Write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path_ / name, std::ios::binary) << text;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

inline std::string ReadText(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A quad, a triangle and a line, with UVs and without normals, in two materials.
inline std::filesystem::path WriteSmallObj(const TemporaryFolder& folder)
{
    folder.Write("small.mtl",
                 "newmtl Red\nKd 1 0 0\nKs 0.5 0.25 0\nNs 32\nd 0.5\nmap_Kd Wood.PNG\n"
                 "newmtl Blue\nKd 0 0 1\n");
    return folder.Write("small.obj",
                        "mtllib small.mtl\n"
                        "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 0 2\nv 2 0 2\nv 0 2 2\n"
                        "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
                        "o Square\nusemtl Red\nf 1/1 2/2 3/3 4/4\n"
                        "o Corner\nusemtl Blue\nf 5/1 6/2 7/3\n"
                        "o Wire\nl 1 2\n");
}

/// The exit status and the output of a run of the program.
struct ProgramRun
{
    int status;
    std::string output;
    std::string errors;
};

/// Runs sceneprep with arguments that are split as a shell does.
inline ProgramRun RunProgram(const std::string& arguments)
{
    const TemporaryFolder folder;
    const std::string command = std::string(SCENEPREP_PROGRAM) + ' ' + arguments + " >" + (folder / "out").string() +
                                " 2>" + (folder / "err").string() + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(folder / "out"), ReadText(folder / "err")};
}

}  // namespace SceneprepTests
