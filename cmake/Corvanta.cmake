# The one set of compiler settings, carried by every target of the project.
#
# -ffp-contract=off keeps a product and a sum two roundings on every machine, so that the same input
# gives the same bytes everywhere.
add_library(corvanta_settings INTERFACE)
target_compile_options(corvanta_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns of overlap inside the library's own string concatenation (its bug 105651).
  target_compile_options(corvanta_settings INTERFACE -Wno-restrict)
endif()
target_include_directories(corvanta_settings INTERFACE "${PROJECT_SOURCE_DIR}/src")
if(CORVANTA_SANITIZE)
  target_compile_options(corvanta_settings INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(corvanta_settings INTERFACE -fsanitize=address,undefined)
endif()

# The system's Python, as it is the one that has the system's packages; another one may stand before
# it on the path.
if(NOT DEFINED Python3_EXECUTABLE AND EXISTS /usr/bin/python3)
  set(Python3_EXECUTABLE /usr/bin/python3)
endif()

# Where there is a compiler cache, it is used.
find_program(CORVANTA_CCACHE ccache)
if(CORVANTA_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  # A precompiled header is told by its content, not by its time.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
    CCACHE_SLOPPINESS=pch_defines,time_macros "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}"
    CCACHE_NOHASHDIR=1 ${CORVANTA_CCACHE})
  add_compile_options(-fpch-preprocess)
endif()

# corvanta_sources(<variable> <folder>): all sources of a folder below src/, but for those that stand
# on a library and their stand-ins without it.
function(corvanta_sources variable folder)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
  list(FILTER sources EXCLUDE REGEX "/(LeastSquares|Workbook)(Missing)?\\.cpp$")
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# corvanta_floor(<folder> <lower folder>...): the library of one folder below src/, from all its
# sources, on the libraries of the folders that it may know.
function(corvanta_floor folder)
  corvanta_sources(sources ${folder})
  if(NOT sources)
    add_library(corvanta_${folder} INTERFACE)
    set(scope INTERFACE)
  else()
    add_library(corvanta_${folder} STATIC ${sources})
    # The Python module is a shared object of these; hidden, their calls stay direct.
    set_target_properties(corvanta_${folder} PROPERTIES POSITION_INDEPENDENT_CODE ON
      CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    set(scope PUBLIC)
  endif()
  target_link_libraries(corvanta_${folder} ${scope} corvanta_settings)
  foreach(lower IN LISTS ARGN)
    target_link_libraries(corvanta_${folder} ${scope} corvanta_${lower})
  endforeach()
endfunction()
