# scenecontainer.pc, for projects that use pkg-config. Paths are relative to the file, so that a prefix can be moved.
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH IMPORTING_PC_PREFIX /prefix/${pc_dir} /prefix)

set(flags -ffp-contract=off)
if(NOT BUILD_SHARED_LIBS)
    list(APPEND flags -DIMPORTING_STATIC -DBRINDLE_STATIC)
endif()
if(IMPORTING_PLATFORM_MATH)
    list(APPEND flags -DIMPORTING_PLATFORM_MATH)
endif()
list(JOIN flags " " IMPORTING_PC_CFLAGS)

# In the order in which a static link resolves them. Users of the host's own library name it themselves.
set(libs ${libraries})
list(TRANSFORM libs REPLACE "^Pipeline$" ScenePipeline)  # the name of its file
list(TRANSFORM libs PREPEND -l)
if(WIN32 AND NOT BUILD_SHARED_LIBS)
    list(APPEND libs -lshlwapi)
endif()
list(JOIN libs " " IMPORTING_PC_LIBS)

configure_file(${PROJECT_SOURCE_DIR}/cmake/scenecontainer.pc.in ${PROJECT_BINARY_DIR}/scenecontainer.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/scenecontainer.pc DESTINATION ${pc_dir})
