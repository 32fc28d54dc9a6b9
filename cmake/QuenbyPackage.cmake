# The installable package. The program finds its language files, spreadsheet
# templates and converter programs beside itself, so all of them go into one
# folder, QUENBY_INSTALL_DIR under the prefix (/usr/lib/quenby in the
# package), with links to the program and the instrument simulator on the
# command path, a desktop entry and the program's icon. The logo bitmap is
# not installed: the program writes it beside itself when that folder is
# writable and in the user's application data folder otherwise.
#
#   cmake --build <build> && cpack -G DEB --config <build>/CPackConfig.cmake
#
# CPack takes every install() rule of the project, those of the converters
# included: they install into ${QUENBY_INSTALL_DIR} too.

set(QUENBY_INSTALL_DIR lib/quenby CACHE STRING
  "Folder, under the install prefix, of the program and of everything it finds beside itself")

if(NOT QUENBY_MODEL_ONLY)
  install(TARGETS quenby RUNTIME DESTINATION ${QUENBY_INSTALL_DIR})

  file(GLOB QUENBY_PACKAGE_LANG_FILES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/lang/*.lng)
  install(FILES ${QUENBY_PACKAGE_LANG_FILES} DESTINATION ${QUENBY_INSTALL_DIR})

  # The workbook templates of the spreadsheet export, when the tree has them.
  file(GLOB QUENBY_PACKAGE_TEMPLATES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/templates/*.xlsx)
  if(QUENBY_PACKAGE_TEMPLATES)
    install(FILES ${QUENBY_PACKAGE_TEMPLATES} DESTINATION ${QUENBY_INSTALL_DIR})
  endif()

  # The instrument simulator, for trying an upload without an instrument.
  if(TARGET quenby-instrument-sim)
    install(TARGETS quenby-instrument-sim RUNTIME DESTINATION ${QUENBY_INSTALL_DIR})
  endif()

  # Links on the command path, relative so that an unpacked tree works too.
  file(RELATIVE_PATH QUENBY_LINK_TARGET /prefix/bin /prefix/${QUENBY_INSTALL_DIR})
  set(QUENBY_LINK_DIR ${CMAKE_BINARY_DIR}/packaging/bin)
  file(MAKE_DIRECTORY ${QUENBY_LINK_DIR})
  set(QUENBY_LINKED_PROGRAMS quenby)
  if(TARGET quenby-instrument-sim)
    list(APPEND QUENBY_LINKED_PROGRAMS quenby-instrument-sim)
  endif()
  foreach(program IN LISTS QUENBY_LINKED_PROGRAMS)
    file(CREATE_LINK ${QUENBY_LINK_TARGET}/${program} ${QUENBY_LINK_DIR}/${program} SYMBOLIC)
    install(FILES ${QUENBY_LINK_DIR}/${program} DESTINATION bin)
  endforeach()

  # The icon is the window icon the program draws, made into a picture at
  # build time.
  add_executable(quenby-app-icon ${CMAKE_SOURCE_DIR}/packaging/AppIconMain.cpp)
  target_link_libraries(quenby-app-icon PRIVATE quenby_shell_uicommon Qt6::Gui quenby_warnings)
  set(QUENBY_ICON ${CMAKE_BINARY_DIR}/packaging/quenby.png)
  add_custom_command(OUTPUT ${QUENBY_ICON}
    COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen $<TARGET_FILE:quenby-app-icon> ${QUENBY_ICON} 256
    DEPENDS quenby-app-icon
    COMMENT "Drawing the program's icon")
  add_custom_target(quenby_app_icon ALL DEPENDS ${QUENBY_ICON})
  install(FILES ${QUENBY_ICON} DESTINATION share/icons/hicolor/256x256/apps)
  install(FILES ${CMAKE_SOURCE_DIR}/packaging/quenby.desktop DESTINATION share/applications)

  # The package test builds the package of this build folder and runs what it
  # installed; it builds nothing else at the same time.
  add_test(NAME package_deb
    COMMAND bash ${CMAKE_SOURCE_DIR}/tests/package/package-test.sh ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR})
  set_tests_properties(package_deb PROPERTIES LABELS package RUN_SERIAL TRUE TIMEOUT 300)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quenby)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Reports of KVX and ZBL transformer tests")
set(CPACK_PACKAGE_DESCRIPTION
  "Quenby turns the test records of the KVX current-transformer test set and the ZBL winding-resistance test set, read from test files or uploaded over the serial link, into engineering reports to view, print and export.")
set(CPACK_PACKAGE_CONTACT "Quenby developers <quenby@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
# The libraries the programs link come from dpkg-shlibdeps; the Qt platform
# plugins that show the windows are not linked, so they are named.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
# The reports and the logo are drawn in this font.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
include(CPack)
