# Installing on Linux: the programs with their bundled files, the libraries they load (the
# grammar engine, the profile libraries), and, when Qt 6 was found, the desktop program and
# the CMake package through which another project embeds the widget:
#
#   PREFIX/bin                     ozadm, ozadm-gui
#   PREFIX/LIBDIR                  libozEBNF.so, libozRegOZP.so, libozRegPOL.so, libozRegREG.so,
#                                  the widget's library
#   PREFIX/LIBDIR/cmake/ozADM      ozADMConfig.cmake and the exported target ozADM::<widget>
#   PREFIX/include/ozADM           the widget's header
#   PREFIX/share/ozadm             the grammar, the host string tables, the empty template
#   PREFIX/share/applications      ozadm-gui.desktop
#
# The programs find the libraries through a run path relative to themselves, so the prefix
# can be moved; the profile libraries are loaded by name at run time through that path.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

file(RELATIVE_PATH oz_bin_to_lib "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set(OZ_INSTALL_RPATH "$ORIGIN/${oz_bin_to_lib}")

set_target_properties(ozadm PROPERTIES INSTALL_RPATH "${OZ_INSTALL_RPATH}")
install(TARGETS ozadm RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# (ui/qt installs the libraries and the grammar and string tables too, for the widget; the
# rules are the same and may both run.)
install(TARGETS ozEBNF ozRegOZP ozRegPOL ozRegREG LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${PROJECT_SOURCE_DIR}/grammar/adm.bnf
              ${PROJECT_SOURCE_DIR}/hosts/ozadm/data/strings-en.txt
              ${PROJECT_SOURCE_DIR}/hosts/ozadm/data/strings-de.txt
              ${PROJECT_SOURCE_DIR}/hosts/ozadm/data/empty.adm
        DESTINATION ${CMAKE_INSTALL_DATADIR}/ozadm)

if(NOT OZ_QT)
  return()
endif()

# The desktop program.
set_target_properties(ozadm-gui PROPERTIES INSTALL_RPATH "${OZ_INSTALL_RPATH}")
install(TARGETS ozadm-gui RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/hosts/ozadm-gui/ozadm-gui.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)

# The widget for other programs: ui/qt installs its shared library ozADMWidget with its header
# into the export set ozADMTargets; here the package around it, and the interface a host
# implements to answer the widget's messages itself.
install(FILES ${PROJECT_SOURCE_DIR}/control/ozHostUI.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ozADM/control)

set(oz_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ozADM)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ozADMConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/ozADMConfig.cmake
                              INSTALL_DESTINATION ${oz_package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ozADMConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ozADMConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ozADMConfigVersion.cmake
        DESTINATION ${oz_package_dir})
