# How every target of this project is made.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
# Archives may become part of a shared library or a plug-in, and a shared library shows what is marked VANTIX_EXPORT.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

if(VANTIX_CCACHE)
  find_program(VANTIX_CCACHE_PROGRAM ccache)
  if(VANTIX_CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${VANTIX_CCACHE_PROGRAM}")
  endif()
endif()

# Linked privately, so that consumers choose their own warnings and sanitizers.
add_library(vantix_options INTERFACE)
target_compile_options(vantix_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(VANTIX_SANITIZE)
  target_compile_options(vantix_options INTERFACE "-fsanitize=${VANTIX_SANITIZE}" -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(vantix_options INTERFACE "-fsanitize=${VANTIX_SANITIZE}")
  # GCC 12 calls variants and optionals uninitialised once a sanitizer has taken their code apart; the sanitizers themselves look.
  target_compile_options(vantix_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# vantix_library(NAME LINKS target… PRIVATE_LINKS target… SOURCES file…)
#
# LINKS is all that the library's headers may include.
function(vantix_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE vantix_options ${ARG_PRIVATE_LINKS})
endfunction()

# vantix_room(NAME FOLDER LINKS target… PRIVATE_LINKS target…)
#
# A room: the library of all sources that stand directly in the folder.
function(vantix_room name folder)
  cmake_parse_arguments(ARG "" "" "LINKS;PRIVATE_LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  vantix_library(${name} SOURCES ${sources} LINKS ${ARG_LINKS} PRIVATE_LINKS ${ARG_PRIVATE_LINKS})
endfunction()

# vantix_umbrella(NAME room…): all rooms of a library under one name.
function(vantix_umbrella name)
  add_library(${name} INTERFACE)
  target_link_libraries(${name} INTERFACE ${ARGN})
endfunction()

# vantix_embed(TARGET NAMESPACE function file…)
#
# Compiles the files into the target behind one function,
#   const std::string* vantix::FUNCTION(std::string_view fileName)
# which answers null for an unknown name. The target declares it in a header of its own.
function(vantix_embed target function)
  set(output "${CMAKE_CURRENT_BINARY_DIR}/${function}.cpp")
  set(files "")
  foreach(file IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
    list(APPEND files "${file}")
  endforeach()
  add_custom_command(
    OUTPUT "${output}"
    COMMAND "${CMAKE_COMMAND}" "-DOUTPUT=${output}" "-DFUNCTION=${function}" "-DFILES=${files}"
            -P "${PROJECT_SOURCE_DIR}/cmake/EmbedFiles.cmake"
    DEPENDS ${files} "${PROJECT_SOURCE_DIR}/cmake/EmbedFiles.cmake"
    VERBATIM)
  target_sources(${target} PRIVATE "${output}")
endfunction()

# vantix_test(NAME [QT] [TOGETHER] SOURCES file… LINKS target…)
#
# Every case is a ctest test of its own. TOGETHER: they pass in one process, too, in any order.
function(vantix_test name)
  cmake_parse_arguments(ARG "QT;TOGETHER" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE vantix_options ${ARG_LINKS} GTest::gtest GTest::gtest_main)
  set(properties TIMEOUT 120)
  if(ARG_QT)
    list(APPEND properties LABELS qt ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 DISCOVERY_MODE PRE_TEST PROPERTIES ${properties})
  if(ARG_TOGETHER)
    add_test(NAME ${name}.InOneProcessInAnyOrder COMMAND ${name} --gtest_shuffle --gtest_brief=1 --gtest_death_test_style=threadsafe)
    set_tests_properties(${name}.InOneProcessInAnyOrder PROPERTIES ${properties})
  endif()
endfunction()
