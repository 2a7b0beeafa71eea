#include <brindle/Vyk_Channel.h>

#include <brindle/VykFile.h>

#include <atomic>
#include <utility>

Vyk_Channel::Vyk_Channel() = default;
Vyk_Channel::Vyk_Channel(const Vyk_Channel&) = default;
Vyk_Channel& Vyk_Channel::operator=(const Vyk_Channel&) = default;
Vyk_Channel::~Vyk_Channel() = default;

void Vyk_Channel::CallChannel() {}

void Vyk_Channel::OneTimeInitialize() {}

void Vyk_Channel::DoEvent(int /*event*/, std::uint64_t /*argument*/) {}

ChannelType Vyk_Channel::GetChannelType() { return {}; }

// The saved form is the length of the name as a 32-bit little-endian number, followed by its characters.
bool Vyk_Channel::SaveChannel(VykFileSaver& saver)
{
    const auto length = static_cast<std::uint32_t>(channelName_.size());
    const unsigned char bytes[4] = {static_cast<unsigned char>(length), static_cast<unsigned char>(length >> 8U),
                                    static_cast<unsigned char>(length >> 16U),
                                    static_cast<unsigned char>(length >> 24U)};
    return saver.Write(bytes, sizeof(bytes)) && saver.Write(channelName_.data(), channelName_.size());
}

bool Vyk_Channel::LoadChannel(VykFileLoader& loader, Vyk_ChannelGroup* /*group*/)
{
    unsigned char bytes[4];
    if (!loader.Read(bytes, sizeof(bytes)))
        return false;
    std::uint32_t left = static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8U |
                         static_cast<std::uint32_t>(bytes[2]) << 16U | static_cast<std::uint32_t>(bytes[3]) << 24U;

    // Reading character by character limits the memory for a damaged length to the number of bytes that exist.
    std::string name;
    for (; left > 0; --left)
    {
        char character;
        if (!loader.Read(&character, 1))
            return false;
        name.push_back(character);
    }
    channelName_ = std::move(name);
    return true;
}

void Vyk_Channel::SetChannelInterfaceType(int /*type*/) {}

Vyk_Channel* Vyk_Channel::GetChannelFromChannel(Vyk_Channel* /*channel*/, ChildInfo* /*info*/) { return nullptr; }

std::uint32_t Vyk_Channel::GetTimeStamp() { return timeStamp_; }

void Vyk_Channel::SetTimeStamp()
{
    static std::atomic<std::uint32_t> last = 0;
    timeStamp_ = ++last;
}

void Vyk_Channel::DoDependencyInit(Vyk_List* /*list*/) {}

void Vyk_Channel::CheckIndexNrRemoval(int /*index*/) {}

Vyk_Channel* Vyk_Channel::GetInternalChild(int /*index*/) { return nullptr; }

void Vyk_Channel::CheckPublicChannelInstanceRemoval(Vyk_Channel* /*channel*/, int /*index*/) {}

void Vyk_Channel::AddMetaData(VykFileSaver& /*saver*/) {}

void Vyk_Channel::SetChannelGroup(Vyk_ChannelGroup* /*group*/) {}

ChannelFeedback* Vyk_Channel::GetFeedbackClass() { return nullptr; }

void Vyk_Channel::SetContextRenderCountName(char* /*name*/) {}

ContextRenderCount* Vyk_Channel::GetContextRenderCountName() { return nullptr; }

void Vyk_Channel::SetChannelName(const char* name) { channelName_ = name == nullptr ? "" : name; }

const char* Vyk_Channel::GetChannelName() const { return channelName_.c_str(); }
