#pragma once

#include <brindle/ChannelType.h>
#include <brindle/Export.h>

#include <cstdint>
#include <string>

class VykFileSaver;
class VykFileLoader;

// Types of the host that channels only pass on.
class Vyk_ChannelGroup;
class Vyk_List;
class ChildInfo;
class ChannelFeedback;
class ContextRenderCount;

/// The base class of every channel. The host defines the order of the virtual operations, which must not change.
///
/// The base implementations do nothing and return null, false or 0, unless their comment says otherwise.
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
    /// Returns a record with all bytes 0.
    virtual ChannelType GetChannelType();
    /// Writes the channel name.
    /// @return whether all of it was written.
    virtual bool SaveChannel(VykFileSaver& saver);
    /// Reads the channel name.
    /// @return true; or false when the bytes do not contain a name, and then the channel has not changed.
    virtual bool LoadChannel(VykFileLoader& loader, Vyk_ChannelGroup* group);
    virtual void SetChannelInterfaceType(int type);
    virtual Vyk_Channel* GetChannelFromChannel(Vyk_Channel* channel, ChildInfo* info);
    /// Returns the time stamp that SetTimeStamp() set last, or 0 before the first call.
    virtual std::uint32_t GetTimeStamp();
    /// Sets a time stamp that is larger than all earlier ones in this process.
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

    /// Sets the channel name. A null pointer means an empty name.
    void SetChannelName(const char* name);
    const char* GetChannelName() const;

private:
    std::string channelName_;
    std::uint32_t timeStamp_ = 0;
};
