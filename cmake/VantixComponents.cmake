# What the package offers: each component is one library, made of the objects of its rooms. Rooms stay targets of their
# own, which programs and tests of this tree link; nothing is compiled twice.

# vantix_find(PUBLIC|PRIVATE package argument…)
# vantix_find_module(PUBLIC|PRIVATE pkg-config-name…)
#
# The files in cmake/package/NeededBy…cmake say by these what a component stands on; the build and the package ask in
# their own ways.
macro(vantix_find visibility)
  find_package(${ARGN} REQUIRED)
endmacro()
macro(vantix_find_module visibility)
  find_package(PkgConfig REQUIRED)
  foreach(module ${ARGN})
    pkg_check_modules(vantix_${module} REQUIRED QUIET IMPORTED_TARGET ${module})
  endforeach()
endmacro()

# vantix_public_headers(file…): these headers of the component that the folder belongs to are installed.
function(vantix_public_headers)
  list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  set_property(GLOBAL APPEND PROPERTY VANTIX_PUBLIC_HEADERS_${VANTIX_COMPONENT} ${ARGN})
endfunction()

# vantix_component(NAME OUTPUT_NAME name HEADER_ROOT folder FOLDERS folder… LINKS what…)
#
# Enters the folders and makes VantixInAppMessage::NAME of all rooms in them. LINKS is what its headers stand on: other
# components, targets from elsewhere. Includes are written from the header root.
macro(vantix_component component)
  cmake_parse_arguments(VANTIX_COMPONENT "" "OUTPUT_NAME;HEADER_ROOT" "FOLDERS;LINKS" ${ARGN})
  set(VANTIX_COMPONENT ${component})
  include(package/NeededBy${component})
  foreach(folder IN LISTS VANTIX_COMPONENT_FOLDERS)
    add_subdirectory(${folder})
  endforeach()
  vantix_add_component_library()
endmacro()

function(vantix_add_component_library)
  set(name VantixComponent${VANTIX_COMPONENT})
  add_library(${name})
  add_library(VantixInAppMessage::${VANTIX_COMPONENT} ALIAS ${name})
  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME ${VANTIX_COMPONENT_OUTPUT_NAME}
    EXPORT_NAME ${VANTIX_COMPONENT}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINKER_LANGUAGE CXX
    AUTOMOC OFF
    # The libraries of the package find one another wherever they are put.
    INSTALL_RPATH "$ORIGIN")
  target_compile_features(${name} PUBLIC cxx_std_20)
  # Whatever is missing or hidden shows here, not at a consumer.
  target_link_options(${name} PRIVATE $<$<PLATFORM_ID:Linux>:-Wl,-z,defs>)

  get_property(headers GLOBAL PROPERTY VANTIX_PUBLIC_HEADERS_${VANTIX_COMPONENT})
  target_sources(${name} PUBLIC FILE_SET HEADERS
    BASE_DIRS "${PROJECT_SOURCE_DIR}/${VANTIX_COMPONENT_HEADER_ROOT}" FILES ${headers})

  vantix_rooms_in(rooms ${VANTIX_COMPONENT_FOLDERS})
  foreach(room IN LISTS rooms)
    target_sources(${name} PRIVATE $<TARGET_OBJECTS:${room}>)
    get_target_property(links ${room} LINK_LIBRARIES)
    vantix_outside_of_the_tree(links)
    target_link_libraries(${name} PRIVATE ${links})
    # What sanitized programs compile themselves.
    get_target_property(sources ${room} INTERFACE_SOURCES)
    if(sources)
      target_sources(${name} INTERFACE $<BUILD_INTERFACE:${sources}>)
    endif()
  endforeach()
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:vantix_options>)
  foreach(link IN LISTS VANTIX_COMPONENT_LINKS)
    if(TARGET VantixComponent${link})
      set(link VantixComponent${link})
    endif()
    target_link_libraries(${name} PUBLIC ${link})
  endforeach()
  set_property(GLOBAL APPEND PROPERTY VANTIX_COMPONENTS ${VANTIX_COMPONENT})
endfunction()

# The archives that the folders make.
function(vantix_rooms_in result)
  set(rooms "")
  foreach(folder IN LISTS ARGN)
    get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
      get_target_property(type ${target} TYPE)
      if(type STREQUAL STATIC_LIBRARY)
        list(APPEND rooms ${target})
      endif()
    endforeach()
  endforeach()
  set(${result} ${rooms} PARENT_SCOPE)
endfunction()

# Leaves what no folder of this tree makes.
function(vantix_outside_of_the_tree list)
  list(FILTER ${list} INCLUDE REGEX "::")
  set(${list} ${${list}} PARENT_SCOPE)
endfunction()
