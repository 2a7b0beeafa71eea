# Warnings are errors when our own code is developed. IMPORTING_WARNINGS_AS_ERRORS=OFF helps with a newer compiler.
option(IMPORTING_WARNINGS_AS_ERRORS "Treat warnings as errors" ${PROJECT_IS_TOP_LEVEL})

if(MSVC)
    add_compile_options(/W4 /permissive- /utf-8)
    if(IMPORTING_WARNINGS_AS_ERRORS)
        add_compile_options(/WX)
    endif()
else()
    add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        add_compile_options(-Wno-restrict)  # gcc 12 reports concatenations of std::string by mistake
    endif()
    if(IMPORTING_WARNINGS_AS_ERRORS)
        add_compile_options(-Werror)
    endif()
endif()
