#pragma once

#include <brindle/ChannelType.h>
#include <brindle/Export.h>

#include <cstdint>
#include <string>

class VykFileSaver;
class VykFileLoader;

// Types of the host that channels pass on without looking into them.
class Vyk_ChannelGroup;
class Vyk_List;
class ChildInfo;
class ChannelFeedback;
class ContextRenderCount;

/// Base class of every channel. The order of the virtual operations is the host's and must be kept.
///
/// The base implementations do nothing and return null, false or 0, except where something else is said.
class BRINDLE_API Vyk_Channel
{
public:
    Vyk_Channel();
    Vyk_Channel(const Vyk_Channel&);
    Vyk_Channel& operator=(const Vyk_Channel&);

    virtual ~Vyk_Channel();
    virtual void CallChannel();
    virtual void OneTimeInitialize();
    virtual void DoEvent(int event, std::uint64_t argument);
    /// @return a zeroed record.
    virtual ChannelType GetChannelType();
    /// Writes the channel name.
    /// @return whether all of it could be written.
    virtual bool SaveChannel(VykFileSaver& saver);
    /// Reads the channel name; the channel is left as it was when the bytes do not hold one.
    virtual bool LoadChannel(VykFileLoader& loader, Vyk_ChannelGroup* group);
    virtual void SetChannelInterfaceType(int type);
    virtual Vyk_Channel* GetChannelFromChannel(Vyk_Channel* channel, ChildInfo* info);
    /// @return the stamp that SetTimeStamp() made last; 0 before the first.
    virtual std::uint32_t GetTimeStamp();
    /// Makes a stamp later than all made before in this process.
    virtual void SetTimeStamp();
    virtual void DoDependencyInit(Vyk_List* list);
    virtual void CheckIndexNrRemoval(int index);
    virtual Vyk_Channel* GetInternalChild(int index);
    virtual void CheckPublicChannelInstanceRemoval(Vyk_Channel* channel, int index);
    virtual void AddMetaData(VykFileSaver& saver);
    virtual void SetChannelGroup(Vyk_ChannelGroup* group);
    virtual ChannelFeedback* GetFeedbackClass();
    virtual void SetContextRenderCountName(char* name);
    virtual ContextRenderCount* GetContextRenderCountName();

    /// A null name counts as an empty one.
    void SetChannelName(const char* name);
    const char* GetChannelName() const;

private:
    std::string channelName_;
    std::uint32_t timeStamp_ = 0;
};
