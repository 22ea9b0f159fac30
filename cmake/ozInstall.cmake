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
install(TARGETS ozEBNF ozRegOZP ozRegPOL ozRegREG LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${PROJECT_SOURCE_DIR}/grammar/adm.bnf
              ${PROJECT_SOURCE_DIR}/hosts/ozadm/data/strings-en.txt
              ${PROJECT_SOURCE_DIR}/hosts/ozadm/data/strings-de.txt
              ${PROJECT_SOURCE_DIR}/hosts/ozadm/data/empty.adm
        DESTINATION ${CMAKE_INSTALL_DATADIR}/ozadm)
