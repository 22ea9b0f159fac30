# The views' bitmaps, drawn as text in ui/bitmaps/ and turned into .bmp files at build time by
# ui/bitmaps/make_bitmaps.py (docs/bitmaps.md). Including this file only defines the function;
# Python runs only in a build that calls it.
#
#   oz_add_bitmaps(<target> <rc variable>)
#
# adds the custom target <target>, which writes every picture as
# ${CMAKE_CURRENT_BINARY_DIR}/bitmaps/NUMBER-name.bmp and the resource script fragment
# ${CMAKE_CURRENT_BINARY_DIR}/bitmaps/ozBitmaps.rc, one `NUMBER BITMAP "…/NUMBER-name.bmp"` line
# per picture with the absolute path; <rc variable> is set to the fragment's path. A picture
# that the generator refuses fails the build with the file and line at fault. Call it in the
# folder of the module that carries the bitmaps, and either compile the fragment as a resource
# script of its own:
#
#   oz_add_bitmaps(ozADM_bitmaps bitmaps_rc)
#   target_sources(ozADM PRIVATE ${bitmaps_rc})
#
# or include it from the module's resource script (`#include "ozBitmaps.rc"`) with:
#
#   oz_add_bitmaps(ozADM_bitmaps bitmaps_rc)
#   get_filename_component(bitmaps_dir ${bitmaps_rc} DIRECTORY)
#   target_include_directories(ozADM PRIVATE ${bitmaps_dir})
#   set_source_files_properties(ozADM.rc PROPERTIES OBJECT_DEPENDS ${bitmaps_rc})
#   add_dependencies(ozADM ozADM_bitmaps)
set(OZ_BITMAPS_SOURCE_DIR ${CMAKE_CURRENT_LIST_DIR}/../ui/bitmaps)
cmake_path(NORMAL_PATH OZ_BITMAPS_SOURCE_DIR)

function(oz_add_bitmaps target rc_variable)
  find_program(OZ_PYTHON3 NAMES python3 REQUIRED)
  set(script ${OZ_BITMAPS_SOURCE_DIR}/make_bitmaps.py)
  set(out_dir ${CMAKE_CURRENT_BINARY_DIR}/bitmaps)
  set(rc ${out_dir}/ozBitmaps.rc)
  # The pictures are the folder's NUMBER-name.txt files; a new one needs a new configure run.
  file(GLOB art CONFIGURE_DEPENDS ${OZ_BITMAPS_SOURCE_DIR}/*.txt)
  set(bitmaps)
  foreach(file ${art})
    get_filename_component(stem ${file} NAME_WE)
    list(APPEND bitmaps ${out_dir}/${stem}.bmp)
  endforeach()
  add_custom_command(
    OUTPUT ${rc} ${bitmaps}
    COMMAND ${OZ_PYTHON3} ${script} --out ${out_dir} --rc ${rc} ${art}
    DEPENDS ${script} ${art}
    COMMENT "Drawing the views' bitmaps"
    VERBATIM)
  add_custom_target(${target} DEPENDS ${rc} ${bitmaps})
  set(${rc_variable} ${rc} PARENT_SCOPE)
endfunction()
