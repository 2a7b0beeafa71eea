#pragma once

#include <assimp/DefaultIOSystem.h>
#include <assimp/IOStream.hpp>
#include <assimp/IOSystem.hpp>

#include <cstdio>
#include <filesystem>

namespace Sceneprep
{

/// The files that the model library writes; keeps in mind whether all of it reached them.
///
/// The library's exporters do not look whether writing succeeds: without this a full disk would pass for success.
class CheckedFiles : public Assimp::DefaultIOSystem
{
public:
    Assimp::IOStream* Open(const char* file, const char* mode = "rb") override;
    void Close(Assimp::IOStream* stream) override;

    /// @return whether something was not written in a file that is closed by now.
    bool HasFailed() const { return hasFailed_; }

private:
    bool hasFailed_ = false;
};

/// One open file that tells when writing or closing it fails.
class CheckedStream : public Assimp::IOStream
{
public:
    /// @param hasFailed  becomes true then; it has to outlive the stream
    CheckedStream(std::FILE* file, bool& hasFailed);
    ~CheckedStream() override;
    CheckedStream(const CheckedStream&) = delete;
    CheckedStream& operator=(const CheckedStream&) = delete;

    std::size_t Read(void* buffer, std::size_t size, std::size_t count) override;
    std::size_t Write(const void* buffer, std::size_t size, std::size_t count) override;
    aiReturn Seek(std::size_t offset, aiOrigin origin) override;
    std::size_t Tell() const override;
    std::size_t FileSize() const override;
    void Flush() override;

private:
    std::FILE* file_;
    bool& hasFailed_;
};

/// The exporter for 3MF packs its archive past all that, each of its three parts by itself.
/// @return whether the archive ends as it should and lists all parts.
bool IsWhole3mf(const std::filesystem::path& file);

}  // namespace Sceneprep
