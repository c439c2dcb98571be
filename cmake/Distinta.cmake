# Compiler checks on every target of the project. GCC before 14 reports a designated initializer
# that leaves members to their defaults ({.key = ..., .width = ...}) as a missing initializer:
# that is how the column and statement descriptions are written, so that one check is off.
option(DISTINTA_WERROR "Treat compiler warnings as errors" OFF)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wno-missing-field-initializers)
if(DISTINTA_WERROR)
  add_compile_options(-Werror)
endif()

# Each folder collects its own sources, so adding a file needs no edit here.
function(distinta_sources out)
  set(result)
  foreach(dir IN LISTS ARGN)
    file(GLOB found CONFIGURE_DEPENDS
      ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.cpp
      ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.h
      ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.qrc)
    list(APPEND result ${found})
  endforeach()
  set(${out} ${result} PARENT_SCOPE)
endfunction()


# A shared library from the sources of the given folders (relative to the current one).
# Skipped while the folders hold no sources yet.
function(distinta_library name)
  cmake_parse_arguments(ARG "" "" "DIRS;LINK;PRIVATE_LINK" ${ARGN})
  distinta_sources(sources ${ARG_DIRS})
  if(NOT sources)
    return()
  endif()
  add_library(${name} SHARED ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
endfunction()


# AddressSanitizer and UndefinedBehaviorSanitizer on every target, for the suite's second run in CI
# (scripts/sanitize.sh). Meant for a Debug build; -O1 keeps the instrumented suite fast enough while
# the frame pointers and debug information keep every report's stack readable. Any report stops the
# program: nothing the sanitizers find may pass unnoticed.
option(DISTINTA_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(DISTINTA_SANITIZE)
  set(sanitize_flags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_options(${sanitize_flags} -O1 -g)
  add_link_options(${sanitize_flags})
endif()
