# `cmake --build <dir> --target docs` writes the documentation of the public headers to docs/html
# in the build folder.
find_program(VEM_DOXYGEN doxygen)
if(VEM_DOXYGEN)
  configure_file(
    ${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/docs/Doxyfile @ONLY)
  add_custom_target(docs
    COMMAND ${VEM_DOXYGEN} ${PROJECT_BINARY_DIR}/docs/Doxyfile
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/docs
    COMMENT "Documenting the public headers"
    VERBATIM)
endif()
