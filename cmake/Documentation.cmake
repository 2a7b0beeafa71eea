# The target docs makes the API reference of the libraries from the comments in their headers: BUILD/docs/html/index.html.
# A comment that Doxygen does not understand is an error.
find_package(Doxygen REQUIRED)

set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/docs)
set(DOXYGEN_PROJECT_NAME ${PROJECT_NAME})
set(DOXYGEN_PROJECT_BRIEF ${PROJECT_DESCRIPTION})
set(DOXYGEN_FILE_PATTERNS *.h)
set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR}/src)
set(DOXYGEN_STRIP_FROM_INC_PATH ${PROJECT_SOURCE_DIR}/src)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_EXTRACT_ALL NO)
set(DOXYGEN_SORT_MEMBER_DOCS NO)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED IMPORTING_API= IMPORTING_MATH_API= BRINDLE_API= __extension__=)
set(DOXYGEN_GENERATE_LATEX NO)
set(DOXYGEN_QUIET YES)
# Many members explain themselves; what is documented has to be documented correctly.
set(DOXYGEN_WARN_IF_UNDOCUMENTED NO)
set(DOXYGEN_WARN_IF_INCOMPLETE_DOC NO)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
doxygen_add_docs(docs
    ${PROJECT_SOURCE_DIR}/src/importing ${PROJECT_SOURCE_DIR}/src/brindle ${PROJECT_SOURCE_DIR}/src/pipeline
    COMMENT "Making the API reference of the libraries")
