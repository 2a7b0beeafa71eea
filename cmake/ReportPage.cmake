# The HTML page of sceneprep's --report. npm fetches three.js and esbuild into the build folder when CMake configures;
# the build bundles three.js and our viewer into IMPORTING_PAGE_TEXT, a file that is compiled into the program.
# Without npm, Node or a network, IMPORTING_PAGE_TEXT is empty: sceneprep is built without the page and says so.
# Call add_report_page(VIEWER_FOLDER) and then test IMPORTING_PAGE_TEXT.

# Sets result to a reason why there are no modules in workshop/node_modules; empty when they are there. Modules that
# were fetched for the same package-lock.json are used again.
function(fetch_page_modules viewer workshop result)
    set(${result} "" PARENT_SCOPE)
    find_program(IMPORTING_NODE NAMES node nodejs)
    if(NOT IMPORTING_NPM OR NOT IMPORTING_NODE)
        set(${result} "npm or Node is not installed" PARENT_SCOPE)
        return()
    endif()

    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${viewer}/package-lock.json)
    set(stamp ${workshop}/fetched-package-lock.json)
    if(EXISTS ${stamp})
        file(SHA256 ${stamp} fetched)
        file(SHA256 ${viewer}/package-lock.json wanted)
        if(fetched STREQUAL wanted AND EXISTS ${workshop}/node_modules/three/LICENSE)
            return()
        endif()
    endif()

    message(STATUS "Fetching three.js and esbuild for the page of sceneprep's --report")
    file(COPY ${viewer}/package.json ${viewer}/package-lock.json DESTINATION ${workshop})
    # npm's own cache comes first; without a network npm gives up after one more try.
    execute_process(
        COMMAND ${IMPORTING_NPM} ci --prefix ${workshop} --ignore-scripts --no-audit --no-fund --loglevel=error
            --prefer-offline --fetch-retries=1 --fetch-retry-mintimeout=1000 --fetch-timeout=60000
        RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE complaint)
    if(NOT status EQUAL 0)
        string(REGEX REPLACE "\n.*" "" complaint "${complaint}")
        set(${result} "npm could not fetch three.js and esbuild (${complaint})" PARENT_SCOPE)
        return()
    endif()
    file(COPY_FILE ${viewer}/package-lock.json ${stamp})
endfunction()

function(add_report_page viewer)
    set(workshop ${CMAKE_CURRENT_BINARY_DIR}/report-page)
    set(IMPORTING_PAGE_TEXT "" CACHE INTERNAL "")
    fetch_page_modules(${viewer} ${workshop} problem)
    if(problem)
        message(STATUS "${problem}: sceneprep is built without the page of --report; run cmake again to retry")
        return()
    endif()

    set(files batches.mjs bundle.mjs colorings.mjs data.mjs dom.mjs findSurfaces.mjs format.mjs framing.mjs headline.mjs
        legend.mjs listPoints.mjs loadModel.mjs page.html paints.mjs Player.mjs reasons.mjs Stage.mjs style.css
        tables.mjs View.mjs viewer.mjs views.mjs)
    list(TRANSFORM files PREPEND ${viewer}/)
    set(page_text ${workshop}/PageText.inc)
    add_custom_command(
        OUTPUT ${page_text}
        COMMAND ${CMAKE_COMMAND} -E copy ${files} ${workshop}
        COMMAND ${IMPORTING_NODE} ${workshop}/bundle.mjs ${page_text}
        DEPENDS ${workshop}/fetched-package-lock.json ${files}
        COMMENT "Bundling the page of sceneprep's --report"
        VERBATIM)
    if(IMPORTING_INSTALL)
        install(FILES ${workshop}/node_modules/three/LICENSE
            DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright.three.js)
    endif()
    set(IMPORTING_PAGE_TEXT ${page_text} CACHE INTERNAL "")
endfunction()
