option(IMPORTING_SANITIZE "Build with the address and undefined behaviour sanitizers" OFF)

if(IMPORTING_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
    add_compile_definitions(IMPORTING_SANITIZE _GLIBCXX_ASSERTIONS)
endif()
