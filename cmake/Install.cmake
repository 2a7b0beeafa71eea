# `cmake --install` installs the libraries, their headers, package files for CMake and pkg-config, and the licence; and
# sceneprep with its manual page and completions for shells.
include(CMakePackageConfigHelpers)

set(IMPORTING_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/SceneContainer)

# Each target lists its public headers in a file set; other headers are internal and stay out.
set(libraries SceneContainer)
if(NOT IMPORTING_HOST_LIBRARY)
    list(APPEND libraries Brindle)
endif()
if(TARGET Pipeline)
    list(PREPEND libraries Pipeline)
endif()
install(TARGETS ${libraries} EXPORT SceneContainerTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT SceneContainerTargets NAMESPACE SceneContainer:: DESTINATION ${IMPORTING_CMAKE_DIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/SceneContainerConfig.cmake.in
    ${PROJECT_BINARY_DIR}/SceneContainerConfig.cmake INSTALL_DESTINATION ${IMPORTING_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/SceneContainerConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/SceneContainerConfig.cmake ${PROJECT_BINARY_DIR}/SceneContainerConfigVersion.cmake
    DESTINATION ${IMPORTING_CMAKE_DIR})
include(cmake/PkgConfig.cmake)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
if(TARGET sceneprep)
    install(TARGETS sceneprep RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    set(packaging ${PROJECT_SOURCE_DIR}/packaging)
    install(FILES ${packaging}/sceneprep.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${packaging}/sceneprep.bash RENAME sceneprep
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions)
    install(FILES ${packaging}/_sceneprep DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zsh/vendor-completions)
    install(FILES ${packaging}/sceneprep.fish DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/fish/vendor_completions.d)
endif()
