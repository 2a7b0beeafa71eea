# The page of sceneprep's --report: npm fetches three.js and esbuild into the build folder, esbuild makes one text of
# three.js and our viewer, and IMPORTING_PAGE_TEXT, the file that comes of it, goes into the program.
find_program(IMPORTING_NODE NAMES node nodejs REQUIRED)

set(viewer ${CMAKE_CURRENT_SOURCE_DIR}/report/viewer)
set(workshop ${CMAKE_CURRENT_BINARY_DIR}/report-page)
set(modules ${workshop}/node_modules)
set(IMPORTING_PAGE_TEXT ${workshop}/PageText.inc)

set(viewer_files bundle.mjs colorings.mjs data.mjs framing.mjs legend.mjs numbers.mjs page.html Stage.mjs style.css View.mjs
    viewer.mjs)
list(TRANSFORM viewer_files PREPEND ${viewer}/)
set(package_files ${viewer}/package.json ${viewer}/package-lock.json)

add_custom_command(
    OUTPUT ${modules}/.package-lock.json
    COMMAND ${CMAKE_COMMAND} -E copy ${package_files} ${workshop}
    COMMAND ${IMPORTING_NPM} ci --prefix ${workshop} --ignore-scripts --no-audit --no-fund --loglevel=error
    DEPENDS ${package_files}
    COMMENT "Fetching three.js and esbuild; -DIMPORTING_BUILD_REPORT=OFF does without"
    VERBATIM)
add_custom_command(
    OUTPUT ${IMPORTING_PAGE_TEXT}
    COMMAND ${CMAKE_COMMAND} -E copy ${viewer_files} ${workshop}
    COMMAND ${IMPORTING_NODE} ${workshop}/bundle.mjs ${IMPORTING_PAGE_TEXT}
    DEPENDS ${modules}/.package-lock.json ${viewer_files}
    COMMENT "Bundling the page of sceneprep's --report"
    VERBATIM)

install(FILES ${modules}/three/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright.three.js)
