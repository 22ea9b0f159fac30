# Runs one ozadm script in a fresh working folder and checks what it gives.
#
#   OZADM        the ozadm executable
#   EMULATOR     what runs it (Wine for the Windows build), may be empty
#   WORK_DIR     the working folder, emptied first
#   FILES        files copied into it, separated by |
#   SCRIPT       the script (copied in too and run by its name, so paths stay relative)
#   OPTIONS      ozadm options before the script, separated by |
#   EXPECTED     the file standard output must equal (carriage returns ignored)
#   STATUS       the exit status expected (default 0)
#   STDERR_MATCH a regular expression standard error must match (optional)
#   SAVED        a file the script must have created in the working folder (optional)
#   WRITTEN      files the script writes, separated by |, each of which must equal the file
#   MATCHING     MATCHING byte for byte but for carriage returns: a text file written on
#                Windows ends its lines with them (both optional)
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
string(REPLACE "|" ";" files "${FILES}")
file(COPY ${files} "${SCRIPT}" DESTINATION "${WORK_DIR}")
get_filename_component(script_name "${SCRIPT}" NAME)
string(REPLACE "|" ";" options "${OPTIONS}")
if(NOT DEFINED STATUS)
  set(STATUS 0)
endif()

execute_process(COMMAND ${EMULATOR} "${OZADM}" script ${options} ${script_name}
                WORKING_DIRECTORY "${WORK_DIR}"
                RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err
                TIMEOUT 240)
string(REPLACE "\r" "" out "${out}")
string(REPLACE "\r" "" err "${err}")
file(WRITE "${WORK_DIR}/actual.txt" "${out}")

set(failures "")
if(NOT status STREQUAL STATUS)
  string(APPEND failures "exit status ${status}, expected ${STATUS}\n")
endif()
file(READ "${EXPECTED}" expected)
if(NOT out STREQUAL expected)
  find_program(diff_program diff)
  if(diff_program)
    execute_process(COMMAND ${diff_program} -u "${EXPECTED}" "${WORK_DIR}/actual.txt"
                    OUTPUT_VARIABLE difference)
  endif()
  string(APPEND failures "standard output differs from ${EXPECTED}:\n${difference}\n")
endif()
if(DEFINED STDERR_MATCH AND NOT err MATCHES "${STDERR_MATCH}")
  string(APPEND failures "standard error does not match \"${STDERR_MATCH}\"\n")
endif()
if(DEFINED SAVED AND NOT EXISTS "${WORK_DIR}/${SAVED}")
  string(APPEND failures "${SAVED} was not written\n")
endif()
string(REPLACE "|" ";" written "${WRITTEN}")
foreach(file ${written})
  set(text "")
  if(EXISTS "${WORK_DIR}/${file}")
    file(READ "${WORK_DIR}/${file}" text)
  endif()
  file(READ "${MATCHING}" matching)
  string(REPLACE "\r" "" text "${text}")
  if(NOT text STREQUAL matching)
    string(APPEND failures "${file} differs from ${MATCHING}\n")
  endif()
endforeach()
if(failures)
  message(FATAL_ERROR "${script_name}:\n${failures}standard error:\n${err}")
endif()
