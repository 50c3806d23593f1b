# One CMake library for each room of src/. It carries the room's name; what a room may use is stated in one place,
# src/doors.txt.

add_library(zemlo_compile_options INTERFACE)
target_compile_options(zemlo_compile_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wimplicit-fallthrough
  $<$<CXX_COMPILER_ID:GNU>:-Werror>  # what another compiler warns of is no reason to stop
  # What GCC 12 reports falsely once it inlines: of plain string concatenation (its bug 105651), and of a variant
  # chosen by "?:". The sanitizers and clang-tidy find the real ones.
  "$<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-maybe-uninitialized>"
  # Sources of tests do without optimisation, which took most of their time to compile: the rooms they test have it.
  $<$<BOOL:$<TARGET_PROPERTY:ZEMLO_IS_TEST>>:-O0>)

# Sources of tests do without the checks of undefined behaviour as well.
add_library(zemlo_sanitizers INTERFACE)
if(ZEMLO_SANITIZE AND ZEMLO_SANITIZE_THREADS)
  message(FATAL_ERROR "ZEMLO_SANITIZE and ZEMLO_SANITIZE_THREADS cannot be had in one build. Set one of them to OFF.")
endif()
if(ZEMLO_SANITIZE_THREADS)
  target_compile_options(zemlo_sanitizers INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(zemlo_sanitizers INTERFACE -fsanitize=thread)
endif()
if(ZEMLO_SANITIZE)
  set(is_test $<BOOL:$<TARGET_PROPERTY:ZEMLO_IS_TEST>>)
  target_compile_options(zemlo_sanitizers INTERFACE
    -fsanitize=address $<$<NOT:${is_test}>:-fsanitize=undefined> -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(zemlo_sanitizers INTERFACE -fsanitize=address,undefined)
endif()

# The lines of src/doors.txt, "folder : folders : libraries", without comments.
set(ZEMLO_DOORS ${PROJECT_SOURCE_DIR}/src/doors.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ZEMLO_DOORS})
file(STRINGS ${ZEMLO_DOORS} ZEMLO_DOOR_LINES REGEX "^[^#]")

# Sets `result` to the rooms that a room and its folders have doors to. A room is what has a library of its own: for a
# folder the one whose name is the longest start of its name.
function(zemlo_rooms_used room rooms result)
  set(used)
  foreach(line IN LISTS ZEMLO_DOOR_LINES)
    string(REGEX MATCH "^([^ ]+) *:([^:]*):" matched "${line}")
    set(folder ${CMAKE_MATCH_1})
    separate_arguments(others UNIX_COMMAND "${CMAKE_MATCH_2}")
    zemlo_room_of(${folder} "${rooms}" own)
    if(NOT own STREQUAL room)
      continue()
    endif()
    foreach(other IN LISTS others)
      string(REPLACE "/*" "" other ${other})
      zemlo_room_of(${other} "${rooms}" other_room)
      list(APPEND used ${other_room})
    endforeach()
  endforeach()
  list(REMOVE_DUPLICATES used)
  list(REMOVE_ITEM used ${room} "")
  set(${result} ${used} PARENT_SCOPE)
endfunction()

function(zemlo_room_of folder rooms result)
  set(found)
  foreach(room IN LISTS rooms)
    string(FIND "${folder}/" "${room}/" at)
    string(LENGTH "${room}" length)
    string(LENGTH "${found}" found_length)
    if(at EQUAL 0 AND length GREATER found_length)
      set(found ${room})
    endif()
  endforeach()
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

# zemlo_room(<folder> SOURCES file... [LIBRARIES target...])
#
# LIBRARIES are the outside ones it links; the rooms it links are those it has doors to.
function(zemlo_room folder)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  add_library(zemlo_${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(zemlo_${name} PRIVATE zemlo_compile_options ${ROOM_LIBRARIES})
  target_include_directories(zemlo_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(zemlo_${name} PUBLIC zemlo_sanitizers Threads::Threads)
  zemlo_rooms_used(${folder} "${ZEMLO_ROOMS}" used)
  foreach(other IN LISTS used)
    string(REPLACE "/" "_" other_name ${other})
    target_link_libraries(zemlo_${name} PUBLIC zemlo_${other_name})
  endforeach()
endfunction()

# The rooms in the order of their doors, lowest first. (Below and above composition, customers and tracking lie rooms of
# workspace/: each is added by its path.)
function(zemlo_add_rooms root)
  set(ZEMLO_ROOMS ${ARGN})
  foreach(folder IN LISTS ARGN)
    string(REPLACE "/" "_" name ${folder})
    add_subdirectory(${root}/${folder} ${CMAKE_BINARY_DIR}/rooms/${name})
  endforeach()
endfunction()

# zemlo_tests(<folder> [PATHS] SOURCES file... [USES target...])
#
# The tests of one room: a program linking that room, its fakes, and nothing else. PATHS tells it where the
# sources and the build are; without, its objects are the same in every checkout and a compiler cache has them.
function(zemlo_tests folder)
  cmake_parse_arguments(TESTS "PATHS" "" "SOURCES;USES" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  add_executable(${name}_test ${TESTS_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/leaks_of_others.cpp)
  set_target_properties(${name}_test PROPERTIES ZEMLO_IS_TEST ON)
  target_include_directories(${name}_test PRIVATE ${PROJECT_SOURCE_DIR})
  if(TESTS_PATHS)
    target_compile_definitions(${name}_test PRIVATE
      ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}" ZEMLO_BINARY_DIR="${CMAKE_BINARY_DIR}")
  endif()
  target_link_libraries(${name}_test PRIVATE
    zemlo_compile_options zemlo_${name} ${TESTS_USES} GTest::gmock)
  if(NOT TESTS_USES MATCHES "zemlo_test_main_")
    target_link_libraries(${name}_test PRIVATE GTest::gmock_main)
  endif()
  gtest_discover_tests(${name}_test DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 120 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()
