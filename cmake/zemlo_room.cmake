# One CMake library per folder of src/. A room's library carries the folder's name, and what it may
# use is stated in one place: its own CMakeLists.txt.

add_library(zemlo_compile_options INTERFACE)
target_compile_options(zemlo_compile_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wimplicit-fallthrough -Werror
  # What GCC 12 reports falsely once it inlines: of plain string concatenation (its bug 105651), and of a variant
  # chosen by "?:". The sanitizers and clang-tidy find the real ones.
  -Wno-restrict -Wno-maybe-uninitialized)

# Sources of tests do without the checks of undefined behaviour, and without optimisation: the rooms they test
# have both, and the tests alone took three times as long to compile.
add_library(zemlo_sanitizers INTERFACE)
if(ZEMLO_SANITIZE)
  set(is_test $<BOOL:$<TARGET_PROPERTY:ZEMLO_IS_TEST>>)
  target_compile_options(zemlo_sanitizers INTERFACE
    -fsanitize=address $<$<NOT:${is_test}>:-fsanitize=undefined> $<${is_test}:-O0>
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zemlo_sanitizers INTERFACE -fsanitize=address,undefined)
endif()

# zemlo_room(<folder> [SOURCES file...] [MAY_USE room...] [LIBRARIES target...])
#
# MAY_USE names the rooms whose doors are open to this one; LIBRARIES the outside libraries it links.
function(zemlo_room folder)
  cmake_parse_arguments(ROOM "" "" "SOURCES;MAY_USE;LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  if(ROOM_SOURCES)
    add_library(zemlo_${name} STATIC ${ROOM_SOURCES})
    set(scope PUBLIC)
    target_link_libraries(zemlo_${name} PRIVATE zemlo_compile_options ${ROOM_LIBRARIES})
  else()
    add_library(zemlo_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(zemlo_${name} ${scope} ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(zemlo_${name} ${scope} zemlo_sanitizers Threads::Threads)
  foreach(other IN LISTS ROOM_MAY_USE)
    string(REPLACE "/" "_" other_name ${other})
    target_link_libraries(zemlo_${name} ${scope} zemlo_${other_name})
  endforeach()
endfunction()

# The rooms in the order of their doors, lowest first. (The inner rooms of workspace/ are folders of
# their own: each is added by its path.)
function(zemlo_add_rooms root)
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
