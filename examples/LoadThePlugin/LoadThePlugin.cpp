// Loads the library as the host does: by its two plain entry points. Links the host library only.
//
//   LoadThePlugin PATH_OF_THE_LIBRARY

#include <brindle/Brindle.h>

#include <dlfcn.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: LoadThePlugin PATH_OF_THE_LIBRARY\n");
        return 2;
    }
    void* library = dlopen(argv[1], RTLD_NOW);
    if (library == nullptr)
    {
        std::fprintf(stderr, "LoadThePlugin: %s\n", dlerror());
        return 1;
    }
    auto* getType = reinterpret_cast<ChannelType* (*)()>(dlsym(library, "GetType"));
    auto* initDLL = reinterpret_cast<Vyk_Channel* (*)()>(dlsym(library, "InitDLL"));
    if (getType == nullptr || initDLL == nullptr)
    {
        std::fprintf(stderr, "LoadThePlugin: %s has no GetType or no InitDLL\n", argv[1]);
        return 1;
    }

    std::printf("type %s\n", getType()->name.data());
    Vyk_Channel* channel = initDLL();
    std::printf("channel %s\n", channel->GetChannelName());
    delete channel;
    return dlclose(library);
}
