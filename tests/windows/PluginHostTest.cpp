#include <brindle/Brindle.h>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

// Tests the plug-in as a host on Windows uses it: a file that is loaded by name, with two plain entry points.

namespace
{

/// A library that is loaded by name from the folder of the program.
class Library
{
public:
    explicit Library(const char* name) : handle_(LoadLibraryA(name))
    {
        if (handle_ == nullptr)
            throw std::runtime_error(std::string("cannot load ") + name);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() { FreeLibrary(handle_); }

    /// Returns the function with this plain name, or null.
    template <typename Function>
    Function* Find(const char* name) const
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(handle_, name)));
    }

private:
    HMODULE handle_;
};

class PluginHost : public testing::Test
{
protected:
    void SetUp() override
    {
        getType_ = plugin_.Find<ChannelType*()>("GetType");
        initDLL_ = plugin_.Find<Vyk_Channel*()>("InitDLL");
        ASSERT_NE(getType_, nullptr);
        ASSERT_NE(initDLL_, nullptr);
    }

    Library plugin_{"SceneContainer.dll"};
    ChannelType* (*getType_)() = nullptr;
    Vyk_Channel* (*initDLL_)() = nullptr;
};

TEST_F(PluginHost, ChannelTypeRecordHasEveryByteOfTheHostsLayout)
{
    std::array<unsigned char, 136> expected = {};
    std::memcpy(expected.data(), "SceneContainer", 14);
    const std::array<unsigned char, 16> id = {0xFA, 0x27, 0xB2, 0x7B, 0x4B, 0xA2, 0xB7, 0x4B,
                                              0xB1, 0xB4, 0xDF, 0x66, 0x5D, 0x60, 0xCB, 0xE8};
    std::memcpy(expected.data() + 80, id.data(), id.size());
    std::memcpy(expected.data() + 96, id.data(), id.size());
    expected[120] = 1;

    std::array<unsigned char, 136> actual;
    std::memcpy(actual.data(), getType_(), actual.size());
    EXPECT_EQ(actual, expected);
}

TEST_F(PluginHost, RecordIsTheSameAtEveryCall) { EXPECT_EQ(getType_(), getType_()); }

TEST_F(PluginHost, ChannelIsCalledThroughTheVirtualTableOfTheHost)
{
    const std::unique_ptr<Vyk_Channel> channel(initDLL_());
    ASSERT_NE(channel, nullptr);
    EXPECT_STREQ(channel->GetChannelName(), "SceneContainer");

    VykFileSaver saver;
    channel->SetChannelName("scene");
    EXPECT_TRUE(channel->SaveChannel(saver));
    channel->SetChannelName("");
    VykFileLoader loader(saver.GetBytes());
    EXPECT_TRUE(channel->LoadChannel(loader, nullptr));
    EXPECT_STREQ(channel->GetChannelName(), "scene");
}

TEST_F(PluginHost, ImporterFillsAndProcessesASceneThatTheHostDestroys)
{
    std::vector<std::string> messages;
    ShowDebugMessage.SetSink([&messages](const char* text, int /*value*/) { messages.emplace_back(text); });
    const Library importer("BoxImporter.dll");
    auto* importBoxes = importer.Find<int(Vyk_Channel*)>("ImportBoxes");
    ASSERT_NE(importBoxes, nullptr);

    Vyk_Channel* channel = initDLL_();
    EXPECT_EQ(importBoxes(channel), 0);
    delete channel;
    ShowDebugMessage.SetSink({});
    EXPECT_EQ(messages, (std::vector<std::string>{"Flatten node finished :", "Merging finished :"}));
}

TEST(PluginLoading, LibraryCanBeUnloadedAndLoadedAgain)
{
    for (int round = 0; round < 2; ++round)
    {
        const Library plugin("SceneContainer.dll");
        auto* initDLL = plugin.Find<Vyk_Channel*()>("InitDLL");
        ASSERT_NE(initDLL, nullptr);
        delete initDLL();
    }
    EXPECT_EQ(GetModuleHandleA("SceneContainer.dll"), nullptr);
}

}  // namespace
