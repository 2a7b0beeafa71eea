#include <sceneprep/export/CheckedFiles.h>

#include <array>
#include <fstream>
#include <string_view>

namespace Sceneprep
{

Assimp::IOStream* CheckedFiles::Open(const char* file, const char* mode)
{
    std::FILE* opened = std::fopen(file, mode);
    return opened == nullptr ? nullptr : new CheckedStream(opened, hasFailed_);  // Assimp owns it
}

void CheckedFiles::Close(Assimp::IOStream* stream) { delete stream; }

CheckedStream::CheckedStream(std::FILE* file, bool& hasFailed) : file_(file), hasFailed_(hasFailed) {}

CheckedStream::~CheckedStream()
{
    const bool wasWritten = std::ferror(file_) == 0;
    const bool isClosed = std::fclose(file_) == 0;
    hasFailed_ = hasFailed_ || !wasWritten || !isClosed;
}

std::size_t CheckedStream::Read(void* buffer, std::size_t size, std::size_t count)
{
    return std::fread(buffer, size, count, file_);
}

std::size_t CheckedStream::Write(const void* buffer, std::size_t size, std::size_t count)
{
    return std::fwrite(buffer, size, count, file_);
}

aiReturn CheckedStream::Seek(std::size_t offset, aiOrigin origin)
{
    constexpr std::array<int, 3> kOrigins = {SEEK_SET, SEEK_CUR, SEEK_END};
    const bool isMoved = std::fseek(file_, static_cast<long>(offset), kOrigins.at(origin)) == 0;
    return isMoved ? aiReturn_SUCCESS : aiReturn_FAILURE;
}

std::size_t CheckedStream::Tell() const { return static_cast<std::size_t>(std::ftell(file_)); }

std::size_t CheckedStream::FileSize() const
{
    const long here = std::ftell(file_);
    std::fseek(file_, 0, SEEK_END);
    const long size = std::ftell(file_);
    std::fseek(file_, here, SEEK_SET);
    return static_cast<std::size_t>(size);
}

void CheckedStream::Flush() { std::fflush(file_); }

bool IsWhole3mf(const std::filesystem::path& file)
{
    // The last record of the archive: signature, 6 bytes that are not used here, the number of parts, and the position
    // of their list.
    constexpr std::size_t kRecordSize = 22;
    constexpr std::string_view kSignature = "PK\5\6";
    constexpr std::size_t kPartCountAt = 10;
    constexpr char kPartCount = 3;
    std::ifstream in(file, std::ios::binary);
    in.seekg(-static_cast<std::streamoff>(kRecordSize), std::ios::end);
    std::array<char, kRecordSize> record = {};
    in.read(record.data(), record.size());
    return in && std::string_view(record.data(), kSignature.size()) == kSignature &&
           record[kPartCountAt] == kPartCount && record[kPartCountAt + 1] == 0;
}

}  // namespace Sceneprep
