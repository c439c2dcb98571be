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


# --- Layers -----------------------------------------------------------------------------------
# Dependencies point one way, and the build holds them:
# - a target sees only its own headers and those of the libraries it links: each library's include
#   root, in the build tree, holds nothing but a link to the library's own source folder under
#   its project path, so that "forms/..." cannot be included where the forms are not linked;
# - a library may link only the libraries of the layers below it (distinta_layer);
# - a library links exactly the libraries whose headers its sources include (checked at each
#   build of the library by cmake/checkincludes.cmake, which also sees the headers a linked
#   library passes on).

# distinta_layer(<library> FOLDER <project folder> [USES <libraries>...] [QT <Qt modules>...])
# The libraries the library may link, and when given the only Qt modules it may link.
function(distinta_layer name)
  cmake_parse_arguments(ARG "" "FOLDER" "USES;QT" ${ARGN})
  set_property(GLOBAL PROPERTY DISTINTA_USES_${name} ${ARG_USES})
  set_property(GLOBAL PROPERTY DISTINTA_QT_${name} ${ARG_QT})
  set_property(GLOBAL PROPERTY DISTINTA_FOLDER_${name} ${ARG_FOLDER})
  set_property(GLOBAL APPEND PROPERTY DISTINTA_LIBRARIES ${name})
endfunction()

distinta_layer(distinta_platform FOLDER platform QT Core Sql)
distinta_layer(distinta_data FOLDER data USES distinta_platform QT Core)
distinta_layer(distinta_framework FOLDER framework USES distinta_platform)
distinta_layer(distinta_dbsetup FOLDER db USES distinta_platform QT Core)
distinta_layer(distinta_frame FOLDER frame USES distinta_framework distinta_data distinta_platform)
distinta_layer(distinta_forms FOLDER forms USES distinta_frame distinta_framework distinta_data distinta_platform)
distinta_layer(distinta_module FOLDER module
  USES distinta_forms distinta_frame distinta_framework distinta_data distinta_platform)
distinta_layer(VRAX_DISTINTA FOLDER module/plugin
  USES distinta_module distinta_forms distinta_frame distinta_framework distinta_data distinta_platform)
# The shell (the program "distinta" and its cards), the tests and the benchmarks sit above the
# module; nothing in the module includes the shell.
distinta_layer(distinta_cards FOLDER shell/cards
  USES distinta_frame distinta_framework distinta_data distinta_platform)
distinta_layer(distinta FOLDER shell
  USES distinta_cards distinta_dbsetup distinta_module distinta_forms distinta_frame distinta_framework
       distinta_data distinta_platform)
distinta_layer(distinta_testsupport FOLDER tests/support
  USES distinta_module distinta_forms distinta_frame distinta_framework distinta_data distinta_platform
       distinta_cards distinta_dbsetup)

# The include root that offers folder (relative to the project), and nothing else of the project,
# under its project path: a folder of the build tree holding one link to the source folder.
function(distinta_include_root out folder)
  string(REPLACE "/" "-" name ${folder})
  set(root ${CMAKE_BINARY_DIR}/include/${name})
  get_filename_component(parent ${root}/${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)
  set(${out} ${root} PARENT_SCOPE)
endfunction()

# Stops the configuration when target links a project library that is not below it, or a Qt
# module that its layer does not allow.
function(distinta_check_links target)
  get_property(uses GLOBAL PROPERTY DISTINTA_USES_${target})
  get_property(qt GLOBAL PROPERTY DISTINTA_QT_${target})
  get_property(libraries GLOBAL PROPERTY DISTINTA_LIBRARIES)
  foreach(linked IN LISTS ARGN)
    if(linked IN_LIST libraries AND NOT linked IN_LIST uses)
      message(FATAL_ERROR "${target} links ${linked}, which is not below it: dependencies point one way")
    endif()
    if(qt AND linked MATCHES "^Qt6::(.*)$" AND NOT CMAKE_MATCH_1 IN_LIST qt)
      list(JOIN qt ", " allowed)
      message(FATAL_ERROR "${target} links ${linked}; its layer may link only Qt ${allowed}")
    endif()
  endforeach()
endfunction()

# Checks at each build of target that its sources include the headers of exactly the project
# libraries it links (besides its own folder).
function(distinta_check_includes target sources)
  get_property(libraries GLOBAL PROPERTY DISTINTA_LIBRARIES)
  set(folders "")
  set(names "")
  foreach(library IN LISTS libraries)
    get_property(libraryFolder GLOBAL PROPERTY DISTINTA_FOLDER_${library})
    list(APPEND folders ${libraryFolder})
    list(APPEND names ${library})
  endforeach()
  set(linked "")
  foreach(library IN LISTS ARGN)
    if(library IN_LIST libraries)
      list(APPEND linked ${library})
    endif()
  endforeach()
  set(description ${CMAKE_BINARY_DIR}/layers/${target}.cmake)
  file(WRITE ${description}.in
    "set(TARGET ${target})\nset(FOLDERS ${folders})\nset(NAMES ${names})\n"
    "set(LINKED ${linked})\nset(SOURCES ${sources})\n")
  configure_file(${description}.in ${description} COPYONLY)
  set(stamp ${CMAKE_BINARY_DIR}/layers/${target}.checked)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -DDESCRIPTION=${description} -DSTAMP=${stamp}
            -P ${PROJECT_SOURCE_DIR}/cmake/checkincludes.cmake
    DEPENDS ${sources} ${description} ${PROJECT_SOURCE_DIR}/cmake/checkincludes.cmake
    COMMENT "Checking the includes of ${target}"
    VERBATIM)
  target_sources(${target} PRIVATE ${stamp})
endfunction()

# The project folder of the sources in DIRS (relative to the current folder): the current
# folder, or the one subfolder named.
function(distinta_folder out)
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  list(LENGTH ARGN count)
  if(count EQUAL 1 AND NOT ARGN STREQUAL ".")
    set(folder ${folder}/${ARGN})
  endif()
  set(${out} ${folder} PARENT_SCOPE)
endfunction()

# distinta_layered(<target> <project folder> PUBLIC|PRIVATE [LINK <libraries>...]
#                  [PRIVATE_LINK <libraries>...])
# Puts a target of the project in its layer: the links, refused when not below it; the include
# root of its folder, PUBLIC for a library whose users include its headers; the check of its
# includes. LINK is linked publicly (the target's headers include theirs), PRIVATE_LINK privately.
function(distinta_layered target folder scope)
  cmake_parse_arguments(ARG "" "" "LINK;PRIVATE_LINK" ${ARGN})
  distinta_check_links(${target} ${ARG_LINK} ${ARG_PRIVATE_LINK})
  distinta_include_root(root ${folder})
  target_include_directories(${target} ${scope} ${root})
  target_link_libraries(${target} PUBLIC ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
  get_target_property(sources ${target} SOURCES)
  distinta_check_includes(${target} "${sources}" ${ARG_LINK} ${ARG_PRIVATE_LINK})
endfunction()

# A shared library from the sources of the given folders (relative to the current one), in its
# layer (distinta_layered). Skipped while the folders hold no sources yet.
function(distinta_library name)
  cmake_parse_arguments(ARG "" "" "DIRS;LINK;PRIVATE_LINK" ${ARGN})
  distinta_sources(sources ${ARG_DIRS})
  if(NOT sources)
    return()
  endif()
  distinta_folder(folder ${ARG_DIRS})
  add_library(${name} SHARED ${sources})
  distinta_layered(${name} ${folder} PUBLIC LINK ${ARG_LINK} PRIVATE_LINK ${ARG_PRIVATE_LINK})
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
