# `cmake --install` puts the libraries, the headers and a package file for find_package(SceneContainer) in place.
include(CMakePackageConfigHelpers)

set(IMPORTING_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/SceneContainer)

set(libraries SceneContainer)
set(headers ${PROJECT_SOURCE_DIR}/src/importing)
if(NOT IMPORTING_HOST_LIBRARY)
    list(APPEND libraries Brindle)
    list(APPEND headers ${PROJECT_SOURCE_DIR}/src/brindle)
endif()
install(TARGETS ${libraries} EXPORT SceneContainerTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${headers}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(EXPORT SceneContainerTargets NAMESPACE SceneContainer:: DESTINATION ${IMPORTING_CMAKE_DIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/SceneContainerConfig.cmake.in
    ${PROJECT_BINARY_DIR}/SceneContainerConfig.cmake INSTALL_DESTINATION ${IMPORTING_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/SceneContainerConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/SceneContainerConfig.cmake ${PROJECT_BINARY_DIR}/SceneContainerConfigVersion.cmake
    DESTINATION ${IMPORTING_CMAKE_DIR})
if(TARGET sceneprep)
    install(TARGETS sceneprep RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
