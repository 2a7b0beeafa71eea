#include <brindle/VykFile.h>

#include <cstring>
#include <utility>

bool VykFileSaver::Write(const void* data, std::size_t size)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    bytes_.insert(bytes_.end(), bytes, bytes + size);
    return true;
}

const std::vector<unsigned char>& VykFileSaver::GetBytes() const { return bytes_; }

VykFileLoader::VykFileLoader(std::vector<unsigned char> bytes) : bytes_(std::move(bytes)) {}

bool VykFileLoader::Read(void* data, std::size_t size)
{
    if (size > bytes_.size() - position_)
        return false;
    if (size > 0)
        std::memcpy(data, bytes_.data() + position_, size);
    position_ += size;
    return true;
}
