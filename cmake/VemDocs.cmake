# `cmake --build <dir> --target VemDocs` writes the documentation, pages and public headers, to
# docs/html in the build folder; `docs` is the same where this is nobody's subproject. The pages'
# pictures are drawn first, by the drawing library. Doxygen is looked for then.
set(VEM_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)

# The page on speed shows the table of the front page, so that there is one.
set(speed docs/pages/speed.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/${speed})
file(READ ${PROJECT_SOURCE_DIR}/README.md text)
string(REGEX MATCH "Measured on [^|]*\\| work [^\n]*\n(\\|[^\n]*\n)*" table "${text}")
file(READ ${PROJECT_SOURCE_DIR}/${speed} text)
string(REPLACE "<!-- table -->" "${table}" text "${text}")
string(REPLACE "(../../" "(../../project/" text "${text}")  # As docs/write-site lays them out.
file(GENERATE OUTPUT ${VEM_DOCS_DIR}/pages/speed.md CONTENT "${text}")

configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${VEM_DOCS_DIR}/Doxyfile @ONLY)
if(TARGET VemView)
  set(draws true)
else()
  set(draws false)
endif()
add_custom_target(VemDocs
  COMMAND sh -c "${draws} || { echo The pictures need the drawing library: configure with -DVEM_BUILD_VIEW=ON >&2; exit 1; }"
  COMMAND sh -c "command -v doxygen >/dev/null || { echo Doxygen is missing: on Debian apt-get install doxygen >&2; exit 1; }"
  COMMAND sh ${PROJECT_SOURCE_DIR}/docs/write-site ${PROJECT_SOURCE_DIR} ${VEM_DOCS_DIR}
  COMMENT "Writing the documentation"
  VERBATIM)
if(TARGET VemView)
  add_subdirectory(docs/pictures)
  set(stamp ${VEM_DOCS_DIR}/pictures.stamp)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${VEM_DOCS_DIR}/pictures
    COMMAND VemPictures ${VEM_DOCS_DIR}/pictures
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS VemPictures
    COMMENT "Drawing the pictures of the documentation")
  add_custom_target(VemDocsPictures DEPENDS ${stamp})
  add_dependencies(VemDocs VemDocsPictures)
endif()
if(VEM_TOP_LEVEL)
  add_custom_target(docs DEPENDS VemDocs)
endif()
