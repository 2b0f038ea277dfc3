# What `cmake --install` puts where, and the Debian package of it. Programs and data are found wherever they are put: the
# programs need no file of their own.
include(GNUInstallDirs)

set(ULK_RELEASE_DATE 2026-11-22)  # of this PROJECT_VERSION
set(ULK_CONTACT "The developers of ulkedit <developers@ulkedit.invalid>")
execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date --utc --date=${ULK_RELEASE_DATE} "+%a, %d %b %Y %T +0000"
  OUTPUT_VARIABLE ULK_RELEASE_DATE_RFC OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

configure_file(data/org.ulkedit.ulkedit.metainfo.xml.in data/org.ulkedit.ulkedit.metainfo.xml @ONLY)
configure_file(data/package/changelog.in data/changelog @ONLY)

# ulk_gzip(<file> [<target>]) compresses a file that the build has made, so that it comes out the same every time.
find_program(GZIP gzip REQUIRED)
function(ulk_gzip file)
  add_custom_command(OUTPUT ${file}.gz COMMAND ${GZIP} --best --no-name --keep --force ${file} DEPENDS ${file} ${ARGN} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY ULK_COMPRESSED ${file}.gz)
endfunction()
ulk_gzip(${PROJECT_BINARY_DIR}/data/changelog)
foreach(page man1/ulkedit.1 man1/ulktool.1 man5/ulk.5)
  foreach(language "" ja/)
    ulk_gzip(${PROJECT_BINARY_DIR}/man/${language}${page} ulk_man)
    cmake_path(GET page PARENT_PATH section)
    install(FILES ${PROJECT_BINARY_DIR}/man/${language}${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/${language}${section})
  endforeach()
endforeach()
get_property(compressed GLOBAL PROPERTY ULK_COMPRESSED)
add_custom_target(ulk_compressed ALL DEPENDS ${compressed})

install(TARGETS ulkedit ulktool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES data/ulkedit.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES data/icons/ulkedit.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES data/ulkedit.thumbnailer DESTINATION ${CMAKE_INSTALL_DATADIR}/thumbnailers)
install(FILES data/ulkedit-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME ulkedit.xml)
install(FILES data/completion/ulktool DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${PROJECT_BINARY_DIR}/data/org.ulkedit.ulkedit.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# The texts keep their places beside each other, so that their links lead somewhere.
set(documents ${CMAKE_INSTALL_DATADIR}/doc/ulkedit)
file(GLOB manuals CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
file(GLOB readmes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/README*.md)
install(FILES ${readmes} packages.txt data/package/copyright ${PROJECT_BINARY_DIR}/data/changelog.gz DESTINATION ${documents})
install(FILES ${manuals} DESTINATION ${documents}/docs)
install(DIRECTORY docs/pictures DESTINATION ${documents}/docs)
install(DIRECTORY samples DESTINATION ${documents} PATTERN "*.py" EXCLUDE PATTERN "__pycache__" EXCLUDE)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ulkedit)
set(CPACK_PACKAGE_CONTACT ${ULK_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "modeller of polygon meshes and NURBS surfaces")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Points of polygon meshes and of nets of NURBS surfaces are marked and
dragged in four views. Nets are dented like soft matter, sheets are folded
along an axis, meshes are cut out of each other. Surfaces wear colour, bump
and specular maps, and mirror their surroundings. Scenes are text files; STL
files are read and written.
.
ulktool converts, checks, cuts and draws files from scripts, without a display.")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "adwaita-icon-theme, fonts-vlgothic | fonts-noto-cjk, librsvg2-common")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
include(CPack)
