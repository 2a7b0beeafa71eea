# The host's own library can replace the stand-in in src/brindle; its headers have the same include paths.
set(IMPORTING_HOST_LIBRARY "" CACHE FILEPATH "The host's own library to link; empty to build the stand-in")
set(IMPORTING_HOST_INCLUDE_DIR "" CACHE PATH "Folder with the host's headers: brindle/Vyk_Channel.h and its siblings")

if(IMPORTING_HOST_LIBRARY)
    add_library(Brindle UNKNOWN IMPORTED GLOBAL)
    set_target_properties(Brindle PROPERTIES IMPORTED_LOCATION ${IMPORTING_HOST_LIBRARY})
    include_directories(BEFORE ${IMPORTING_HOST_INCLUDE_DIR})  # before src, which has the stand-in's headers
endif()
