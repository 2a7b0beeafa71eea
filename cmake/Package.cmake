# `cpack` in the build folder makes a Debian package of what `cmake --install` installs.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME scenecontainer)
set(CPACK_PACKAGE_VENDOR "The SceneContainer developers")
set(CPACK_PACKAGE_CONTACT "The SceneContainer developers <scenecontainer@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
# Dependencies are read from the programs; the libraries of the package itself are found in the build.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# sceneprep batch runs Ninja.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS ninja-build)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
include(CPack)
