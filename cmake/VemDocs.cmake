# `cmake --build <dir> --target VemDocs` writes the documentation of the public headers to docs/html in
# the build folder; `docs` is the same where this is nobody's subproject. Doxygen is looked for then.
configure_file(
  ${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/docs/Doxyfile @ONLY)
add_custom_target(VemDocs
  COMMAND sh -c "command -v doxygen >/dev/null || { echo Doxygen is missing: on Debian apt-get install doxygen >&2; exit 1; }"
  COMMAND doxygen ${PROJECT_BINARY_DIR}/docs/Doxyfile
  WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/docs
  COMMENT "Documenting the public headers"
  VERBATIM)
if(VEM_TOP_LEVEL)
  add_custom_target(docs DEPENDS VemDocs)
endif()
