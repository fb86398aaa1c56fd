# `cmake --install BUILD --prefix PREFIX` lays out the program folder, as the
# program expects to find it beside itself (tables, demonstration scenario,
# manual), under PREFIX/lib/tallyra, with PREFIX/bin/tallyra linking to it.
# The desktop build adds its menu entry and the .ira file type.
include(GNUInstallDirs)
set(TALLYRA_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/tallyra CACHE STRING "The program folder, under the prefix")

install(TARGETS tallyra RUNTIME DESTINATION ${TALLYRA_INSTALL_DIR})
install(FILES
  ${TALLYRA_PROGRAM_DIR}/v86.tbl ${TALLYRA_PROGRAM_DIR}/vi86.tbl
  ${TALLYRA_PROGRAM_DIR}/v02.tbl ${TALLYRA_PROGRAM_DIR}/vi02.tbl
  ${TALLYRA_PROGRAM_DIR}/s-90cm.tbl ${TALLYRA_PROGRAM_DIR}/demo.ira
  DESTINATION ${TALLYRA_INSTALL_DIR})
# Built only where Qt's GUI module is at hand.
install(FILES ${TALLYRA_PROGRAM_DIR}/manvesk.pdf DESTINATION ${TALLYRA_INSTALL_DIR} OPTIONAL)

# The program finds its folder through the link's target.
install(CODE "
  set(_bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
  file(MAKE_DIRECTORY \"\${_bin}\")
  file(RELATIVE_PATH _target \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\"
       \"\${CMAKE_INSTALL_PREFIX}/${TALLYRA_INSTALL_DIR}/tallyra\")
  file(CREATE_LINK \"\${_target}\" \"\${_bin}/tallyra\" SYMBOLIC)
  message(STATUS \"Installing: \${_bin}/tallyra -> \${_target}\")
")

if(TARGET app_desktop)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tallyra.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tallyra-mime.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME tallyra.xml)
endif()
