if(WIN32)
    add_compile_definitions(NOMINMAX)  # windows.h has macros named min and max otherwise
endif()

# Strings, vectors and exceptions are passed between programs and libraries, so all of them share one C++ runtime.
# Windows looks for libraries next to the program, so mingw's are copied there.
if(MINGW AND PROJECT_IS_TOP_LEVEL)
    foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        file(REAL_PATH ${path} path)
        file(COPY ${path} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    endforeach()
endif()
