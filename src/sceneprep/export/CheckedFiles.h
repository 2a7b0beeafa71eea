#pragma once

#include <assimp/DefaultIOSystem.h>
#include <assimp/IOStream.hpp>
#include <assimp/IOSystem.hpp>

#include <cstdio>
#include <filesystem>

namespace Sceneprep
{

/// The files that Assimp writes. Records whether a write failed.
///
/// Assimp's exporters do not check whether writing succeeds, so without this class a full disk would not be an error.
class CheckedFiles : public Assimp::DefaultIOSystem
{
public:
    Assimp::IOStream* Open(const char* file, const char* mode = "rb") override;
    void Close(Assimp::IOStream* stream) override;

    /// Returns whether writing or closing failed for a file that has been closed.
    bool HasFailed() const { return hasFailed_; }

private:
    bool hasFailed_ = false;
};

/// An open file that records whether writing or closing it fails.
class CheckedStream : public Assimp::IOStream
{
public:
    /// @param hasFailed  is set to true by the destructor if an operation failed; has to outlive the stream
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

/// Returns whether a 3MF file is complete: its archive ends with a record that lists all three parts. Assimp's exporter
/// for 3MF does not write through CheckedFiles.
bool IsWhole3mf(const std::filesystem::path& file);

}  // namespace Sceneprep
